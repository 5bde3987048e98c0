"""The program on a simulated device, for a person at a display, or on a tour by itself without one."""
import argparse
import locale
import os
import pathlib
import re
import subprocess

from simdevice import SimDevice, end_in_order, is_usable

ROOT = pathlib.Path(__file__).resolve().parents[1]
LOCALE = re.compile(r"(\w+)(?:\.([\w-]+))?(@\w+)?")  # language, charset, variant
SUPPORTED = pathlib.Path("/usr/share/i18n/SUPPORTED")  # "de_DE ISO-8859-1" and so on


def directory(name):
    """An argument that names a directory, which need not be there."""
    path = pathlib.Path(name)
    if not name or (path.exists() and not path.is_dir()):
        raise argparse.ArgumentTypeError(f"{name!r} is no directory")
    return path


def options():
    """The options, which script/demo tells of."""
    parser = argparse.ArgumentParser(prog="script/demo", usage="script/demo --help", add_help=False)
    parser.add_argument("--tour", action="store_true")
    parser.add_argument("--locale")
    parser.add_argument("--build", type=directory, default=ROOT / "build" / "demo")
    parser.add_argument("--device", type=directory)
    parser.add_argument("--screenshots", type=directory, default=ROOT / "build" / "tour")
    chosen = parser.parse_args()
    if not (chosen.build / "device" / "regmux").exists():
        parser.error(f"nothing is built in {chosen.build}")
    if chosen.locale is not None and not LOCALE.fullmatch(chosen.locale):
        parser.error(f"{chosen.locale!r} names no locale")
    if chosen.device and not is_usable(chosen.device):
        parser.error(f"{chosen.device} has files in it that are no device's")
    return chosen


def display_is_usable():
    from Xlib import display, error
    try:
        display.Display().close()
        return True
    except (error.DisplayError, OSError):
        return False


def machine_has(name):
    try:
        locale.setlocale(locale.LC_ALL, name)
        return True
    except locale.Error:
        return False


def make_locale(name, directory):
    """Makes a locale that the machine does not have, where LOCPATH can name it."""
    language, charset, variant = LOCALE.fullmatch(name).groups("")
    if charset.lower().replace("-", "") == "utf8":
        charset = "UTF-8"
    elif not charset:
        known = re.search(rf"^{re.escape(name)} (\S+)", SUPPORTED.read_text(), re.MULTILINE)
        charset = known[1] if known else "UTF-8"
    directory.mkdir(exist_ok=True)
    made = subprocess.run([ROOT / "device/make_locale", "localedef", language + variant, charset,
                           directory / name], capture_output=True, text=True, check=False)
    if made.returncode:
        raise SystemExit(f"script/demo: no locale {name!r}: {made.stderr.strip()}")


def environment(device, name):
    """This process's own; in another locale if asked for, which the machine need not have."""
    variables = dict(os.environ)
    variables.pop("LD_LIBRARY_PATH", None)
    if name:
        variables["LC_ALL"] = name
        if not machine_has(name):
            variables["LOCPATH"] = str(device.state / "locales")
            make_locale(name, device.state / "locales")
    return variables


def play(device, variables):
    print("The window is yours: change something, press OK, close the hint.", flush=True)
    device.start([device.program], variables).wait()


def tell_changes(before, after):
    changed = [name for name in after if before.get(name) != after[name]]
    print("Changed in the registry:" if changed else "Nothing changed in the registry.")
    for name in changed:
        old, new = (os.fsdecode(values.get(name, b"")) for values in (before, after))
        print(f"  {name}: {old} -> {new}")


def main():
    chosen = options()
    end_in_order()
    with SimDevice(chosen.build, chosen.device) as device:
        device.install_languages()
        before = device.registry.committed()
        variables = environment(device, chosen.locale)
        if chosen.tour or not display_is_usable():
            import tour  # which needs more than playing does
            tour.take(device, variables, chosen.screenshots)
        else:
            play(device, variables)
        tell_changes(before, device.registry.committed())


if __name__ == "__main__":
    main()
