"""The harness itself: what it sends arrives, what it reads is true, what goes wrong is told."""
import os
import re
import subprocess

import pytest
from gi.repository import Atspi
from harness.accessibility import Node
from harness.app import TITLE, App
from harness.desktop import pictures_differ
from harness.waiting import NOT_THERE, there, wait_for, whole
from PIL import Image
from Xlib import X


def test_no_desktop_is_where_a_program_comes_that_is_told_of_no_display(desktop):
    assert desktop.name != ":0"


def test_reads_the_window(start):
    app = start()
    assert app.entry("Current Gateway").text == "192.168.10.5"
    assert app.active.pages() == ["General", "Groups"]
    assert app.focused() == ("page", "General")
    texts = app.texts()
    assert {"Agent Configure Manager", "Backup Gateway", "192.168.10.6", "OK"} <= set(texts)
    assert "Use Static Custom Groups" not in texts


def test_types_every_character(start):
    app = start()
    entry = app.entry("Current Gateway")
    text = "aZ 9~|\\@ éß€ Ωж 中文 שלום 🙂"
    entry.fill(text)
    assert entry.text == text
    assert entry.caret == len(text)
    entry.fill("".join(map(chr, range(0x4E00, 0x4E00 + 50))))
    assert entry.text == "".join(map(chr, range(0x4E00, 0x4E00 + 50)))


def test_walks_with_keys(start):
    app = start()
    seen = []
    for _ in range(6):
        app.key("Tab")
        seen.append(app.focused())
    app.key("shift+Tab")
    assert seen == [("entry", "Current Gateway"), ("entry", "Backup Gateway"),
                    ("entry", "Pull Interval"), ("combo", "Pull Interval"),
                    ("combo", "Log Level"), ("entry", "Delay Scope")]
    assert app.focused() == ("combo", "Log Level")


def test_pastes(start):
    app = start()
    entry = app.entry("Backup Gateway")
    entry.paste("from the clipboard")
    assert entry.text == "from the clipboard"
    other = app.entry("Current Gateway")
    other.fill("")
    app.set_clipboard("äöü")
    app.middle_click(other)
    app.wait_for(lambda: other.text == "äöü", "the middle click's paste")


@pytest.mark.parametrize("label", ["Pull Interval", "Log Level", "Delay Scope"])
@pytest.mark.parametrize("way", ["pick_with_keys", "pick_with_mouse"])
def test_picks_in_combo_boxes(start, label, way):
    combo = start().combo(label)
    rows = combo.rows()
    for index in (len(rows) - 1, 0):
        getattr(combo, way)(rows[index])
        assert (combo.active, combo.shown) == (index, rows[index])


def test_works_the_groups_page(start):
    app = start()
    app.page("Groups")
    table = app.table()
    assert table.columns == ["Group Name", "Value"]
    assert table.rows == [["Manual Group", "floor2"], ["P1", "lab"], ["SALES", "north"]]
    assert table.selected == []
    table.select(1)
    assert app.radio("Use Static Custom Groups").active
    app.radio("Get Pre-Assign Groups from DHCP Tag").click()
    assert not app.radio("Use Static Custom Groups").active
    assert not app.button("Delete").sensitive
    app.radio("Use Static Custom Groups").press()
    app.button("Delete").click()
    assert table.rows == [["Manual Group", "floor2"], ["SALES", "north"]]


def test_scrolls_to_rows(start, device):
    device.registry.set("PreAssignGroups", ";".join(f'G{n}="v{n}"' for n in range(40)))
    app = start()
    app.page("Groups")
    table = app.table()
    table.select(39)
    table.select(3)


def test_tells_messages(start):
    app = start()
    app.page("Groups")
    app.button("Delete").click()
    message = app.message()
    assert message.kind == "error"
    assert message.text == "Please select the group(s) to delete."
    assert message.secondary == ""
    with pytest.raises(AssertionError, match="Please select"):
        app.no_message()
    message.close()
    app.no_message()


