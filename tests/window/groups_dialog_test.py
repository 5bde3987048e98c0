"""The group dialog: adding and editing, from opening it to what is in the registry."""
import pytest
from gi.repository import Atspi

from groups import (ADD, DUPLICATE, WELL_KNOWN, GroupDialog, add, add_group, edit,
                    open_groups, rows, saved)
from harness.app import TITLE


def test_add_opens_empty_with_the_name_to_type(start, device):
    app = open_groups(start, device, 'P1="lab";SALES="north"')
    dialog = add(app)
    assert dialog.texts == ("", "")
    assert dialog.name.active == -1
    assert app.focused() == ("entry", "Group Name")


def test_edit_opens_with_the_group_and_the_value_to_type(start, device):
    app = open_groups(start, device, 'P1="lab";SALES="north"')
    dialog = edit(app, 1)
    assert dialog.texts == ("SALES", "north")
    assert dialog.name.rows()[dialog.name.active] == "SALES"
    assert app.focused() == ("entry", "Value")


def test_stands_in_the_middle_and_cannot_be_resized(start, device, desktop):
    app = open_groups(start, device)
    x, y, width, height = add(app).window.box
    assert abs(x + width / 2 - desktop.size[0] / 2) < 20
    assert abs(y + height / 2 - desktop.size[1] / 2) < 30
    hints = list(app.x_window(ADD).read("WM_NORMAL_HINTS"))
    assert hints[5:7] == hints[7:9], "the least size is the greatest"


def test_shows_labels_fields_and_buttons_in_their_places(start, device):
    app = open_groups(start, device)
    dialog = add(app)
    name, value = dialog.name.box, dialog.value.box
    labels = [app.label(text).box for text in ("Group Name", "Value")]
    assert labels[0][1] < labels[1][1] and name[1] < value[1]
    assert max(box[0] + box[2] for box in labels) < min(name[0], value[0])
    ok, cancel = (dialog.window.button(text).box for text in ("OK", "Cancel"))
    assert ok[0] < cancel[0] and ok[1] > value[1]


def test_offers_the_well_known_names_and_the_lists_own(start, device):
    app = open_groups(start, device, 'ZOO="1";P3="2";MG="3";p3="4";A="5"')
    assert add(app).name.rows() == [*WELL_KNOWN, "ZOO", "p3", "A"]


def test_a_new_group_is_offered_the_next_time(start, device):
    app = open_groups(start, device, "")
    add_group(app, "sales", "north")
    assert add(app).name.rows() == [*WELL_KNOWN, "SALES"]


def test_adds_at_the_end(start, device):
    app = open_groups(start, device, 'ZOO="1";B="2"')
    add_group(app, "A", "3")
    assert rows(app) == [("ZOO", "1"), ("B", "2"), ("A", "3")]
    assert saved(app, device) == 'ZOO="1";B="2";A="3"'


@pytest.mark.parametrize("typed", ["mg", "Mg", "MG", " mg ", "manual group", "MANUAL Group"])
def test_all_spellings_add_the_manual_group(start, device, typed):
    app = open_groups(start, device, "")
    add_group(app, typed, "floor2")
    assert rows(app) == [("Manual Group", "floor2")]
    dialog = add(app).fill(typed, "again")
    assert dialog.refused() == DUPLICATE
    dialog.cancel()
    assert saved(app, device) == 'MG="floor2"'


@pytest.mark.parametrize("pick", ["pick_with_mouse", "pick_with_keys"])
def test_the_manual_group_can_be_picked(start, device, pick):
    app = open_groups(start, device, "")
    dialog = add(app)
    getattr(dialog.name, pick)("Manual Group")
    assert dialog.texts == ("Manual Group", "")
    dialog.fill(value="floor2").accept()
    assert saved(app, device) == 'MG="floor2"'


