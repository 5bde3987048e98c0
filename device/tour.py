"""A short tour of the program, on a display of its own and by keyboard, as a person would take it."""
import pathlib
import sys
import types

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "tests" / "window"))
from harness.desktop import Desktop  # noqa: E402
from harness.processes import is_idle  # noqa: E402
from harness.waiting import wait_for  # noqa: E402

NEW_GATEWAY = "10.20.30.40"


class Tour:
    """The program on the display, and how to use it."""

    def __init__(self, desktop, device, variables, directory):
        self._desktop = desktop
        self._directory = directory
        self._window = None
        self._program = device.start([device.program], {**variables, **desktop.environment})

    def _windows(self):
        return [w for w in self._desktop.windows(pid=self._program.program_pid) if w.mapped]

    def _wait_for(self, condition, what):
        return wait_for(lambda: self._program.poll() is not None or condition(), what)

    def wait_for_window(self):
        """Waits until another window of the program is in use than before."""
        def opened():
            window, focus = self._desktop.active_window(), self._desktop.input_focus()
            return window != self._window and window in self._windows() and \
                focus and focus.client() == window.client() and window
        self._window = self._wait_for(opened, "the program's next window")
        if self._program.poll() is not None:
            raise SystemExit(f"The program has ended with status {self._program.program_status}.")
        self._settle()

    def wait_for_end(self):
        wait_for(lambda: self._program.poll() is not None, "the program to end")

    def _settle(self):
        """Waits until the program has dealt with its input and drawn what came of it."""
        self._desktop.settle_manager()
        for step in (self._answers, lambda: is_idle(self._program.program_pid), self._answers):
            self._wait_for(step, "the program to deal with its input")

    def _answers(self):
        return not self._window or self._desktop.settle_window(self._window, timeout=0.25)

    def press(self, *keys):
        for key in keys:
            self._desktop.keyboard.press(key)
            self._settle()

    def type(self, text):
        self._desktop.keyboard.type(text, self._settle)
        self._settle()

    def picture(self, name):
        path = self._directory / f"{name}.png"
        self._desktop.picture().save(path)
        print(f"  {path}", flush=True)


def take(device, variables, directory):
    """Both pages, a change, OK, the hint; a picture of each goes to the directory."""
    directory.mkdir(parents=True, exist_ok=True)
    # Without a bus for assistive tools and with a small window manager it asks little of the machine.
    desktop = Desktop(types.SimpleNamespace(environment={}), manager="jwm", size=(800, 600))
    try:
        print("A short tour:", flush=True)
        tour = Tour(desktop, device, variables, directory)
        tour.wait_for_window()
        tour.picture("1-general")
        tour.press("ctrl+Page_Down")
        tour.picture("2-groups")
        tour.press("ctrl+Page_Up", "Tab")  # to the first entry, with all of it selected
        tour.type(NEW_GATEWAY)
        tour.picture("3-changed")
        tour.press("shift+Tab", "shift+Tab", "shift+Tab")  # past the page's name and Cancel, to OK
        tour.press("space")
        tour.wait_for_window()
        tour.picture("4-hint")
        tour.press("Return")
        tour.wait_for_end()
    finally:
        desktop.close()
