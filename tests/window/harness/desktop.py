"""A desktop of its own for the tests: X server, window manager, keyboard, pointer, clipboard."""
import contextlib
import os
import re
import select
import subprocess
import tempfile
import time

from PIL import Image, ImageChops
from Xlib import X, Xutil, display
from Xlib.ext import xtest
from Xlib.protocol import event, request

from .keyboard import Keyboard
from .processes import end_helper, read_announced, start_helper
from .waiting import LIMIT, wait_for
from .xwindow import XWindow

# No key bindings: every key belongs to the program. A click gives the focus and raises.
OPENBOX = """<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew><focusLast>yes</focusLast><raiseOnFocus>no</raiseOnFocus></focus>
  <theme><name>Clearlooks</name></theme>
  <desktops><number>1</number><popupTime>0</popupTime></desktops>
  <keyboard/>
  <mouse>
    <context name="Client">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
      <mousebind button="Middle" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
    </context>
    <context name="Close">
      <mousebind button="Left" action="Click"><action name="Close"/></mousebind>
    </context>
  </mouse>
  <menu/>
</openbox_config>
"""
MANAGERS = {
    "openbox": lambda rc: ["openbox", "--sm-disable", "--config-file", rc],
    "icewm": lambda _: ["icewm"],
    "jwm": lambda _: ["jwm", "-f", "/etc/jwm/system.jwmrc"],
    "metacity": lambda rc: ["metacity", "--sm-disable", "--no-composite"],
    "xfwm4": lambda _: ["xfwm4", "--compositor=off"],
}
# The service of the session from which a manager wants its settings.
SERVICES = {"xfwm4": "org.xfce.Xfconf"}
# What is drawn depends on nothing but the program: no blinking, no user's theme, no second click
# that counts as a double one.
GTKRC = """gtk-theme-name = "Raleigh"
gtk-icon-theme-name = "hicolor"
gtk-font-name = "{font}"
gtk-cursor-blink = 0
gtk-enable-animations = 0
gtk-double-click-time = 0
"""
BY_USER = 2  # who asks the window manager: a task bar, for the user
ADD = 1  # to the window's states
ALL_WORKSPACES = 0xFFFFFFFF


def pictures_differ(one, other):
    """The box (left, top, right, bottom) in which two pictures differ, None when they do not."""
    return ImageChops.difference(one, other).getbbox()


