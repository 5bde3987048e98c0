"""What a person sees and can do while OK looks names up and writes, which a slow resolver or a slow
client makes last: the pointer is the watch, and what is typed, clicked or pressed is without effect."""
import fcntl
import os
import signal

import pytest
from device_calls import written
from general import CURRENT_FAULT
from gi.repository import Gio, GLib

from harness.accessibility import Role
from harness.waiting import wait_for

BEGUN, GATE = "/run/begun", "/run/gate"


@pytest.fixture
def held_commit(device):
    """The registry's commit lasts until release()."""
    class Held:
        def wait(self):
            wait_for(device.host_path(BEGUN).exists, "the commit")

        def release(self):
            device.write(GATE, "")

    device.write(device.bin / "regmux", f"""#!/bin/sh
if [ "$1" = commit ]; then
  : > {BEGUN}
  while [ -e {BEGUN} ] && [ ! -e {GATE} ]; do sleep 0.01; done  # not longer than the device lasts
fi
exec '{device.client}' "$@"
""", 0o755)
    return Held()


@pytest.fixture
def held_lookup(device):
    """From begin() on, the look-up of a host's name lasts until release(): opening a file waits while
    somebody else has a lease on it."""
    class Held:
        def begin(self):
            self.file = os.open(device.host_path("/etc/hosts"), os.O_RDWR)
            fcntl.fcntl(self.file, fcntl.F_SETLEASE, fcntl.F_WRLCK)

        def wait(self):
            wait_for(lambda: fcntl.fcntl(self.file, fcntl.F_GETLEASE) != fcntl.F_WRLCK,
                     "the look-up")

        def release(self):
            fcntl.fcntl(self.file, fcntl.F_SETLEASE, fcntl.F_UNLCK)
            os.close(self.file)

    device.write("/etc/nsswitch.conf", "hosts: files\n")
    device.write("/etc/hosts", "10.0.0.7 slow.example\n")
    device.registry.set("BackupGateway", "")
    default = signal.signal(signal.SIGIO, signal.SIG_IGN)  # which tells of the one who waits
    yield Held()
    signal.signal(signal.SIGIO, default)


def pointer(app, box, settle=True):
    """What the pointer looks like over the middle of a box."""
    x, y, width, height = box
    app.desktop.move_pointer(x + width // 2, y + height // 2)
    if settle:
        app.settled()
    display = app.desktop.display
    image = display.xfixes_get_cursor_image(display.screen().root)
    return image.width, image.height, tuple(image.cursor_image)


def press_later(bus, node):
    """Has an assistive tool press the button, without waiting until the program has done it."""
    flags = (Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT |
             Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)
    connection = Gio.DBusConnection.new_for_address_sync(
        bus.environment["AT_SPI_BUS_ADDRESS"], flags, None, None)
    connection.call(node.accessible.app.bus_name, node.accessible.path, "org.a11y.atspi.Action",
                    "DoAction", GLib.Variant("(i)", (0,)), None, Gio.DBusCallFlags.NONE, -1, None)
    connection.flush_sync(None)
    return connection  # with which the call would end


def middle(box):
    x, y, width, height = box
    return x + width // 2, y + height // 2


class Meddler:
    """Someone who does not want to wait. All places are looked up before the program stands still."""

    def __init__(self, app, bus):
        self.app = app
        self.bus = bus
        self.ok = app.button("OK")
        tab = next(tab for tab in app.active.find(Role.PAGE_TAB) if tab.name == "Groups")
        self.places = [middle(node.box) for node in (tab, self.ok, app.button("Cancel"))]
        width, height = app.desktop.size
        self.places.append((width // 2, height // 2))  # where messages stand

    def press_ok_later(self):
        self.call = press_later(self.bus, self.ok)

    def meddle(self):
        for key in ("Tab", "Return", "space", "Escape"):  # from OK to Cancel, and press it
            self.app.desktop.keyboard.press(key)
        for place in self.places:
            self.app.desktop.click_at(*place)
        self.press_ok_later()


@pytest.fixture
def xfixes(desktop):
    desktop.display.xfixes_query_version()


def expect_watch(app, boxes, before):
    """Waits for one pointer over all of the window that is not there at other times; returns it."""
    def watch():
        seen = {pointer(app, box, settle=False) for box in boxes}
        return seen.pop() if len(seen) == 1 and not seen & set(before) else None
    return wait_for(watch, "the watch")


def test_writing_shows_the_watch_and_drops_input(start, device, bus, desktop, held_commit, xfixes):
    app = start()
    field = app.entry("Backup Gateway")
    boxes = [node.box for node in (field, app.label("Backup Gateway"), app.button("OK"))]
    before = [pointer(app, box) for box in boxes]
    assert before[0] != before[1], "an entry has a pointer of its own"
    meddler = Meddler(app, bus)
    app.button("OK").click(settle=False)
    held_commit.wait()
    watch = expect_watch(app, boxes, before)
    meddler.meddle()
    held_commit.release()

    hint = app.message()
    app.settled()
    assert hint.showing and hint.text == "Warning"
    assert field.showing, "its page was not turned"
    assert watch not in [pointer(app, box) for box in boxes]
    hint.close()
    assert app.wait_exit() == 0
    assert len(written(device)) == 15, "OK was at work once"


def test_a_look_up_shows_the_watch_and_drops_input(start, device, bus, desktop, held_lookup, xfixes):
    app = start()
    app.entry("Current Gateway").fill("slow.example")
    field = app.entry("Backup Gateway")
    boxes = [node.box for node in (field, app.label("Backup Gateway"), app.button("OK"))]
    before = [pointer(app, box) for box in boxes]
    meddler = Meddler(app, bus)
    held_lookup.begin()
    app.button("OK").click(settle=False)
    held_lookup.wait()
    expect_watch(app, boxes, before)
    meddler.meddle()
    held_lookup.release()

    hint = app.message()
    app.settled()
    assert hint.showing and hint.text == "Warning"
    assert field.showing, "its page was not turned"
    hint.close()
    assert app.wait_exit() == 0
    assert len(written(device)) == 15, "OK was at work once"


def test_what_is_typed_during_a_look_up_does_not_close_its_message(start, device, bus, held_lookup):
    app = start()
    app.entry("Current Gateway").fill("no-such-host")
    meddler = Meddler(app, bus)
    held_lookup.begin()
    app.button("OK").click(settle=False)
    held_lookup.wait()
    meddler.meddle()
    held_lookup.release()

    message = app.message()
    app.settled()
    assert message.showing and message.text == CURRENT_FAULT
    message.close()
    app.no_message()
    assert app.running and written(device) == []


def test_the_window_can_be_closed_during_a_look_up(start, device, desktop, held_lookup):
    app = start()
    app.entry("Current Gateway").fill("slow.example")
    held_lookup.begin()
    window = app.x_window()
    app.button("OK").click(settle=False)
    held_lookup.wait()
    desktop.close_window(window)
    desktop.settle_manager()  # it has told the program
    held_lookup.release()
    assert app.wait_exit() == 0
    assert written(device) == []


def test_the_window_can_be_destroyed_from_outside_during_a_look_up(start, desktop, held_lookup):
    app = start(fatal_warnings=False)
    app.entry("Current Gateway").fill("slow.example")
    held_lookup.begin()
    window = app.x_window()
    app.button("OK").click(settle=False)
    held_lookup.wait()
    window.destroy()  # with what lies over it
    desktop.settle_manager()
    held_lookup.release()
    assert app.wait_exit() == 0
    assert app.stderr.count(" **: ") == app.stderr.count("unexpectedly destroyed") == 1
