"""What the group dialog refuses when OK is pressed, in which words, and where the focus goes."""
import pytest

from groups import ADD, DUPLICATE, add, add_group, edit, open_groups, rows, saved

NO_NAME = "The group name can not be empty."
NO_VALUE = "The group value can not be empty."
IN_NAME = 'The group name can not contain ^=;\\".'
IN_VALUE = 'The group value can not contain "=;"\\<>*?|:"&/.'
IN_MANUAL_VALUE = 'The group value can not contain "=;"\\<>*?|:"&.'
ON_NAME, ON_VALUE = ("entry", "Group Name"), ("entry", "Value")
STORED = 'MG="m";P1="1";SALES="s"'


def expect(dialog, text, focus):
    """The refusal: the message, the dialog as it was, and the focus."""
    before = dialog.texts
    assert dialog.refused() == text, before
    assert dialog.texts == before
    assert dialog.app.focused() == focus


@pytest.mark.parametrize("text, focus, refused", [
    (NO_NAME, ON_NAME, [("", ""), ("", "x"), ("   ", "x")]),
    (IN_NAME, ON_NAME, [(f"a{character}b", "") for character in '^=;\\"']),
    (NO_VALUE, ON_VALUE, [("a", ""), ("mg", "   "), ("p1", " ")]),
    (IN_VALUE, ON_VALUE, [*(("a", f"x{character}y") for character in '=;"\\<>*?|:&/'), ("P1", "x:y")]),
    (IN_MANUAL_VALUE, ON_VALUE, [("mg", f"x{character}y") for character in '=;"\\<>*?|:&']),
    # Each in a program of its own: after a duplicate the focus goes to the name in any case.
    *((DUPLICATE, ON_NAME, [group]) for group in [
        ("P1", "x"), (" p1 ", "x"), ("sales", "x"), ("mg", "x/y"), ("Manual Group", "x")]),
])
def test_refusals_while_adding(start, device, text, focus, refused):
    app = open_groups(start, device, STORED)
    dialog = add(app)
    for name, value in refused:
        expect(dialog.fill(name, value), text, focus)
    dialog.cancel()
    assert rows(app) == [("Manual Group", "m"), ("P1", "1"), ("SALES", "s")]


@pytest.mark.parametrize("row, text, focus, refused", [
    (1, NO_NAME, ON_NAME, [("", "x")]),
    (1, IN_NAME, ON_NAME, [("a=b", "x")]),
    (1, NO_VALUE, ON_VALUE, [("P1", "")]),
    (1, IN_VALUE, ON_VALUE, [("P1", "x/y")]),
    (1, DUPLICATE, ON_NAME, [("sales", "x")]),
    (1, DUPLICATE, ON_NAME, [("mg", "x")]),
    (0, IN_MANUAL_VALUE, ON_VALUE, [("Manual Group", "x&y"), ("P2", "x:y")]),
    (0, DUPLICATE, ON_NAME, [("MG", "x")]),
    (0, DUPLICATE, ON_NAME, [("p1", "x")]),
])
def test_refusals_while_editing(start, device, row, text, focus, refused):
    app = open_groups(start, device, STORED)
    dialog = edit(app, row)
    for name, value in refused:
        expect(dialog.fill(name, value), text, focus)
    dialog.cancel()
    assert saved(app, device) == STORED


def test_slash_and_ampersand_are_fine_in_a_name(start, device):
    app = open_groups(start, device, "")
    add_group(app, "a/b&c", "x")
    assert saved(app, device) == 'A/B&C="x"'


def test_a_slash_is_fine_in_the_manual_groups_value(start, device):
    app = open_groups(start, device, "")
    add_group(app, "mg", "a/b")
    edit(app, 0).fill("manual group", "c/d").accept()
    assert saved(app, device) == 'MG="c/d"'


def test_the_dialog_goes_on_until_the_input_is_good(start, device):
    app = open_groups(start, device, STORED)
    dialog = add(app)
    expect(dialog, NO_NAME, ON_NAME)
    expect(dialog.fill("a^"), IN_NAME, ON_NAME)
    expect(dialog.fill("a"), NO_VALUE, ON_VALUE)
    expect(dialog.fill(value="x:"), IN_VALUE, ON_VALUE)
    dialog.fill(value="x").accept()
    assert saved(app, device) == STORED + ';A="x"'


def test_the_dialog_stays_modal_under_its_message(start, device):
    app = open_groups(start, device)
    add(app).ok()
    app.message()
    assert app.desktop.atom("_NET_WM_STATE_MODAL") in app.x_window(ADD).read("_NET_WM_STATE")


def refuse_a_duplicate(app):
    dialog = add(app).fill("p1", "x")
    expect(dialog, DUPLICATE, ON_NAME)
    return dialog


def test_after_a_duplicate_a_bad_value_sends_the_focus_to_the_name(start, device):
    app = open_groups(start, device, STORED)
    dialog = refuse_a_duplicate(app)
    expect(dialog.fill("a", ""), NO_VALUE, ON_NAME)
    expect(dialog.fill(value="x:"), IN_VALUE, ON_NAME)
    dialog.cancel()
    expect(add(app).fill("a"), NO_VALUE, ON_NAME)


def test_keeping_a_rows_name_does_not_make_up_for_a_duplicate(start, device):
    app = open_groups(start, device, STORED)
    refuse_a_duplicate(app).cancel()
    edit(app, 1).accept()
    expect(add(app).fill("a"), NO_VALUE, ON_NAME)


def test_a_new_name_makes_up_for_a_duplicate(start, device):
    app = open_groups(start, device, STORED)
    dialog = refuse_a_duplicate(app)
    dialog.fill("a", "x").accept()
    expect(add(app).fill("b"), NO_VALUE, ON_VALUE)
