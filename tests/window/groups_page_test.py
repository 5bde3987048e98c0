"""The Groups page: where the groups come from, the list, and what OK stores of it."""
import pytest

from frames import frame, margins
from groups import (DHCP, EDIT, STATIC, GroupDialog, add, add_group, committed, edit,
                    open_groups, rows, save, saved)
from harness.accessibility import Role
from harness.app import TITLE

STORED = 'MG="floor2";P1="lab";SALES="north"'


def in_use(app):
    """Whether the list and its buttons can be used; all of them or none."""
    states = {app.table().sensitive,
              *(app.button(name).sensitive for name in ("Add...", "Edit...", "Delete"))}
    assert len(states) == 1
    return states.pop()


@pytest.mark.parametrize("stored, from_dhcp", [
    ("1", True), ("0", False), ("", True), (None, True), ("2", True), ("-1", True), (" 7x", True),
    ("99999999999999999999", True), ("abc", False), ("00", False)])
def test_opens_as_the_setting_says_and_stores_one_or_zero(start, device, stored, from_dhcp):
    if stored is None:
        device.registry.delete("GetGroupsFromDHCP")
    else:
        device.registry.set("GetGroupsFromDHCP", stored)
    app = open_groups(start, device)
    assert (app.radio(DHCP).active, app.radio(STATIC).active) == (from_dhcp, not from_dhcp)
    assert in_use(app) == (not from_dhcp)
    assert saved(app, device, "GetGroupsFromDHCP") == ("1" if from_dhcp else "0")


def test_switching_to_dhcp_greys_the_list_out_and_keeps_it(start, device):
    app = open_groups(start, device, ";" + STORED)
    app.radio(DHCP).click()
    assert not in_use(app)
    assert rows(app) == [("Manual Group", "floor2"), ("P1", "lab"), ("SALES", "north")]
    save(app)
    assert committed(device, "GetGroupsFromDHCP") == "1"
    assert committed(device) == ";" + STORED, "the text was not made anew"


def test_switching_back_makes_the_list_usable(start, device):
    device.registry.set("GetGroupsFromDHCP", "1")
    app = open_groups(start, device)
    app.radio(STATIC).press()
    assert in_use(app)
    app.radio(DHCP).press()
    assert not in_use(app)
    app.radio(STATIC).press()
    assert saved(app, device, "GetGroupsFromDHCP") == "0"


def test_clicking_the_chosen_source_again_changes_nothing(start, device):
    app = open_groups(start, device)
    app.radio(STATIC).click()
    assert in_use(app)
    assert saved(app, device, "GetGroupsFromDHCP") == "0"


def test_lists_the_groups_in_their_order(start, device):
    app = open_groups(start, device, 'ZOO="1";MGX="two";p=" 3 ";A=""')
    assert app.table().columns == ["Group Name", "Value"]
    assert rows(app) == [("ZOO", "1"), ("Manual Group", "two"), ("p", " 3 "), ("A", "")]


def test_looks_as_it_is_meant_to(start, device):
    app = open_groups(start, device)
    headers = app.table().find(Role.TABLE_COLUMN_HEADER)
    assert headers[0].box[2] == 135 and headers[1].box[2] >= 135
    width, height = frame(app, "Static Custom Groups").box[2:]
    assert width == 400 and height >= 200
    assert margins(app, "Static Custom Groups") == (10, 10, 10)
    room, wanted = 400 - 2 * (10 + 2) - 2 * 5, 300 + (85 + 2 * 5) + 2 * 10
    list_box = app.active.first(Role.SCROLL_PANE).box
    assert list_box[2] == 300 - (wanted - room) // 2, "list and buttons have half of what lacks each"
    tops = [app.radio(DHCP).box[1], app.radio(STATIC).box[1],
            *(app.button(name).box[1] for name in ("Add...", "Edit...", "Delete"))]
    assert tops == sorted(tops)
    for name in ("Add...", "Edit...", "Delete"):
        assert app.button(name).box[0] >= headers[1].box[0] + 135
        assert app.button(name).box[2] >= 85