def test_uses_dialogs(start):
    app = start()
    app.page("Groups")
    app.button("Add...").click()
    dialog = app.dialog("Add New Group")
    dialog.combo("Group Name").entry.fill("team")
    app.entry("Value").fill("x y")
    assert app.focused() == ("entry", "Value")
    app.button("OK").press()
    app.wait_gone(dialog)
    assert app.table().rows[-1] == ["TEAM", "x y"]


def test_saves(start, device):
    app = start()
    app.entry("Backup Gateway").fill("10.0.0.1")
    app.button("OK").click()
    message = app.message()
    assert (message.kind, message.text) == ("info", "Warning")
    message.close()
    assert app.wait_exit() == 0
    assert device.registry.committed()["BackupGateway"] == b"10.0.0.1"


def test_closes_the_window(start):
    app = start()
    app.close_window()
    assert app.wait_exit() == 0


@pytest.mark.parametrize("manager", ["openbox", "metacity", None])
def test_drives_two_programs(start, desktop_with, manager):
    desktop = desktop_with(manager=manager)
    first = start(desktop=desktop)
    second = start(desktop=desktop, wait="mapped")
    assert {window.pid for window in desktop.stacking()} == {first.pid, second.pid}
    if manager:
        desktop.iconify(second.x_window())
        assert [window.iconic for window in desktop.windows(pid=second.pid)] == [True]
        desktop.activate(first.x_window())
        assert desktop.stacking()[-1] == first.x_window()
    first.entry("Current Gateway").fill("first")
    assert first.entry("Current Gateway").text == "first"
    assert desktop.input_focus().client() == first.x_window().client()
    first.close_window()
    assert first.wait_exit() == 0
    assert second.running


@pytest.mark.parametrize("manager", ["metacity", None])
def test_follows_windows_that_open_and_close(start, desktop_with, manager):
    app = start(desktop=desktop_with(manager=manager))
    app.page("Groups")
    app.button("Delete").click()
    app.message().close()
    app.button("Add...").click()
    dialog = app.dialog("Add New Group")
    dialog.combo("Group Name").pick_with_mouse("P3")
    app.entry("Value").fill("é")
    app.button("OK").click()
    app.wait_gone(dialog)
    assert app.table().rows[-1] == ["P3", "é"]


def test_takes_pictures(start, desktop_with, tmp_path):
    desktop = desktop_with(size=(640, 600), font="DejaVu Sans 14")
    app = start(desktop=desktop)
    before = app.picture()
    assert before.size == (640, 600)
    assert app.picture() == before
    app.key("Tab")
    left, top, right, bottom = pictures_differ(before, app.picture())
    x, y, width, height = app.active.box
    assert x <= left and y <= top and right <= x + width and bottom <= y + height
    app.screenshot(tmp_path / "entry.png", app.entry("Current Gateway"))
    assert Image.open(tmp_path / "entry.png").size == app.entry("Current Gateway").box[2:]


def test_turns_the_wheel(start, device):
    device.registry.set("PreAssignGroups", ";".join(f'G{n}="v{n}"' for n in range(40)))
    app = start()
    app.page("Groups")
    table = app.table()
    y = table.box[1]
    app.wheel(app.table().cell(0, 0), "down")
    assert table.box[1] < y


@pytest.mark.parametrize("script, complaint", [
    ("exit 3", None),
    ("echo '(agent:1): Gtk-WARNING **: 10:00: bad' >&2", "bad"),
    ("echo '(agent:1): Pango-CRITICAL **: 10:00: worse'", "worse"),
    ("echo 'ERROR: LeakSanitizer: detected memory leaks' >&2; exit 23", "LeakSanitizer"),
    ("echo 'a.cpp:1:2: runtime error: signed integer overflow' >&2", "overflow"),
    ("kill -SEGV $$", "signal: status -11")])
def test_complains_about_faults(desktop, device, script, complaint):
    app = App(desktop, device, ["/bin/sh", "-c", script], {})
    app.process.wait()
    assert complaint in app.stop() if complaint else app.stop() == ""


