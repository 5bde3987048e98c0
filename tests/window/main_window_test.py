"""The main window, and how it comes and goes."""
import subprocess
import time

from harness.accessibility import Role
from harness.app import TITLE
from harness.waiting import LIMIT, wait_for


def test_shows_two_pages_and_two_buttons(start):
    app = start()
    window = app.window(TITLE)
    assert window.pages() == ["General", "Groups"]
    assert app.label("Current Gateway").showing
    ok, cancel = app.button("OK"), app.button("Cancel")
    assert ok.box[0] < cancel.box[0] and ok.box[1] == cancel.box[1]
    x, y, width, height = app.x_window().box
    left, top, button_width, button_height = cancel.box
    assert x + width - (left + button_width) == 10 + 5, "the borders of the window and of the buttons"
    assert y + height - (top + button_height) == 10 + 10 + 5
    assert min(ok.box[2], cancel.box[2]) >= 85 and cancel.box[0] - (ok.box[0] + ok.box[2]) == 10
    notebook, tab = window.find(Role.PAGE_TAB_LIST)[0], window.find(Role.PAGE_TAB)[0]
    assert [a - b for a, b in zip(notebook.box, (x, y))] == [10, 10], "the border"
    assert tab.box[1] - notebook.box[1] < 10, "the tabs are on top"


def test_buttons_keep_their_size_however_small_their_texts(start, desktop_with):
    app = start(desktop=desktop_with(font="DejaVu Sans 4"))
    assert {app.button(name).box[2:] for name in ("OK", "Cancel")} == {(85, 20)}
    app.page("Groups")
    assert {app.button(name).box[2:] for name in ("Add...", "Edit...", "Delete")} == {(85, 20)}


def test_stands_in_the_middle_and_cannot_be_resized(start, desktop):
    app = start()
    x, y, width, height = app.x_window().box
    assert abs(x + width / 2 - desktop.size[0] / 2) < 20
    assert abs(y + height / 2 - desktop.size[1] / 2) < 30
    hints = list(app.x_window().read("WM_NORMAL_HINTS"))
    assert hints[5:7] == hints[7:9] == [width, height], "the least size is the greatest"


def test_has_the_devices_icon(start):
    """So have its messages."""
    app = start()
    app.page("Groups")
    app.button("Delete").click()
    app.message()
    icons = [window.read("_NET_WM_ICON") for window in app.x_windows()]
    assert len(icons) == 2
    for icon in icons:
        assert list(icon[:2]) == [48, 48] and len(icon) == 2 + 48 * 48


def test_opens_without_an_icon_file(start, device):
    device.remove("/usr/share/pixmaps/agent_48.png")
    app = start()
    app.button("Cancel").click()
    assert app.wait_exit() == 0


def test_cancel_writes_nothing(start, device):
    app = start()
    app.entry("Current Gateway").fill("10.9.8.7")
    app.button("Cancel").click()
    assert app.wait_exit() == 0
    assert {call.args[0] for call in device.journal()} == {"get"}


def test_the_close_control_does_what_cancel_does(start, device):
    app = start()
    app.entry("Current Gateway").fill("10.9.8.7")
    app.close_window()
    assert app.wait_exit() == 0
    assert {call.args[0] for call in device.journal()} == {"get"}


def test_escape_does_nothing(start):
    app = start()
    app.key("Escape")
    assert app.window(TITLE).showing


def test_two_instances_run_side_by_side_and_print_nothing(start):
    first, second = start(), start(wait="mapped")
    assert first.window(TITLE).showing and second.window(TITLE).showing
    assert first.stdout == second.stdout == ""


def test_takes_the_display_of_the_device_when_none_is_named(start, device):
    """Whether or not this machine has a display :0, it is the one that is asked for."""
    device.write("/usr/sbin/vexaagent", '#!/bin/sh\necho "$DISPLAY" >/run/display\n', 0o755)
    app = start(env={"DISPLAY": None}, wait=False, fatal_warnings=False)
    seen = device.host_path("/run/display")
    wait_for(lambda: not app.running or seen.exists() and seen.read_text(), "the display's name")
    assert app.stderr.strip().endswith("cannot open display: :0.0") or seen.read_text() == ":0.0\n"


def test_ends_with_the_toolkits_message_without_an_x_server(start, device):
    app = start(env={"DISPLAY": ":987"}, wait=False, fatal_warnings=False)
    assert app.wait_exit() != 0
    assert "cannot open display: :987" in app.stderr
    assert device.journal() == [] and device.agent_runs() == []


def test_the_toolkit_gets_the_programs_arguments(device, desktop):
    program = device.start([device.program, "--display=:987"], desktop.environment,
                           stderr=subprocess.PIPE)
    assert b"cannot open display: :987" in program.communicate(timeout=LIMIT)[1]


def test_reads_the_current_gateway_again_and_again(start, device):
    app = start()
    entry = app.entry("Current Gateway")
    since = time.monotonic()
    device.clear_journal()
    device.registry.set("CurrentGateway", "10.1.1.1")
    wait_for(lambda: len(device.journal()) >= 2, "two refreshes")
    assert time.monotonic() - since > 2, "three seconds lie between them"
    assert {tuple(call.args) for call in device.journal()} \
        == {("get", "root/vexa/agent/CurrentGateway")}
    assert entry.text == "192.168.10.5", "the entry is the user's"
    app.button("Cancel").click()
    assert app.wait_exit() == 0


def test_each_refresh_leaves_one_child(start, device):
    app = start()

    def children():
        with open(f"/proc/{app.pid}/task/{app.pid}/children", encoding="ascii") as file:
            return len(file.read().split())

    before = children()
    device.clear_journal()
    wait_for(lambda: len(device.journal()) >= 1, "a refresh")
    wait_for(lambda: children() == before + len(device.journal()), "its child to be left")