def test_a_column_is_made_wider_with_the_mouse(start, device):
    app = open_groups(start, device, STORED)
    app.radio(STATIC).click()
    header = app.table().find(Role.TABLE_COLUMN_HEADER)[0]
    x, y, width, height = header.resting_box()
    app.drag((x + width - 1, y + height // 2), (x + 175, y + height // 2))
    assert header.box[2] == 175


@pytest.mark.parametrize("count, wanted", [(3, 0), (30, 1)])
def test_a_scroll_bar_is_there_when_it_is_needed(start, device, count, wanted):
    app = open_groups(start, device, "".join(f'G{number}="x";' for number in range(count)))
    bars = app.active.first(Role.SCROLL_PANE).find(Role.SCROLL_BAR)
    upright = [bar for bar in bars if bar.showing and bar.box[3] > bar.box[2]]
    assert len(upright) == wanted


@pytest.mark.parametrize("stored", ["", ";;", "no groups", 'A="'])
def test_a_text_without_groups_is_an_empty_list_and_is_kept(start, device, stored):
    app = open_groups(start, device, stored)
    assert rows(app) == []
    assert saved(app, device) == stored


def test_a_list_that_was_not_changed_is_written_back_byte_for_byte(start, device):
    stored = ';;A="1";MGX="x";;bad;n="it s";' + "N" * 60 + '="long";'
    app = open_groups(start, device, stored)
    app.table().select(1)
    app.radio(DHCP).click()
    app.radio(STATIC).click()
    app.page("General")
    assert saved(app, device) == stored


def test_delete_takes_the_selected_group_without_asking(start, device):
    app = open_groups(start, device, STORED)
    app.table().select(1)
    app.button("Delete").click()
    app.no_message()
    assert rows(app) == [("Manual Group", "floor2"), ("SALES", "north")]
    assert app.table().selected == []
    assert saved(app, device) == 'MG="floor2";SALES="north"'


def test_deleting_the_last_group_stores_an_empty_text(start, device):
    app = open_groups(start, device, 'A="1"')
    app.table().select(0)
    app.button("Delete").press()
    assert rows(app) == []
    assert saved(app, device) == ""


def test_cancel_keeps_what_the_registry_had(start, device):
    app = open_groups(start, device, STORED)
    app.table().select(0)
    app.button("Delete").click()
    app.radio(DHCP).click()
    app.window(TITLE).button("Cancel").click()
    assert app.wait_exit() == 0
    assert (committed(device), committed(device, "GetGroupsFromDHCP")) == (STORED, "0")


@pytest.mark.parametrize("stored", ["", ";;A=\"1\""])
@pytest.mark.parametrize("button, text", [
    ("Edit...", "Please select a group to edit."),
    ("Delete", "Please select the group(s) to delete.")])
def test_nothing_selected_is_told_and_changes_nothing(start, device, stored, button, text):
    app = open_groups(start, device, stored)
    before = rows(app)
    app.button(button).click()
    message = app.message()
    assert (message.kind, message.text) == ("error", text)
    message.close()
    assert (rows(app), len(app.windows())) == (before, 1)
    assert saved(app, device) == stored


def test_the_selection_outlives_a_message_but_not_a_dialog(start, device):
    app = open_groups(start, device, STORED)
    edit(app, 1).cancel()
    assert app.table().selected == []
    app.button("Delete").click()
    assert app.message().text == "Please select the group(s) to delete."


def test_only_one_group_can_be_selected(start, device):
    app = open_groups(start, device, STORED)
    app.table().select(0)
    app.key("shift+Down")
    app.key("ctrl+a")
    assert len(app.table().selected) == 1


def test_a_cancelled_dialog_makes_the_text_anew(start, device):
    for open_dialog in (add, lambda app: edit(app, 0)):
        app = open_groups(start, device, ';;MGROUP="x";B="2";')
        open_dialog(app).cancel()
        assert rows(app) == [("Manual Group", "x"), ("B", "2")]
        assert saved(app, device) == 'MG="x";B="2"'


def test_a_cancelled_dialog_leaves_a_text_of_the_programs_own_as_it_was(start, device):
    app = open_groups(start, device, STORED)
    add(app).cancel()
    assert saved(app, device) == STORED


def test_groups_are_stored_while_dhcp_is_chosen(start, device):
    app = open_groups(start, device, "")
    add_group(app, "sales", "north")
    app.radio(DHCP).click()
    save(app)
    assert committed(device, "GetGroupsFromDHCP") == "1"
    assert committed(device) == 'SALES="north"'


def test_everything_is_within_reach_of_the_keyboard(start, device):
    app = open_groups(start, device, STORED)
    app.radio(STATIC).take_focus()
    order = []
    for _ in range(4):
        app.key("Tab")
        order.append(app.focused())
    assert order == [("table", "Static Custom Groups"), ("button", "Add..."), ("button", "Edit..."),
                     ("button", "Delete")]


def test_the_keyboard_alone_deletes_a_group(start, device):
    app = open_groups(start, device, STORED)
    app.radio(STATIC).take_focus()
    for key in ("Tab", "Down", "Down", "Tab", "Tab", "Tab", "space"):
        app.key(key)
    assert rows(app) == [("Manual Group", "floor2"), ("SALES", "north")]


FIVE_HUNDRED = [f"{number:03}" for number in range(500)]


def open_many(start, device, names=FIVE_HUNDRED, **options):
    device.registry.set("PreAssignGroups", ";".join(f'{name}="v"' for name in names))
    app = start(wait=False, **options)
    app.wait_active(TITLE)
    return app


TO_THE_LAST_ROW = ("ctrl+Page_Down", "Tab", "Tab", "End")
TO_THE_EDIT_BUTTON = ("Tab", "Tab")


def test_five_hundred_groups_are_shown(start, device):
    app = open_many(start, device)
    app.page("Groups")
    assert rows(app) == [(name, "v") for name in FIVE_HUNDRED]


def test_a_hundred_names_are_offered(start, device):
    """Not more: what the toolkit tells assistive tools of them takes it seconds for five hundred."""
    names = FIVE_HUNDRED[:100]
    app = open_many(start, device, names)
    for key in (*TO_THE_LAST_ROW, *TO_THE_EDIT_BUTTON, "space"):
        app.key(key)
    dialog = GroupDialog(app, EDIT)
    assert dialog.texts == ("099", "v")
    assert dialog.name.rows()[7:] == names


def test_the_last_of_five_hundred_groups_is_edited(start, device):
    """By someone without assistive tools, who does not wait."""
    app = open_many(start, device, env={"GTK_MODULES": None, "NO_AT_BRIDGE": "1"})

    def press(*keys):
        for key in keys:
            app.desktop.keyboard.press(key)
            app.settled()

    press(*TO_THE_LAST_ROW, *TO_THE_EDIT_BUTTON, "space")
    app.wait_active(EDIT)
    press("ctrl+a", "w", "Tab", "space")  # in place of the value, then OK
    app.wait_active(TITLE)
    press("Tab", "Tab", "space")
    app.wait_active("")
    press("Return")
    assert app.wait_exit() == 0
    assert committed(device) == \
        ";".join(f'{name}="v"' for name in FIVE_HUNDRED[:-1]) + ';499="w"'


# The longest text that fits the command line of the registry's client.
LONGEST = 4046


def test_a_text_of_the_greatest_length_is_saved(start, device):
    stored = f'A="{"x" * (LONGEST - 4 - 6)}"'
    app = open_groups(start, device, stored)
    add_group(app, "B", "y")
    assert saved(app, device) == stored + ';B="y"'
    assert len(committed(device)) == LONGEST


def test_a_byte_more_is_not_saved_and_stops_nothing(start, device):
    stored = f'A="{"x" * (LONGEST - 4 - 6)}"'
    app = open_groups(start, device, stored)
    add_group(app, "B", "yy")
    app.radio(DHCP).click()
    save(app)
    assert committed(device) == stored, "the registry keeps what it had"
    assert committed(device, "GetGroupsFromDHCP") == "1"
    assert device.journal()[-1].args == ["commit"]


def test_the_page_goes_on_after_a_dialog_was_pressed_twice_behind_its_back(start, device):
    """A screen reader can press buttons that the open dialog keeps from the mouse."""
    app = open_groups(start, device, STORED)
    dialog = add(app)
    app.window(TITLE).button("Add...").activate()
    dialog.fill("B", "2").accept()
    assert [window.title for window in app.windows()] == [TITLE]
    assert saved(app, device) == STORED + ';B="2"'
