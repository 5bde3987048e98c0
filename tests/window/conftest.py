"""Fixtures for tests that drive the real program; the guide is in harness/__init__.py."""
import os
import pathlib
import signal
import sys

import pytest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT), str(ROOT / "tests" / "window")]

from device.simdevice import SimDevice  # noqa: E402
from harness.accessibility import Bus  # noqa: E402
from harness.app import TITLE, App  # noqa: E402
from harness.desktop import Desktop  # noqa: E402
from harness.stacks import WITHOUT_NAMES  # noqa: E402

BUILD = pathlib.Path(os.environ.get("KORV_BUILD_DIR", ROOT / "build" / "release")).resolve()
# As CTest sets them, for those who call pytest themselves.
LOCALES = os.environ.get("KORV_LOCALES", str(BUILD.parent / "locales"))
SANITIZERS = {"LSAN_OPTIONS": f"suppressions='{ROOT}/tests/lsan.supp':print_suppressions=0"}
# What the tests' own surroundings must not decide.
FOREIGN = ("LC_", "LANG", "XDG_", "XMODIFIERS", "GTK_", "G_", "DBUS_", "LD_LIBRARY_PATH")

os.environ["FONTCONFIG_FILE"] = str(ROOT / "tests/window/harness/fonts.conf")

# The end of the terminal, and SIGTERM, are taken as Ctrl-C is: fixtures put away what they have made.
for way_to_end in (signal.SIGHUP, signal.SIGTERM):
    signal.signal(way_to_end, signal.default_int_handler)


@pytest.fixture(scope="session")
def bus():
    bus = Bus()
    yield bus
    bus.close()


@pytest.fixture(scope="session")
def desktop_with(bus):
    """desktop_with(manager=, size=, font=): a desktop of that kind, made once."""
    made = {}

    def make(**kind):
        key = tuple(sorted(kind.items()))
        if key not in made:
            made[key] = Desktop(bus, **kind)
        return made[key]

    yield make
    for desktop in made.values():
        desktop.close()


@pytest.fixture
def desktop(desktop_with):
    return desktop_with()


@pytest.fixture
def device():
    device = SimDevice(BUILD)
    yield device
    device.close()


@pytest.fixture
def start(request, device, desktop):
    """start(...): starts the program and waits for its window; see the guide."""
    apps = request.node.korv_apps = []

    def begin(locale="C.UTF-8", env=None, device=device, desktop=desktop, fatal_warnings=True,
              wait=True, title=TITLE):
        desktop.park_pointer()
        inherited = {k: v for k, v in os.environ.items() if not k.startswith(FOREIGN)}
        variables = {**SANITIZERS, **WITHOUT_NAMES, **inherited, **desktop.environment, "LC_ALL": locale,
                     "GTK_MODULES": "gail:atk-bridge",
                     "G_DEBUG": "fatal-warnings" if fatal_warnings else None, **(env or {})}
        variables = {k: v for k, v in variables.items() if v is not None}
        app = App(desktop, device, [device.program], variables, fatal_warnings)
        apps.append(app)
        if wait:
            app.wait_started(title, active=wait is True)
        return app

    yield begin
    complaints = [complaint for complaint in map(App.stop, apps) if complaint]
    if complaints:
        pytest.fail("\n".join(complaints), pytrace=False)


@pytest.hookimpl(hookwrapper=True)
def pytest_runtest_makereport(item, call):
    """A failure tells what was on the screen."""
    outcome = yield
    report = outcome.get_result()
    if report.when == "call" and report.failed:
        directory = item.config._tmp_path_factory.mktemp("failure")
        for number, app in enumerate(getattr(item, "korv_apps", [])):
            report.sections.append((f"program {number + 1}",
                                    app.report(directory / f"{number + 1}.png")))