def test_names_what_is_in_the_stacks_of_a_sanitizer(desktop, device):
    symbols = subprocess.run(["nm", device.program], capture_output=True, text=True, check=True)
    address, = re.findall(r"^0*([0-9a-f]+) T main$", symbols.stdout, re.MULTILINE)
    report = f"ERROR: AddressSanitizer: bad\n    #0 0x7f00 ({device.program}+0x{address})"
    app = App(desktop, device, ["/bin/echo", report], {})
    app.process.wait()
    assert re.search(r"main at /.*/app/main\.cpp:\d+$", app.stop(), re.MULTILINE)


def test_a_crash_may_be_meant(desktop, device):
    app = App(desktop, device, ["/bin/sh", "-c", "kill -ABRT $$"], {})
    with pytest.raises(AssertionError, match="crashed"):
        app.wait_exit()
    app.wait_crash()
    assert app.stop() == ""


def test_tells_what_is_on_the_screen_of_a_program_without_accessibility(start, tmp_path):
    app = start(env={"GTK_MODULES": None, "NO_AT_BRIDGE": "1"}, wait=False)
    app.wait_active(TITLE)
    assert TITLE in app.report(tmp_path / "screen.png")
    assert (tmp_path / "screen.png").exists()


def test_waits_no_longer_than_the_program_runs(desktop, device):
    app = App(desktop, device, ["/bin/sh", "-c", "exit 3"], {})
    with pytest.raises(AssertionError, match="ended with 3 before a window"):
        app.wait_for(lambda: None, "a window")


@pytest.fixture
def closed_window(desktop):
    window = desktop.root.create_window(0, 0, 9, 9, 0, X.CopyFromParent)
    window.destroy()
    return window


def closed_program(start):
    app = start()
    node = app.button("OK")
    app.close_window()
    assert app.wait_exit() == 0
    return node


@pytest.mark.parametrize("look", ["no element", "an element", "a window's place", "a window's state"])
def test_what_has_gone_when_it_is_looked_at_counts_as_not_yet(start, closed_window, look):
    button = look == "an element" and closed_program(start)
    missing = {"no element": lambda: Node(None, None), "an element": lambda: button.name,
               "a window's place": closed_window.get_geometry,
               "a window's state": closed_window.get_attributes}[look]
    looks = [missing, missing, lambda: "there"]
    assert wait_for(lambda: looks.pop(0)(), "it") == "there"
    with pytest.raises(AssertionError, match="waited 0.01 s for it") as failure:
        wait_for(missing, "it", timeout=0.01)
    assert isinstance(failure.value.__cause__, NOT_THERE)


def test_any_other_error_is_not_waited_for():
    with pytest.raises(ZeroDivisionError):
        wait_for(lambda: 1 // 0, "a number")


def test_a_look_at_several_things_is_repeated_when_one_of_them_goes():
    found = [[None], [1, None], [0, 1]]

    @whole
    def look(_):
        return [there(one) for one in found.pop(0)]

    assert look("a list") == [0, 1]
    found[:] = [[None]]
    with pytest.raises(AssertionError, match="waited"):
        wait_for(lambda: look("one that has gone") if found else None, "it", timeout=0.01)


def test_reads_a_list_whose_rows_go_meanwhile(start, device):
    device.registry.set("PreAssignGroups", ";".join(f'G{n}="v"' for n in range(40)))
    app = start()
    app.page("Groups")
    table, delete = app.table(), app.button("Delete")
    for left in reversed(range(30, 40)):
        Atspi.Table.add_row_selection(table.accessible, left)
        Atspi.Action.do_action(delete.accessible, 0)  # answers before the row goes
        assert len(table.rows) in (left, left + 1)
        app.wait_for(lambda: len(table.rows) == left, "the row to go")


def test_a_stopped_program_keeps_nothing_open(desktop, device):
    before = len(os.listdir("/proc/self/fd"))
    apps = [App(desktop, device, ["/bin/true"], {}) for _ in range(3)]
    for app in apps:
        app.process.wait()
        app.stop()
    assert len(os.listdir("/proc/self/fd")) == before
