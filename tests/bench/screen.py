"""The display of the benchmark: when it was last drawn on, and where OK is."""
import select
import time
import types

from harness.desktop import Desktop
from Xlib import X, display
from Xlib.ext import damage, xtest

from processes import is_asleep

QUIET = 0.25  # seconds without a drawing: it is complete
LIMIT = 30.0  # seconds
OK_BUTTON = (-153, -39)  # its middle, from the window's lower right corner


class Screen:
    """A display without a window manager, of its own for what is measured."""

    def __init__(self):
        self.desktop = Desktop(types.SimpleNamespace(environment={}), manager=None)
        # A connection of its own, so that nothing but these events comes to it.
        self._display = display.Display(self.desktop.name)
        self._display.damage_query_version()
        self._root = self._display.screen().root
        self._root.change_attributes(event_mask=X.SubstructureNotifyMask)
        self._root.damage_create(damage.DamageReportRawRectangles)
        self._drawn = self._display.extension_event.DamageNotify
        self._display.sync()

    def close(self):
        self._display.close()
        self.desktop.close()

    @property
    def environment(self):
        return self.desktop.environment

    def forget(self):
        """What has been drawn so far does not count."""
        self._display.sync()
        while self._display.pending_events():
            self._display.next_event()

    def drawn(self, pid, new_window=True):
        """Waits until a window has come up (where one is to come) and its process has drawn it and
        rests; the time of the last drawing, in nanoseconds of the monotonic clock."""
        deadline = time.monotonic() + LIMIT
        last = None
        while time.monotonic() < deadline:
            select.select([self._display], [], [], QUIET)
            now = time.monotonic_ns()
            if not self._display.pending_events() and last and not new_window and self._rests(pid):
                return last
            while self._display.pending_events():
                event = self._display.next_event()
                if event.type == X.MapNotify and not event.override:
                    new_window = False
                elif event.type == self._drawn:
                    last = now
        raise TimeoutError("no window was drawn")

    def _rests(self, pid):
        """Not so on a busy machine, where a process may wait for its turn to draw."""
        resting = is_asleep(pid)
        self._display.sync()
        return resting and not self._display.pending_events()

    def press_ok(self, pid):
        """Presses OK; the time at which the button was let go, which is what counts."""
        window = next(window for window in reversed(self._root.query_tree().children)
                      if window.get_attributes().map_state == X.IsViewable)
        box = window.get_geometry()
        pointer = self.desktop.display
        self.desktop.move_pointer(box.x + box.width + OK_BUTTON[0],
                                  box.y + box.height + OK_BUTTON[1])
        xtest.fake_input(pointer, X.ButtonPress, 1)
        pointer.sync()
        self.drawn(pid, new_window=False)
        self.forget()
        begin = time.monotonic_ns()
        xtest.fake_input(pointer, X.ButtonRelease, 1)
        pointer.flush()
        return begin