def test_names_are_stored_in_upper_case_without_outer_blanks(start, device):
    app = open_groups(start, device, "")
    add_group(app, "p1", "x")
    add_group(app, "  sales team ", " x ")
    add_group(app, "z\u00fcrich", "\u4e2d\u6587")
    assert rows(app) == [("P1", "x"), ("SALES TEAM", " x "), ("Z\u00fcRICH", "\u4e2d\u6587")]
    assert saved(app, device) == 'P1="x";SALES TEAM=" x ";Z\u00fcRICH="\u4e2d\u6587"'


def test_an_edit_rewrites_its_row_in_its_place(start, device):
    app = open_groups(start, device, 'A="1";B="2";C="3"')
    edit(app, 1).fill("new", "4").accept()
    assert rows(app) == [("A", "1"), ("NEW", "4"), ("C", "3")]
    assert saved(app, device) == 'A="1";NEW="4";C="3"'


def test_an_edit_that_changes_nothing_is_accepted(start, device):
    app = open_groups(start, device, 'A="1";MG="2"')
    edit(app, 0).accept()
    edit(app, 1).accept()
    assert saved(app, device) == 'A="1";MG="2"'


def test_a_group_can_become_the_manual_group(start, device):
    app = open_groups(start, device, 'A="1"')
    edit(app, 0).fill("mg", "a/b").accept()
    assert saved(app, device) == 'MG="a/b"'


def test_the_manual_group_can_become_another_and_keep_its_slash(start, device):
    app = open_groups(start, device, 'MG="a/b"')
    edit(app, 0).fill("P2").accept()
    assert saved(app, device) == 'P2="a/b"'


def test_a_lower_case_row_is_renamed_by_an_edit(start, device):
    app = open_groups(start, device, 'sales="1"')
    dialog = edit(app, 0)
    assert dialog.texts == ("sales", "1")
    dialog.accept()
    assert saved(app, device) == 'SALES="1"'


def test_of_two_rows_with_one_name_the_first_is_rewritten(start, device):
    app = open_groups(start, device, 'A="first";A="second"')
    dialog = edit(app, 1)
    assert dialog.texts == ("A", "second"), "the selected row's value, not the first one's"
    dialog.accept()
    assert rows(app) == [("A", "second"), ("A", "second")]


def test_of_two_manual_groups_the_selected_ones_value_is_shown(start, device):
    app = open_groups(start, device, 'MG="1";MGX="2"')
    assert edit(app, 1).texts == ("Manual Group", "2")


def test_a_row_without_a_name_can_be_edited(start, device):
    app = open_groups(start, device, '="x"')
    dialog = edit(app, 0)
    assert dialog.texts == ("", "x")
    dialog.fill("a").accept()
    assert saved(app, device) == 'A="x"'


def dismiss_with_button(dialog):
    dialog.window.button("Cancel").click()


def dismiss_with_escape(dialog):
    dialog.app.key("Escape")


def dismiss_with_close_control(dialog):
    dialog.app.close_window(dialog.window.title)


@pytest.mark.parametrize("dismiss", [dismiss_with_button, dismiss_with_escape,
                                     dismiss_with_close_control])
@pytest.mark.parametrize("open_dialog", [add, lambda app: edit(app, 0)], ids=["add", "edit"])
def test_a_dismissed_dialog_changes_nothing(start, device, open_dialog, dismiss):
    app = open_groups(start, device, 'A="1";B="2"')
    dialog = open_dialog(app).fill("C", "3")
    dismiss(dialog)
    app.wait_gone(dialog.window)
    assert rows(app) == [("A", "1"), ("B", "2")]
    assert saved(app, device) == 'A="1";B="2"'


def test_enter_in_the_value_field_neither_checks_nor_closes(start, device):
    app = open_groups(start, device, "")
    dialog = add(app).fill("", "x:y")
    app.key("Return")
    app.no_message()
    assert app.focused() == ("entry", "Value")
    dialog.cancel()
    assert app.focused() == ("button", "OK"), "it has readied the window's own button"
    assert {call.args[0] for call in device.journal()} == {"get"}


