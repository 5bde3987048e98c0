"""What happens in the group dialog's fields while the user types."""
import pytest
from gi.repository import Atspi

from groups import add, add_group, edit, open_groups, rows, saved

STORED = 'MG="floor2";P1="lab";SALES="north";low="x"'
NAME_FULL = "The max group name size can not exceed 50 characters."
VALUE_FULL = "The max group value size can not exceed 255 characters."


def paste(app, entry, text):
    """Puts the text into the entry in place of what is there, with two key presses."""
    app.set_clipboard(text)
    entry.take_focus()
    app.key("ctrl+a")
    app.key("ctrl+v")


def paste_at_end(app, entry, text):
    """Whatever was pasted before has arrived then."""
    app.key("End")
    app.set_clipboard(text)
    app.key("ctrl+v")
    app.wait_for(lambda: entry.text.endswith(text), f"{text!r} to be pasted")


# --- the value that comes with the name ---

def test_a_listed_name_shows_its_value(start, device):
    app = open_groups(start, device, STORED)
    dialog = add(app)
    for name, value in [("p1", "lab"), ("SALE", ""), (" P1 ", "lab"), ("mg", "floor2"), ("low", ""),
                        ("Manual Group", "floor2"), ("sales", "north"), ("LOW", "")]:
        assert dialog.fill(name).value.text == value, name


def test_the_value_goes_when_the_name_is_no_listed_one_any_more(start, device):
    app = open_groups(start, device, STORED)
    dialog = add(app).fill("p1")
    app.type("x")
    assert dialog.texts == ("p1x", "")
    app.key("BackSpace")
    assert dialog.texts == ("p1", "lab")


def test_an_empty_name_leaves_the_value(start, device):
    app = open_groups(start, device, STORED)
    dialog = add(app)
    dialog.name.entry.take_focus()
    app.set_clipboard("P1")
    app.key("ctrl+v")
    app.wait_for(lambda: dialog.texts == ("P1", "lab"), "the name to be pasted")
    app.key("ctrl+a")
    app.key("BackSpace")
    assert dialog.texts == ("", "lab")


@pytest.mark.parametrize("pick", ["pick_with_mouse", "pick_with_keys"])
def test_a_picked_name_shows_its_value(start, device, pick):
    app = open_groups(start, device, STORED)
    dialog = add(app)
    getattr(dialog.name, pick)("SALES")
    assert dialog.texts == ("SALES", "north")
    getattr(dialog.name, pick)("P2")
    assert dialog.texts == ("P2", "")


def test_a_typed_value_outlives_a_new_name_but_not_a_listed_one(start, device):
    app = open_groups(start, device, STORED)
    dialog = add(app).fill(value="typed")
    dialog.fill("new")
    assert dialog.texts == ("new", "typed")
    dialog.fill("p1")
    assert dialog.texts == ("p1", "lab")
    dialog.fill("new")
    assert dialog.texts == ("new", "lab")


@pytest.mark.parametrize("keys, value", [(["Left"], "lab"), (["End", "BackSpace"], "la")])
def test_any_key_in_the_value_field_counts_as_typing(start, device, keys, value):
    app = open_groups(start, device, STORED)
    dialog = add(app).fill("p1")
    dialog.value.take_focus()
    for key in keys:
        app.key(key)
    dialog.fill("new")
    assert dialog.texts == ("new", value)


def paste_value_with_mouse(app, dialog, text):
    app.set_clipboard(text)
    app.middle_click(dialog.value)
    app.wait_for(lambda: dialog.value.text == text, "the value to be pasted")


def test_pasting_with_the_mouse_is_no_typing(start, device):
    app = open_groups(start, device, STORED)
    dialog = add(app)
    paste_value_with_mouse(app, dialog, "pasted")
    dialog.name.entry.take_focus()
    app.type("n")
    assert dialog.texts == ("n", "")


def test_an_empty_list_takes_no_value_away(start, device):
    app = open_groups(start, device, "")
    dialog = add(app)
    paste_value_with_mouse(app, dialog, "pasted")
    dialog.name.entry.take_focus()
    app.type("n")
    assert dialog.texts == ("n", "pasted")


def test_each_adding_starts_untyped(start, device):
    app = open_groups(start, device, STORED)
    add(app).fill("x", "typed").cancel()
    edit(app, 1).cancel()
    dialog = add(app).fill("p1")
    app.type("x")
    assert dialog.texts == ("p1x", "")


