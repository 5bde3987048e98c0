"""Starts the program on a simulated device, for a person at a display or for a tour by itself."""
import argparse
import os
import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parents[1]
sys.path[:0] = [str(ROOT), str(ROOT / "tests" / "window")]
from device.simdevice import SimDevice  # noqa: E402

NEW_GATEWAY = "10.20.30.40"


def options():
    parser = argparse.ArgumentParser(
        prog="script/demo", description="With a display the window is yours to play with; without "
        "one it is driven through a short tour on a display of its own. At the end you are told "
        "what changed in the registry.")
    parser.add_argument("--tour", action="store_true", help="take the tour, display or not")
    parser.add_argument("--locale", help="run the program in this locale, de_DE.UTF-8 say")
    parser.add_argument("--build", type=pathlib.Path, default=ROOT / "build" / "release",
                        help="the build directory to take the program from")
    parser.add_argument("--device", type=pathlib.Path,
                        help="keep the device, registry and all, in this directory")
    parser.add_argument("--screenshots", type=pathlib.Path, default=ROOT / "build" / "demo",
                        help="where the tour leaves its pictures (build/demo)")
    return parser.parse_args()


def display_is_usable():
    from Xlib import display, error
    try:
        display.Display().close()
        return True
    except (error.DisplayError, OSError):
        return False


def environment(device, locale):
    """This process's own; in another locale if asked for, which the machine need not have."""
    variables = dict(os.environ)
    variables.pop("LD_LIBRARY_PATH", None)
    if locale:
        variables.update(LC_ALL=locale,
                         LOCPATH=str(device.build_dir / "tests" / "translations" / "locales"))
    return variables


def play(device, locale):
    print("The window is yours: change something, press OK, close the hint.", flush=True)
    device.start([device.program], environment(device, locale)).wait()


def take_tour(device, locale, directory):
    """Both pages, a change, OK, the hint; a picture of each."""
    from harness.accessibility import Bus, Role
    from harness.app import App
    from harness.desktop import Desktop

    bus = Bus()
    desktop = Desktop(bus, size=(800, 600))
    variables = {**environment(device, locale or "C.UTF-8"), **desktop.environment,
                 "GTK_MODULES": "gail:atk-bridge"}
    app = App(desktop, device, [device.program], variables)
    directory.mkdir(parents=True, exist_ok=True)

    def picture(name):
        app.screenshot(directory / f"{name}.png")
        print(f"  {directory / name}.png", flush=True)

    try:
        print("A short tour:", flush=True)
        app.wait_started(app.wait_for(lambda: app.root and app.windows(),
                                      "the window")[0].title)
        window = app.active
        general, groups = window.pages()
        picture("1-general")
        window.page(groups)
        picture("2-groups")
        window.page(general)
        window.entry(window.find(Role.TEXT)[0].label).fill(NEW_GATEWAY)
        picture("3-changed")
        window.find(Role.PUSH_BUTTON)[-2].click()  # OK, then Cancel
        hint = app.message()
        picture("4-hint")
        hint.close()
        app.wait_exit()
    finally:
        app.stop()
        desktop.close()
        bus.close()


def tell_changes(before, after):
    changed = [name for name in after if before.get(name) != after[name]]
    print("Changed in the registry:" if changed else "Nothing changed in the registry.")
    for name in changed:
        old, new = (os.fsdecode(values.get(name, b"")) for values in (before, after))
        print(f"  {name}: {old} -> {new}")


def main():
    chosen = options()
    with SimDevice(chosen.build, chosen.device) as device:
        device.install_languages()
        before = device.registry.committed()
        if chosen.tour or not display_is_usable():
            take_tour(device, chosen.locale, chosen.screenshots)
        else:
            play(device, chosen.locale)
        tell_changes(before, device.registry.committed())


if __name__ == "__main__":
    main()