def test_enter_in_the_name_field_does_nothing(start, device):
    app = open_groups(start, device, "")
    dialog = add(app).fill("x")
    app.key("Return")
    app.no_message()
    assert app.focused() == ("entry", "Group Name")
    dialog.cancel()
    assert app.focused() == ("button", "Add...")


def test_the_keyboard_alone_adds_a_group(start, device):
    app = open_groups(start, device, "")
    app.button("Add...").press()
    dialog = GroupDialog(app, ADD)
    app.type("sales")
    while app.focused() != ("entry", "Value"):
        app.key("Tab")
    app.type("north")
    while app.focused() != ("button", "OK"):
        app.key("Tab")
    app.key("space")
    app.wait_gone(dialog.window)
    assert rows(app) == [("SALES", "north")]


def test_the_wheel_over_the_closed_list_changes_nothing(start, device):
    app = open_groups(start, device, 'P1="lab";P2="x"')
    dialog = edit(app, 0)
    for node in (dialog.name, dialog.name.entry):
        for direction in ("down", "up"):
            app.wheel(node, direction)
            assert dialog.texts == ("P1", "lab")
    x, y, width, height = dialog.name.box
    app.click_at(x + width - 8, y + height // 2, button=5)
    assert dialog.texts == ("P1", "lab")


def test_the_page_goes_on_when_its_dialog_is_destroyed_from_outside(start, device):
    """The toolkit warns of it, and of nothing else."""
    app = open_groups(start, device, 'A="1"', fatal_warnings=False)
    dialog = add(app).fill("A", "x")
    app.destroy_window(ADD)
    app.wait_gone(dialog.window)
    dialog = add(app).fill("A", "x")
    dialog.ok()
    message = app.message()
    app.destroy_window(ADD)
    message.close()
    assert rows(app) == [("A", "1")]
    add_group(app, "B", "2")
    assert saved(app, device) == 'A="1";B="2"'
    assert complaints(app) == 2 == app.stderr.count("unexpectedly destroyed")


def complaints(app):
    return app.stderr.count("WARNING") + app.stderr.count("CRITICAL")


@pytest.mark.parametrize("open_dialog", [add, lambda app: edit(app, 0)], ids=["add", "edit"])
def test_a_dialog_outlives_the_window(start, device, open_dialog):
    app = open_groups(start, device, 'A="1"', fatal_warnings=False)
    dialog = open_dialog(app).fill("B", "2")
    assert app.focused() == ("entry", "Value")
    app.destroy_window()
    app.wait_for(lambda: len(app.windows()) == 1, "the window to go")
    app.key("Return")  # would ready the OK button of the window
    dialog.window.button("OK").click()
    assert app.wait_exit() == 0
    assert complaints(app) == 1 == app.stderr.count("unexpectedly destroyed")


def test_edit_behind_an_open_dialog_leaves_it_its_row(start, device):
    """As only an assistive tool can press the button and select a row there."""
    app = open_groups(start, device, 'A="1";B="2"')
    dialog = edit(app, 0).fill(value="x")
    page = app.window(TITLE)
    Atspi.Table.add_row_selection(page.table().accessible, 1)
    app.wait_for(lambda: page.table().selected == [1], "the other row to be selected")
    page.button("Edit...").activate()
    dialog.accept()
    assert rows(app) == [("A", "x"), ("B", "2")]


def test_a_group_deleted_behind_the_dialog_stays_deleted(start, device):
    """As only an assistive tool can press the button there."""
    app = open_groups(start, device, 'A="1";B="2"')
    dialog = edit(app, 0).fill(value="x")
    app.window(TITLE).button("Delete").activate()
    app.wait_for(lambda: rows(app) == [("B", "2")], "the row to go")
    dialog.accept()
    assert saved(app, device) == 'B="2"'


def test_the_dialog_opens_and_closes_time_and_again(start, device):
    app = open_groups(start, device, 'A="1"')
    for _ in range(10):
        dialog = add(app).fill("A")
        assert dialog.value.text == "1"
        dialog.cancel()
    assert [window.title for window in app.windows()] == [TITLE]
    assert rows(app) == [("A", "1")]
