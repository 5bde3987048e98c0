"""Typed intervals and delays: what Enter and Tab make of them, what is refused, where the focus
goes, and when a full entry speaks up."""
import pytest
from gi.repository import Atspi
from general import (DELAY_EMPTY, DELAY_FORMAT, DELAY_LENGTH, DELAY_RANGE, DELAYS, INTERVAL_EMPTY,
                     INTERVAL_FORMAT, INTERVAL_LENGTH, INTERVAL_RANGE, INTERVALS, expect_message,
                     expect_row)

LENGTH = {"Pull Interval": INTERVAL_LENGTH, "Delay Scope": DELAY_LENGTH}
FORMAT = {"Pull Interval": INTERVAL_FORMAT, "Delay Scope": DELAY_FORMAT}
BOTH = pytest.mark.parametrize("label", ["Pull Interval", "Delay Scope"])


# --- what a text means ---

def test_a_typed_interval_selects_its_row(start):
    app = start()
    combo, entry = app.combo("Pull Interval"), app.entry("Pull Interval")
    for text, row, is_named in [
            ("30", "30 minutes", True), ("30 minutes", "30 minutes", True),
            ("  6 hours  ", "6 hours", True), ("10080", "7 days", True), ("0", "Never Pull", True),
            ("1 day(recommended)", "1 day(recommended)", True),
            ("45", "45 minutes", False), ("45 minutes", "45 minutes", True),
            ("+30", "3 minutes", False), (" 45", "4 minutes", False),
            ("0x1E", "30 minutes", False), ("010", "8 minutes", False),
            ("0b11", "Never Pull", False), ("30 min", "30 minutes", False),
            ("59.4", "59 minutes", False), ("59.5", "1 hour", False),
            ("90", "1 hour 30 minutes", False),
            ("1441", "1 day 1 minute", False), ("10079", "6 days 23 hours 59 minutes", False)]:
        entry.fill(text)
        app.key("Return")
        app.no_message()
        expect_row(combo, INTERVALS, row)
        target = ("entry", "Pull Interval") if is_named else ("combo", "Log Level")
        assert app.focused() == target, text


def test_a_typed_delay_selects_its_row(start):
    app = start()
    combo, entry = app.combo("Delay Scope"), app.entry("Delay Scope")
    for text, row, is_named in [
            ("1", "1 minute", True), ("10 minutes", "10 minutes", True),
            (" 1 hour ", "1 hour", True),
            ("No Delay", "No Delay", True), ("60", "1 hour", True),
            ("+30", "30 minutes", False), ("59.5", "1 hour", False), ("5", "5 minutes", False),
            ("5 minutes", "5 minutes", True), (" 45", "45 minutes", False),
            ("+-5", "-5 minutes", False), ("-5", "-5 minutes", True), ("+1", "1 minute", False)]:
        entry.fill(text)
        app.key("Return")
        app.no_message()
        expect_row(combo, DELAYS, row)
        assert app.focused() == (("entry", "Delay Scope") if is_named else ("button", "OK")), text


@pytest.mark.parametrize("label, refused", [
    ("Pull Interval", {
        INTERVAL_RANGE: ["10081", "10080.7", "99999999999999999999", "4294967326"],
        INTERVAL_FORMAT: ["abc", "-5", "+-5", "+5", "never pull"]}),
    ("Delay Scope", {
        DELAY_RANGE: ["61", "60.5", "99999999999999999999", "4294967301", "+-2147483649"],
        DELAY_FORMAT: ["abc", "-5", "+", "no delay"]}),
])
def test_a_refused_text_stays_and_so_does_the_focus(start, label, refused):
    app = start()
    rows = app.combo(label).rows()
    for message, texts in refused.items():
        for text in texts:
            app.entry(label).fill(text)
            app.key("Return")
            expect_message(app, message)
            assert app.entry(label).text == text
            assert app.focused() == ("entry", label)
            assert app.entry(label).selection == (0, len(text)), "the next text replaces it"
    assert app.combo(label).rows() == rows


@pytest.mark.parametrize("label, message, row", [
    ("Pull Interval", INTERVAL_EMPTY, "1 day(recommended)"),
    ("Delay Scope", DELAY_EMPTY, "10 minutes")])
def test_an_empty_text_is_replaced_by_the_recommended_row(start, device, label, message, row):
    device.registry.set("Interval_min", "0")
    device.registry.set("DelayScope_min", "0")
    app = start()
    for text in ("", "   "):
        app.entry(label).fill(text)
        app.key("Return")
        expect_message(app, message)
        assert app.combo(label).shown == row
        assert app.focused() == ("entry", label)


# --- leaving an entry with the keyboard ---

@pytest.mark.parametrize("label, key, target", [
    ("Pull Interval", "Tab", ("combo", "Log Level")),
    ("Pull Interval", "shift+Tab", ("combo", "Log Level")),
    ("Delay Scope", "Tab", ("button", "OK")),
    ("Delay Scope", "shift+Tab", ("button", "OK"))])
def test_leaving_with_a_new_value_ends_where_the_check_goes(start, label, key, target):
    app = start()
    app.entry(label).fill("45")
    app.key(key)
    app.no_message()
    assert app.combo(label).shown == "45 minutes"
    assert app.focused() == target


@pytest.mark.parametrize("label, text, key, target", [
    ("Pull Interval", "30", "Tab", ("combo", "Pull Interval")),
    ("Pull Interval", "30", "shift+Tab", ("entry", "Backup Gateway")),
    ("Delay Scope", "30", "Tab", ("combo", "Delay Scope")),
    ("Delay Scope", "30", "shift+Tab", ("combo", "Log Level"))])