def test_an_edited_value_counts_as_typed(start, device):
    app = open_groups(start, device, STORED)
    dialog = edit(app, 1).fill("new")
    assert dialog.texts == ("new", "lab")
    dialog.fill("sales")
    assert dialog.texts == ("sales", "north")


# --- full fields ---

@pytest.mark.parametrize("text", ["N" * 50, "\u00e9" * 25])
def test_a_full_name_refuses_all_keys_but_those_that_shorten_it(start, device, text):
    app = open_groups(start, device, "")
    dialog = add(app)
    dialog.name.entry.paste(text)
    for key in ("x", "Left", "Tab", "Return", "Escape", "Shift_L"):
        app.key(key)
        assert dialog.close_message() == NAME_FULL, key
        assert dialog.texts == (text, "")
        assert app.focused() == ("entry", "Group Name")
    app.key("BackSpace")
    app.no_message()
    assert dialog.name.entry.text == text[:-1], "the caret stood where it was"
    app.key("x")
    app.no_message()


def test_delete_passes_in_a_full_name(start, device):
    app = open_groups(start, device, "")
    dialog = add(app)
    dialog.name.entry.paste("N" * 50)
    dialog.name.entry.click()
    app.key("Delete")
    app.no_message()
    assert dialog.texts == ("N" * 49, "")


def test_the_fiftieth_byte_can_be_typed(start, device):
    app = open_groups(start, device, "")
    dialog = add(app)
    dialog.name.entry.paste("N" * 49)
    app.type("n")
    app.no_message()
    dialog.fill(value="x").accept()
    assert saved(app, device) == "N" * 50 + '="x"'


def test_fifty_wide_characters_are_not_full_and_are_stored_cut(start, device):
    app = open_groups(start, device, "")
    dialog = add(app)
    dialog.name.entry.paste("\u4e2d" * 50)
    app.type("x")
    app.no_message()
    assert dialog.name.entry.text == "\u4e2d" * 50, "the field itself holds fifty characters"
    dialog.fill(value="x").accept()
    assert rows(app) == [("\u4e2d" * 50, "x")]
    assert saved(app, device) == "\u4e2d" * 16 + '="x"', "48 bytes: no character is split"


def test_a_full_value_refuses_all_keys_but_those_that_shorten_it(start, device):
    app = open_groups(start, device, "")
    dialog = add(app).fill("a")
    dialog.value.paste("v" * 254)
    app.key("End")
    app.type("w")
    full = "v" * 254 + "w"
    assert dialog.value.text == full
    for key in ("x", "Left", "Tab", "Return", "Escape", "Shift_L"):
        app.key(key)
        assert dialog.close_message() == VALUE_FULL, key
        assert dialog.texts == ("a", full)
        assert app.focused() == ("entry", "Value")
    app.key("BackSpace")
    app.no_message()
    assert dialog.value.text == full[:-1], "the caret stood where it was"


@pytest.mark.parametrize("field, label, full", [("name", "Group Name", "N" * 50),
                                                ("value", "Value", "v" * 255)],
                         ids=["name", "value"])
def test_the_message_of_a_full_field_gives_the_focus_back(start, device, field, label, full):
    """Wherever an assistive tool has moved it in the meantime."""
    app = open_groups(start, device, "")
    dialog = add(app)
    (dialog.name.entry if field == "name" else dialog.value).paste(full)
    app.key("x")
    close = app.message().button("Close")
    Atspi.Component.grab_focus(dialog.window.button("Cancel").accessible)
    close.activate()
    app.wait_for(lambda: app.focused() == ("entry", label), "the focus on the field")


def test_a_value_of_wide_characters_is_stored_whole(start, device):
    app = open_groups(start, device, "")
    dialog = add(app).fill("a")
    value = "\U0001f600" * 255
    dialog.value.paste(value)
    app.type("x")
    app.no_message()
    assert dialog.value.text == value
    dialog.accept()
    assert saved(app, device) == f'A="{value}"'
    app = open_groups(start, device)
    assert edit(app, 0).texts == ("A", value)


# --- what cannot be stored ---

def test_a_single_quote_cannot_be_typed(start, device):
    app = open_groups(start, device, "")
    dialog = add(app).fill("o'neil", "it's")
    assert dialog.texts == ("oneil", "its")
    dialog.accept()
    assert saved(app, device) == 'ONEIL="its"'


