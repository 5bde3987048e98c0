"""What a person sees and can do while OK looks names up and writes, which a slow resolver or a slow
client makes last: the pointer is the watch, and what is typed, clicked or pressed is without effect."""
import fcntl
import os
import signal

import pytest
from device_calls import written
from gi.repository import Gio, GLib

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
  while [ ! -e {GATE} ]; do sleep 0.01; done
fi
exec {device.client} "$@"
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
    return connection  # the call ends with it


def meddle(app, bus, ok, box):
    """Everything that an impatient person does."""
    keyboard = app.desktop.keyboard
    for key in ("Return", "space", "Escape", "Tab", "1"):
        keyboard.press(key)
    x, y, width, height = box
    screen_width, screen_height = app.desktop.size
    app.desktop.click_at(x + width // 2, y + height // 2)
    app.desktop.click_at(screen_width // 2, screen_height // 2)
    return press_later(bus, ok)


@pytest.fixture
def xfixes(desktop):
    desktop.display.xfixes_query_version()


def expect_watch(app, entry, label, before):
    over_entry, over_label = (pointer(app, box, settle=False) for box in (entry, label))
    assert over_entry == over_label, "one pointer over all of the window"
    assert over_entry not in before, "and not the one that is there at other times"
    return over_entry


def test_writing_shows_the_watch_and_drops_input(start, device, bus, desktop, held_commit, xfixes):
    app = start()
    entry, label = app.entry("Backup Gateway").box, app.label("Backup Gateway").box
    before = [pointer(app, entry), pointer(app, label)]
    assert before[0] != before[1], "an entry has a pointer of its own"
    ok = app.button("OK")
    box = ok.box
    ok.click(settle=False)
    held_commit.wait()
    watch = expect_watch(app, entry, label, before)
    call = meddle(app, bus, ok, box)
    held_commit.release()

    hint = app.message()
    app.settled()
    assert hint.showing and hint.text == "Warning"
    assert watch not in (pointer(app, entry), pointer(app, label))
    hint.close()
    assert app.wait_exit() == 0
    assert len(written(device)) == 15, "OK was at work once"
    call.close_sync(None)


def test_a_look_up_shows_the_watch_and_drops_input(start, device, bus, desktop, held_lookup, xfixes):
    app = start()
    app.entry("Current Gateway").fill("slow.example")
    entry, label = app.entry("Backup Gateway").box, app.label("Backup Gateway").box
    before = [pointer(app, entry), pointer(app, label)]
    ok = app.button("OK")
    box = ok.box
    held_lookup.begin()
    ok.click(settle=False)
    held_lookup.wait()
    expect_watch(app, entry, label, before)
    call = meddle(app, bus, ok, box)
    held_lookup.release()

    hint = app.message()
    app.settled()
    assert hint.showing and hint.text == "Warning"
    hint.close()
    assert app.wait_exit() == 0
    assert len(written(device)) == 15, "OK was at work once"
    assert os.fsdecode(device.registry.committed()["BackupGateway"]) == "", "no 1 typed into it"
    call.close_sync(None)


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