def test_leaving_with_a_rows_text_goes_on(start, label, text, key, target):
    app = start()
    app.entry(label).fill(text)
    app.key(key)
    assert app.combo(label).shown == "30 minutes"
    assert app.focused() == target


@BOTH
@pytest.mark.parametrize("key", ["Tab", "shift+Tab"])
def test_a_refused_text_cannot_be_left(start, label, key):
    app = start()
    app.entry(label).fill("abc")
    for _ in range(2):
        app.key(key)
        expect_message(app, FORMAT[label])
        assert app.focused() == ("entry", label)
        assert app.entry(label).text == "abc"


@pytest.mark.parametrize("label, message, row", [
    ("Pull Interval", INTERVAL_EMPTY, "1 day(recommended)"),
    ("Delay Scope", DELAY_EMPTY, "10 minutes")])
def test_an_empty_entry_is_left_after_the_message(start, label, message, row):
    app = start()
    app.entry(label).fill("")
    app.key("Tab")
    expect_message(app, message)
    assert app.combo(label).shown == row
    assert app.focused() == ("combo", label)


@pytest.mark.parametrize("label, before", [
    ("Pull Interval", "Backup Gateway"), ("Delay Scope", None)])
def test_entering_checks_nothing(start, label, before):
    app = start()
    app.entry(label).fill("abc")
    if before:
        app.entry(before).click()
        app.key("Tab")
    else:
        app.button("OK").take_focus()
        app.key("shift+Tab")  # the arrow beside the entry
        app.key("shift+Tab")
    app.no_message()
    assert app.focused() == ("entry", label)
    assert app.entry(label).text == "abc"


@BOTH
def test_leaving_with_the_mouse_checks_nothing(start, label):
    app = start()
    app.entry(label).fill("abc")
    app.entry("Current Gateway").click()
    app.no_message()
    assert app.focused() == ("entry", "Current Gateway")
    assert app.entry(label).text == "abc"


# --- a full entry ---

@BOTH
def test_a_full_entry_tells_so_at_every_key_but_delete_and_backspace(start, label):
    app = start()
    full = "é" * 50
    entry = app.entry(label)
    entry.fill(full)
    app.no_message()
    for key in ("x", "space", "Left", "Home", "F5", "Shift_L"):
        app.key(key)
        expect_message(app, LENGTH[label])
        assert entry.text == full, key
        assert app.focused() == ("entry", label)
    for key in ("Tab", "Return"):
        app.key(key)
        message = app.message()
        assert message.text == LENGTH[label]
        message.close()
        expect_message(app, FORMAT[label])
        assert entry.text == full, key
    app.key("End")
    expect_message(app, LENGTH[label])
    app.key("BackSpace")
    app.no_message()
    assert entry.text == full[:-1]
    app.type("x")
    app.key("Home")
    expect_message(app, LENGTH[label])
    app.key("Delete")
    app.no_message()
    assert entry.text == full[2:] + "x"


@BOTH
def test_fifty_bytes_are_not_fifty_characters(start, label):
    app = start()
    app.entry(label).fill("é" * 25)
    app.key("Left")
    app.no_message()


@BOTH
def test_a_key_held_down_in_a_full_entry_changes_nothing(start, label):
    app = start()
    full = "9" * 50
    entry = app.entry(label)
    entry.fill(full)
    app.type("9" * 60)
    expect_message(app, LENGTH[label])
    assert entry.text == full
    app.type("\n" * 60)
    while len(app.windows()) > 1:
        app.message().close()
    assert entry.text == full
    app.button("Cancel").click()
    assert app.wait_exit() == 0


@BOTH
def test_pasting_is_cut_at_fifty_characters(start, label):
    app = start()
    app.set_clipboard("12" * 30)
    app.entry(label).select_all()
    app.key("ctrl+v")
    app.wait_for(lambda: app.entry(label).text == "12" * 25, "the pasted text")


@BOTH
def test_the_message_of_a_full_entry_gives_the_focus_back(start, label):
    """Wherever an assistive tool has moved it in the meantime."""
    app = start()
    app.entry(label).fill("9" * 50)
    app.key("x")
    message = app.message()
    Atspi.Component.grab_focus(app.window().button("Cancel").accessible)
    message.button("Close").activate()
    app.wait_for(lambda: app.focused() == ("entry", label), "the focus on the entry")


def test_the_window_can_be_closed_on_a_refused_text(start):
    app = start()
    app.entry("Pull Interval").fill("abc")
    app.close_window()
    assert app.wait_exit() == 0


@BOTH
@pytest.mark.parametrize("text, key", [
    ("", "Return"), ("", "Tab"), ("abc", "Return"), ("abc", "Tab"), ("9" * 50, "x")])
def test_the_window_may_go_while_a_message_is_open(start, label, text, key):
    app = start(fatal_warnings=False)
    app.entry(label).fill(text)
    app.key(key)
    message = app.message()
    app.destroy_window()
    message.close()
    assert app.wait_exit() == 0
    assert app.stderr.count(" **: ") == app.stderr.count("unexpectedly destroyed") == 1


def test_a_message_may_be_destroyed_from_outside(start):
    """The toolkit warns of it, and of nothing else."""
    app = start(fatal_warnings=False)
    app.entry("Pull Interval").fill("abc")
    app.key("Return")
    message = app.message()
    app.destroy_window(title="")
    app.wait_gone(message)
    app.entry("Pull Interval").fill("30")
    app.key("Return")
    app.no_message()
    app.button("Cancel").click()
    assert app.wait_exit() == 0
    assert app.stderr.count(" **: ") == app.stderr.count("unexpectedly destroyed") == 1