@pytest.mark.parametrize("text", ["a'b", "a\nb", "a\rb"])
@pytest.mark.parametrize("field", ["name", "value"])
def test_a_paste_that_cannot_be_stored_is_refused_whole(start, device, field, text):
    app = open_groups(start, device, "")
    dialog = add(app).fill("old", "old")
    entry = dialog.name.entry if field == "name" else dialog.value
    paste(app, entry, text)
    entry.take_focus()
    paste_at_end(app, entry, "new")
    assert entry.text == "oldnew"


@pytest.mark.parametrize("text", ["a'b", "a\nb"])
def test_such_a_paste_over_a_picked_name_is_refused_too(start, device, text):
    app = open_groups(start, device, STORED)
    dialog = add(app)
    dialog.name.pick_with_mouse("P1")
    paste(app, dialog.name.entry, text)
    paste_at_end(app, dialog.name.entry, "new")
    assert dialog.name.entry.text == "P1new"


def test_a_single_quote_cannot_be_typed_into_an_edited_empty_name(start, device):
    app = open_groups(start, device, '="x"')
    dialog = edit(app, 0)
    dialog.name.entry.fill("'")
    assert dialog.texts == ("", "x")


@pytest.mark.parametrize("keys", [["ctrl+a"], ["Home", "Insert"], ["End", "shift+Left"]],
                         ids=["all", "overwriting", "the last"])
@pytest.mark.parametrize("value", ["", "new"], ids=["", "value typed"])
def test_a_refused_quote_over_a_name_leaves_all_as_it_was(start, device, keys, value):
    app = open_groups(start, device, 'P="p";P1="lab"')
    dialog = add(app).fill("p1").fill(value=value or None)
    dialog.name.entry.take_focus()
    for key in keys:
        app.key(key)
    selection, caret = dialog.name.entry.selection, dialog.name.entry.caret
    app.type("'")
    assert dialog.texts == ("p1", value or "lab")
    assert (dialog.name.entry.selection, dialog.name.entry.caret) == (selection, caret)
    app.type("x")
    assert dialog.name.entry.text != "p1"


@pytest.mark.parametrize("name, value", [("Manual Group", "floor2"), ("P1", "lab")])
def test_a_refused_quote_over_a_picked_name_leaves_its_row_the_active_one(start, device, name, value):
    app = open_groups(start, device, STORED)
    dialog = add(app)
    dialog.name.pick_with_keys(name)
    row = dialog.name.active
    assert dialog.name.rows()[row] == name
    dialog.name.entry.select_all()
    app.type("'")
    assert (dialog.texts, dialog.name.active) == ((name, value), row)
    assert dialog.name.entry.selection == (0, len(name))


def test_a_name_is_looked_up_when_its_new_letter_stands_in_the_place_of_the_old(start, device):
    """Not in between, when it is another group's for a moment."""
    app = open_groups(start, device, 'P="p";P2="two"')
    dialog = add(app).fill("p1", "typed")
    dialog.name.entry.take_focus()
    app.key("End")
    app.key("shift+Left")
    app.type("3")
    assert dialog.texts == ("p3", "typed")
    app.key("shift+Left")
    app.type("2")
    assert dialog.texts == ("p2", "two")


def test_a_command_in_a_value_never_runs(start, device):
    app = open_groups(start, device, "")
    add_group(app, "mg", "'$(touch /run/trap)`touch /run/trap`'")
    assert saved(app, device) == 'MG="$(touch /run/trap)`touch /run/trap`"'
    assert not device.host_path("/run/trap").exists()


def test_stored_single_quotes_are_shown_and_keep_changes_from_being_saved(start, device):
    stored = "O'NEIL=\"it's\";A=\"1\""
    app = open_groups(start, device, stored)
    dialog = edit(app, 0)
    assert dialog.texts == ("O'NEIL", "it's")
    dialog.accept()
    edit(app, 1).fill(value="2").accept()
    assert rows(app) == [("O'NEIL", "it's"), ("A", "2")]
    dialog = add(app)
    dialog.name.pick_with_mouse("O'NEIL")
    assert dialog.texts == ("O'NEIL", "it's")
    dialog.name.entry.take_focus()
    paste_at_end(app, dialog.name.entry, "O'NEIL")
    paste_at_end(app, dialog.name.entry, "x")
    assert dialog.name.entry.text == "O'NEILx"
    dialog.cancel()
    assert saved(app, device) == stored
