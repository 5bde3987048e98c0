"""The fixtures of the window tests, for the program of the package."""
import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1]))
import window.conftest  # noqa: E402

bus = window.conftest.bus
desktop_with = window.conftest.desktop_with
desktop = window.conftest.desktop
device = window.conftest.device
start = window.conftest.start
pytest_runtest_makereport = window.conftest.pytest_runtest_makereport
