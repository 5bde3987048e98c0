"""Top-level X windows as the window manager sees them."""
from Xlib import X, Xutil, error


class XWindow:
    """One top-level window; equal to every other object for the same window."""

    def __init__(self, desktop, xid):
        self._desktop = desktop
        self._window = desktop.display.create_resource_object("window", xid)
        self.id = xid

    def __eq__(self, other):
        return isinstance(other, XWindow) and self.id == other.id

    def __hash__(self):
        return hash(self.id)

    def __repr__(self):
        return f"<XWindow {self.id:#x} {self.title!r} pid {self.pid}>"

    def read(self, name):
        """The property's value (bytes or a list of numbers), None when there is none."""
        try:
            found = self._window.get_full_property(self._desktop.atom(name), X.AnyPropertyType)
        except error.BadWindow:
            return None
        return found and found.value

    @property
    def title(self):
        title = self.read("_NET_WM_NAME") or self.read("WM_NAME") or b""
        return title.decode(errors="replace") if isinstance(title, bytes) else title

    @property
    def pid(self):
        pid = self.read("_NET_WM_PID")
        return pid and pid[0]

    @property
    def mapped(self):
        """Whether the window is on the screen (an iconified one is not)."""
        try:
            return self._window.get_attributes().map_state == X.IsViewable
        except error.BadWindow:
            return False

    @property
    def iconic(self):
        state = self.read("WM_STATE")
        return bool(state) and state[0] == Xutil.IconicState

    @property
    def shaded(self):
        return self._desktop.atom("_NET_WM_STATE_SHADED") in (self.read("_NET_WM_STATE") or [])

    @property
    def workspace(self):
        workspace = self.read("_NET_WM_DESKTOP")
        return workspace and workspace[0]

    @property
    def box(self):
        """(x, y, width, height) on the screen, without the window manager's frame."""
        size = self._window.get_geometry()
        origin = size.root.translate_coords(self._window, 0, 0)
        return (origin.x, origin.y, size.width, size.height)

    def destroy(self):
        """Takes it from its program, see App.destroy_window()."""
        self._window.destroy()
        self._desktop.display.sync()

    def client(self):
        """What all windows of one X connection have in common."""
        return self.id & ~self._desktop.display.display.info.resource_id_mask
