"""The running program, as the person in front of it meets it."""
import contextlib
import gettext
import pathlib
import re
import signal
import subprocess
import tempfile

from Xlib.error import ConnectionClosedError

from . import accessibility
from .accessibility import Node, Role, State
from .processes import is_idle
from .stacks import with_names
from .waiting import LIMIT, NOT_THERE, told, wait_for, whole
from .windows import Message, Window

TITLE = "Agent Configure Manager"
WARNINGS = re.compile(r"^.*-(?:WARNING|CRITICAL|ERROR) \*\*.*$", re.MULTILINE)
SANITIZERS = re.compile(r"^.*(?:Sanitizer|runtime error:).*$", re.MULTILINE)
# The toolkit names a message's icon in the user's language.
KINDS = {"Error": "error", "Information": "info", "Warning": "warning", "Question": "question"}


class App:
    """One run of the program on a device and a desktop; see the package's guide."""

    def __init__(self, desktop, device, argv, env, fatal_warnings=True):
        self.desktop = desktop
        self.device = device
        self._locale = next((env[name] for name in ("LC_ALL", "LC_MESSAGES", "LANG")
                             if env.get(name)), "C")
        self._warnings_allowed = not fatal_warnings
        self._output = tempfile.TemporaryFile()
        self._errors = tempfile.TemporaryFile()
        self._root = None
        self._client = None
        self._active = None  # the node of the window that was active when last asked
        self._asked = None  # the X window that settled() asks
        self._end_was_checked = False
        self.process = device.start(argv, env, stdout=self._output, stderr=self._errors)

    # --- the process ---

    @staticmethod
    def _read(file):
        file.seek(0)
        return file.read().decode(errors="replace")

    @property
    def stdout(self):
        return self._read(self._output)

    @property
    def stderr(self):
        return self._read(self._errors)

    @property
    def running(self):
        return self.process.poll() is None

    @property
    def pid(self):
        return self.process.program_pid

    def wait_exit(self, timeout=LIMIT):
        """Waits for the program to end; its exit status. A crash fails the test."""
        wait_for(lambda: not self.running, "the program to end", timeout)
        assert not self._crashed(), f"the program crashed:\n{self.stderr}"
        return self.process.program_status

    def wait_crash(self, timeout=LIMIT):
        """Waits for the program to be ended by a signal, which is meant to happen."""
        wait_for(lambda: not self.running, "the program to crash", timeout)
        assert self._crashed(), f"the program ended with {self.process.program_status}"
        self._end_was_checked = True

    def _crashed(self):
        return self.process.program_status < 0

    def stop(self):
        """Ends the program if it still runs; what it complained about, "" for nothing."""
        ended_itself = not self.running
        self.process.terminate()  # a coverage build then writes its counters
        with contextlib.suppress(subprocess.TimeoutExpired):
            self.process.wait(LIMIT)
        self.process.kill()
        self.process.wait()
        output = self.stdout + self.stderr
        self._output.close()
        self._errors.close()
        complaints = SANITIZERS.findall(output)
        if not self._warnings_allowed:
            complaints += WARNINGS.findall(output)
        if ended_itself and self._crashed() and not self._end_was_checked:
            complaints.append(f"ended by signal: status {self.process.program_status}")
        return with_names(f"{output}\n{complaints}") if complaints else ""

    # --- waiting ---

    def wait_for(self, condition, what, timeout=LIMIT):
        """wait_for, where a program that has ended fails at once."""
        def checked():
            if self.running:
                return condition()
            with contextlib.suppress(*NOT_THERE):
                value = condition()
                if value:
                    return value
            raise AssertionError(
                f"the program ended with {self.process.program_status} before {told(what)}")
        return wait_for(checked, what, timeout)

    def wait_started(self, title=TITLE, active=True):
        """Waits for the window: mapped, on the accessibility bus, and active where asked for."""
        self.wait_for(lambda: self.root, "the program on the accessibility bus")
        self.window(title)
        window = self.wait_for(lambda: self.x_window(title), f"the window {title!r} on the screen")
        if active and self.desktop.manager:
            self.wait_for(lambda: self.desktop.active_window() == window,
                          lambda: f"{window} to be active")
        if active:
            self.ready_for_input()
        self.settled()
        return self

    def wait_active(self, title):
        """Waits for a window with the title to be active and at rest, by the word of the window
        manager and the X server alone, for a program that is not on the accessibility bus."""
        def has_keyboard():
            window, focus = self.desktop.active_window(), self.desktop.input_focus()
            return window and window.pid == self.pid and window.title == title and \
                focus and focus.client() == window.client()

        def keeps_keyboard():  # a window manager may hand it out twice before it rests
            return has_keyboard() and (self.settled() or has_keyboard())
        self.wait_for(keeps_keyboard, f"the window {title!r} to be active")

    def ready_for_input(self):
        """Waits until the keyboard belongs to a window of the program; without a window manager
        its highest window is given it."""
        self.wait_for(self._has_keyboard, "the keyboard to belong to the program")

    def _has_keyboard(self):
        if not self.desktop.manager:
            windows = self.x_windows()
            if windows:
                self.desktop.give_focus(windows[-1])
        focus = self.desktop.input_focus()
        return focus and focus.client() == self._x_client() and self._has_active_window()

    def _has_active_window(self):
        """Whether the program has seen that one of its windows is active, mostly the same as before."""
        with contextlib.suppress(*NOT_THERE):
            if self._active and self._active.has(State.ACTIVE):
                return True
        self._active = next((node for node in Node(self, self.root).children
                             if node.has(State.ACTIVE)), None)
        return self._active is not None

    def _x_client(self):
        """What all its X windows have in common, None before the first."""
        if self._client is None:
            self._client = next((window.client() for window in self.x_windows()), None)
        return self._client

    def settled(self):
        """Returns when the program has dealt with all input so far, has done what it had left for
        later, has had it drawn, and waits for more; or when it has ended."""
        self.desktop.settle_manager()

        def answers():
            if not (self._asked and self._asked.mapped):
                self._asked = next(iter(self.x_windows()), None)
            return not self._asked or self.desktop.settle_window(self._asked, timeout=0.25)

        for step in (answers, lambda: is_idle(self.pid), answers):
            wait_for(lambda: not self.running or step(), "the program to deal with its input")

    def wait_gone(self, window):
        """Waits until the window is closed."""
        def gone():
            try:
                return not self.running or not window.showing
            except NOT_THERE:
                return True
        self.wait_for(gone, "a window to close")
        self.settled()

    # --- windows ---

    @property
    def root(self):
        if not self._root:
            self._root = accessibility.program(self.pid)
        return self._root

    def x_windows(self):
        """The X windows on the screen, from the lowest to the highest."""
        return [w for w in self.desktop.windows(pid=self.pid) if w.mapped]

    def x_window(self, title=TITLE):
        """The X window with the title, None when there is none on the screen."""
        return next((w for w in self.x_windows() if w.title == title), None)

    @whole
    def windows(self):
        """The windows to be seen, the oldest first."""
        kinds = {Role.FRAME: Window, Role.DIALOG: Window, Role.ALERT: Message}
        nodes = [kinds.get(node.role, Node)(self, node.accessible)
                 for node in Node(self, self.root).children]
        return [node for node in nodes if isinstance(node, Window) and node.showing]

    @property
    def active(self):
        """The window in use: the active one, or the newest while a list is open in it."""
        self.ready_for_input()

        def in_use():
            windows = self.windows()
            return next((window for window in windows if window.active), windows and windows[-1])
        return self.wait_for(in_use, "a window")

    def window(self, title=TITLE):
        """Waits for a window with the title."""
        return self.wait_for(lambda: next((w for w in self.windows() if w.title == title), None),
                             f"a window {title!r}")

    def dialog(self, title):
        """Waits for a dialog with the title to be there and active."""
        return self._wait_in_use(lambda w: w.role == Role.DIALOG and w.title == title,
                                 f"a dialog {title!r}")

    def message(self):
        """Waits for a message dialog to be there and active."""
        return self._wait_in_use(lambda w: w.role == Role.ALERT, "a message")

    def _wait_in_use(self, matches, what):
        def found():
            self.ready_for_input()
            return next((w for w in self.windows() if matches(w)
                         and w.active), None)
        return self.wait_for(found, what)

    def no_message(self):
        """Fails when all input so far has led to a message."""
        self.settled()
        messages = [window.text for window in self.windows() if window.role == Role.ALERT]
        assert not messages, f"unexpected: {messages}"

    def message_kind(self, name):
        """The kind of message whose icon has this name in the program's language."""
        toolkit = gettext.translation("gtk20", "/usr/share/locale", [self._locale], fallback=True)
        return next(kind for english, kind in KINDS.items()
                    if name in (english, toolkit.pgettext("Stock label", english)))

    def close_window(self, title=TITLE):
        """Uses the title bar's close control."""
        self.desktop.close_window(self.x_window(title))
        self.settled()

    def destroy_window(self, title=TITLE):
        """Takes the X window with the title from the program, as every program of the X server can.
        The program is at rest and stopped in the meantime: drawing in a window that is gone would be
        an X error and end it."""
        self.settled()
        self.process.send_signal(signal.SIGSTOP)
        status = pathlib.Path(f"/proc/{self.pid}/status")
        wait_for(lambda: "State:\tT" in status.read_text(), "the program to stop")
        self.x_window(title).destroy()
        self.desktop.settle_manager()
        self.process.send_signal(signal.SIGCONT)

    # --- the window in use, see Window ---

    def entry(self, label):
        return self.active.entry(label)

    def combo(self, label):
        return self.active.combo(label)

    def button(self, name):
        return self.active.button(name)

    def radio(self, name):
        return self.active.radio(name)

    def label(self, text):
        return self.active.label(text)

    def table(self):
        return self.active.table()

    def page(self, title):
        self.active.page(title)

    def focused(self):
        return self.active.focused()

    @whole
    def texts(self):
        """All texts to be seen in all windows."""
        return [text for window in self.windows() for text in window.texts()]

    # --- input; it returns when the program has dealt with it, unless settle is False ---

    def key(self, combination, settle=True):
        """Presses a key by its X name: "Tab", "Return", "a", "ctrl+v", "shift+Tab"."""
        self.ready_for_input()
        self.desktop.keyboard.press(combination)
        if settle:
            self.settled()

    def type(self, text):
        """Types the text, any Unicode character; a line feed is Return, a tab is Tab."""
        self.ready_for_input()
        self.desktop.keyboard.type(text, self.settled)

    def click_at(self, x, y, button=1, settle=True):
        self.ready_for_input()
        if settle:
            self.desktop.press_at(x, y, button)
            self.settled()
        else:
            self.desktop.click_at(x, y, button)

    def drag(self, start, end):
        """Drags what is selected at one point of the screen to another and drops it there, to be
        moved and not copied."""
        self.ready_for_input()
        x, y = end
        self._move_pointer(*start)
        self.desktop.hold_button()
        self._move_pointer(x - 1, y)  # the drag begins, and can be told what it is
        with self.desktop.keyboard.holding("shift"):
            self._move_pointer(x, y)
            self.desktop.release_button()
            self.settled()

    def _move_pointer(self, x, y):
        self.desktop.move_pointer(x, y)
        self.settled()

    def middle_click(self, node):
        """Pastes the primary selection."""
        node.click(button=2)

    def wheel(self, node, direction):
        """Turns the mouse wheel by one notch over the node, "up" or "down"."""
        node.click(button={"up": 4, "down": 5}[direction])

    def set_clipboard(self, text):
        """Makes the text what the clipboard and the primary selection hold."""
        self.desktop.set_clipboard(text)
        self.settled()

    # --- pictures ---

    def picture(self, node=None):
        """The screen, or the node's part of it, as a PIL image."""
        self.settled()
        return self.desktop.picture(node and node.box)

    def screenshot(self, path, node=None):
        """Writes a PNG of the screen or of the node."""
        self.picture(node).save(path)

    def report(self, path):
        """What a failing test should tell; a picture of the screen goes to the path."""
        try:
            self.desktop.picture().save(path)
        except ConnectionClosedError:
            path = "none, the X server has ended"
        if not self.running:
            texts = f"ended with {self.process.program_status}"
        elif not self.root:
            texts = f"not on the accessibility bus; X windows: {self.x_windows()}"
        else:
            try:
                texts = self.texts()
            except (AssertionError, *NOT_THERE) as problem:
                texts = f"unreadable: {problem}"
        return f"visible: {texts}\nstdout: {self.stdout}\nstderr: {self.stderr}\npicture: {path}"