class Desktop:
    """manager is one of MANAGERS, or None for a display without a window manager."""

    def __init__(self, bus, manager="openbox", size=(1024, 768), font="DejaVu Sans 10"):
        self.manager = manager
        self.size = size
        self._helpers = []
        self._directory = tempfile.TemporaryDirectory(prefix="korv-desktop-")
        self._log = self._file("log", "")
        plain = {**os.environ, **bus.environment, "GSETTINGS_BACKEND": "memory"}
        try:
            self.name = self._start_server(plain)
            if self.name == ":0":  # stays empty: programs that are told of no display come there
                self.name = self._start_server(plain)
            self._server = self._helpers[-1]
            # What a program needs to run on this desktop.
            self.environment = {**bus.environment, "DISPLAY": self.name,
                                "XDG_RUNTIME_DIR": self._directory.name,
                                "GTK2_RC_FILES": self._file("gtkrc", GTKRC.format(font=font)),
                                "GTK_IM_MODULE": "gtk-im-context-simple"}
            self._connect(plain)
        except BaseException:
            self.close()
            raise

    def _start_server(self, env):
        width, height = self.size
        server, number = read_announced(
            ["Xvfb", "-screen", "0", f"{width}x{height}x24", "-dpi", "96", "-nolisten", "tcp",
             "-noreset", "-extension", "GLX"], lambda writer: ["-displayfd", str(writer)], env, self._log)
        self._helpers.append(server)
        return f":{number}"

    def _connect(self, plain):
        self.display = display.Display(self.name)
        # Windows may go at any moment; requests that want an answer raise, the others need none.
        self.display.set_error_handler(lambda *_: None)
        self.root = self.display.screen().root
        self.root.change_attributes(event_mask=X.SubstructureNotifyMask)
        self._atoms = {}
        self._probe = None
        self._pings = 0x40000000  # apart from the window manager's own
        self.keyboard = Keyboard(self.display)
        self.park_pointer()
        if self.manager:
            argv = MANAGERS[self.manager](self._file("rc.xml", OPENBOX))
            own = {"DISPLAY": self.name, "HOME": self._directory.name,
                   "XDG_CONFIG_HOME": self._directory.name, "NO_AT_BRIDGE": "1"}
            if self.manager in SERVICES:
                self._start_service(SERVICES[self.manager], {**plain, **own})
            self._helpers.append(start_helper(argv, {**plain, **own}, self._log))
            wait_for(self._manager_answers, self.manager)
            wait_for(self._manager_gives_focus, f"{self.manager} to give a window the keyboard")

    def _start_service(self, name, env):
        with open(f"/usr/share/dbus-1/services/{name}.service", encoding="utf-8") as service:
            argv, = re.findall(r"^Exec=(.*)$", service.read(), re.MULTILINE)
        self._helpers.append(start_helper(argv.split(), env, self._log))
        subprocess.run(["gdbus", "wait", "--session", name], env=env, timeout=LIMIT, check=True)

    def close(self):
        for helper in reversed(self._helpers):
            end_helper(helper)
        self._directory.cleanup()

    def end_server(self):
        """The X server ends; nothing but close() works from here on."""
        end_helper(self._server)

    def _file(self, name, text):
        path = os.path.join(self._directory.name, name)
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)
        return path

    # --- windows ---

    def atom(self, name):
        if name not in self._atoms:
            self._atoms[name] = self.display.intern_atom(name)
        return self._atoms[name]

    def _root_property(self, name):
        found = self.root.get_full_property(self.atom(name), X.AnyPropertyType)
        return list(found.value) if found else []

    def stacking(self):
        """All top-level windows from the lowest to the highest, iconified ones included."""
        if self.manager:
            ids = (self._root_property("_NET_CLIENT_LIST_STACKING")
                   or self._root_property("_NET_CLIENT_LIST"))  # all that xfwm4 has for one window
            return [XWindow(self, xid) for xid in ids]
        windows = [XWindow(self, child.id) for child in self.root.query_tree().children]
        return [window for window in windows if window.pid and window.mapped]

    def windows(self, pid=None, title=None):
        """The top-level windows of a process or with a title, from the lowest to the highest."""
        return [window for window in self.stacking()
                if pid in (None, window.pid) and title in (None, window.title)]

    def active_window(self):
        """The window that the window manager calls active, None when there is none."""
        active = self._root_property("_NET_ACTIVE_WINDOW")
        return XWindow(self, active[0]) if active and active[0] else None

    def input_focus(self):
        """The window with the X input focus (it may be inside a top-level one), None for none."""
        focus = self.display.get_input_focus().focus
        return None if focus in (X.NONE, X.PointerRoot) else XWindow(self, focus.id)

    def give_focus(self, window):
        """Gives a window the input focus, since there is no window manager to do so."""
        if self.input_focus() != window:
            self.display.set_input_focus(window.id, X.RevertToPointerRoot, X.CurrentTime)

    def iconify(self, window):
        self._tell_root(window, "WM_CHANGE_STATE", [Xutil.IconicState])
        self.settle_manager()
        wait_for(lambda: window.iconic and not window.mapped, f"{window} to be iconified")

    def shade(self, window):
        """What the window manager's menu calls to roll up."""
        shaded = self.atom("_NET_WM_STATE_SHADED")
        self._tell_root(window, "_NET_WM_STATE", [ADD, shaded, 0, BY_USER])
        wait_for(lambda: window.shaded, f"{window} to be rolled up")
        self.settle_manager()

    @property
    def workspace(self):
        """The number of the one to be seen, from 0."""
        return self._root_property("_NET_CURRENT_DESKTOP")[0]

    def go_to_workspace(self, number):
        self._tell_root(self.root, "_NET_NUMBER_OF_DESKTOPS", [number + 1])
        wait_for(lambda: self._root_property("_NET_NUMBER_OF_DESKTOPS")[0] > number, "workspaces")
        self._tell_root(self.root, "_NET_CURRENT_DESKTOP", [number, X.CurrentTime])
        wait_for(lambda: self.workspace == number, f"workspace {number}")
        self.settle_manager()

    def show_on_all_workspaces(self, window):
        self._tell_root(window, "_NET_WM_DESKTOP", [ALL_WORKSPACES, BY_USER])
        wait_for(lambda: window.workspace == ALL_WORKSPACES, f"{window} to be on all workspaces")

    def activate(self, window):
        """What a task bar does: brings the window to the front and gives it the focus. Asks until it
        has, as a person would: a program may have asked the same for its own window meanwhile."""
        def ask():
            self._tell_root(window, "_NET_ACTIVE_WINDOW", [BY_USER])
            self.settle_manager()
            return self.active_window() == window
        wait_for(ask, f"{window} to be active")

    def close_window(self, window):
        """What the title bar's close control does."""
        if self.manager:
            self._tell_root(window, "_NET_CLOSE_WINDOW", [X.CurrentTime, BY_USER])
        else:
            self._send(window.id, window.id, "WM_PROTOCOLS", [self.atom("WM_DELETE_WINDOW")], 0)
        self.display.sync()

    # --- input ---

    def park_pointer(self):
        """Moves the pointer to where it touches nothing."""
        self.move_pointer(self.size[0] - 1, self.size[1] - 1)

    def move_pointer(self, x, y):
        xtest.fake_input(self.display, X.MotionNotify, x=x, y=y)
        self.display.sync()

    def press_at(self, x, y, button=1):
        """Moves the pointer and presses and releases a button there (4 and 5 are the wheel)."""
        xtest.fake_input(self.display, X.MotionNotify, x=x, y=y)
        xtest.fake_input(self.display, X.ButtonPress, button)
        xtest.fake_input(self.display, X.ButtonRelease, button)
        self.display.sync()

    def click_at(self, x, y, button=1):
        """The same, and the window manager has dealt with it."""
        self.press_at(x, y, button)
        self.settle_manager()

    def hold_button(self, button=1):
        xtest.fake_input(self.display, X.ButtonPress, button)
        self.display.sync()

    def release_button(self, button=1):
        xtest.fake_input(self.display, X.ButtonRelease, button)
        self.display.sync()

    def set_clipboard(self, text):
        """Makes the text what the clipboard and the primary selection hold."""
        for selection in ("CLIPBOARD", "PRIMARY"):
            before = self.display.get_selection_owner(self.atom(selection))
            keeper = subprocess.Popen(["xclip", "-quiet", "-selection", selection], env={
                **os.environ, "DISPLAY": self.name, "LC_ALL": "C.UTF-8"}, stdin=subprocess.PIPE,
                stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            keeper.stdin.write(text.encode())
            keeper.stdin.close()
            self._helpers.append(keeper)
            wait_for(lambda: self.display.get_selection_owner(self.atom(selection))
                     not in (before, X.NONE), f"the {selection} selection to be taken")

    # --- keeping in step ---

    def settle_manager(self):
        """Returns when the window manager has dealt with everything that came before.

        It holds a click back until it has decided about the focus, for example.
        """
        if self.manager:
            assert self._ask_manager(LIMIT), f"no answer from {self.manager} in {LIMIT:g} s"

    def _manager_answers(self):
        """Whether it has started; a fresh window to ask about keeps late answers apart."""
        self._probe = self.root.create_window(0, 0, 1, 1, 0, X.CopyFromParent,
                                              event_mask=X.PropertyChangeMask)
        return self._ask_manager(timeout=0.05)

    def _manager_gives_focus(self):
        """Whether a new window becomes the active one. A manager that has just started may overlook
        the first, and gives it the keyboard at no later time either."""
        window = self.root.create_window(0, 0, 1, 1, 0, X.CopyFromParent)
        window.set_wm_hints(flags=Xutil.InputHint, input=True)
        window.map()
        tried = XWindow(self, window.id)
        given = False
        with contextlib.suppress(AssertionError):
            given = wait_for(lambda: self.active_window() == tried, "it to be active", timeout=1)
        window.destroy()
        wait_for(lambda: tried not in self.stacking(), f"{self.manager} to forget a window")
        self.settle_manager()
        return given

    def _ask_manager(self, timeout):
        self._tell_root(self._probe, "_NET_REQUEST_FRAME_EXTENTS", [])
        answer = self.atom("_NET_FRAME_EXTENTS")
        return self._event(lambda e: e.type == X.PropertyNotify and e.window == self._probe
                           and e.atom == answer, timeout)

    def settle_window(self, window, timeout):
        """Waits until the window's program has dealt with all X events sent to it before; whether
        it has in time.

        The program answers a ping when it comes to it in its queue.
        """
        self._pings += 1
        ping = [self.atom("_NET_WM_PING"), self._pings, window.id]
        self._send(window.id, window.id, "WM_PROTOCOLS", ping, 0)
        return self._event(lambda e: e.type == X.ClientMessage and e.window == self.root
                           and e.data[0] == 32 and list(e.data[1][:3]) == ping, timeout)

    def _send(self, target, window, message, values, mask):
        data = (32, [*values, *[0] * (5 - len(values))])
        note = event.ClientMessage(window=window, client_type=self.atom(message), data=data)
        request.SendEvent(self.display.display, propagate=False, destination=target,
                          event_mask=mask, event=note)
        self.display.flush()

    def _tell_root(self, window, message, values):
        self._send(self.root.id, window.id, message, values,
                   X.SubstructureRedirectMask | X.SubstructureNotifyMask)

    def _event(self, matches, timeout):
        """Drops the events up to the first that matches; whether one came in time."""
        deadline = time.monotonic() + timeout
        while True:
            for _ in range(self.display.pending_events()):
                if matches(self.display.next_event()):
                    return True
            left = deadline - time.monotonic()
            if left < 0:
                return False
            select.select([self.display], [], [], left)

    # --- pictures ---

    def picture(self, box=None):
        """What is on the screen, or in the box (x, y, width, height) of it, as a PIL image."""
        x, y, width, height = box or (0, 0, *self.size)
        image = self.root.get_image(x, y, width, height, X.ZPixmap, 0xFFFFFFFF)
        return Image.frombytes("RGB", (width, height), image.data, "raw", "BGRX")
