"""The harness itself: what it sends arrives, what it reads is true, what goes wrong is told."""
import pytest


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
    app.set_clipboard("from the clipboard")
    entry.select_all()
    app.key("ctrl+v")
    app.wait_for(lambda: entry.text == "from the clipboard", "the paste")
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
