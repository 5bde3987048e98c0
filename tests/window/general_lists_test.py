"""The choice lists of the General page: the row for a stored value, and picking another."""
import pytest
from general import (DELAY_EMPTY, DELAYS, INTERVAL_EMPTY, INTERVALS, LOG_LEVELS, expect_row,
                     saved)

BOTH = ("Interval_min", "DelayScope_min")


@pytest.mark.parametrize("interval, interval_text, delay, delay_text", [
    ("0", "Never Pull", "0", "No Delay"),
    ("30", "30 minutes", "1", "1 minute"),
    ("60", "1 hour", "10", "10 minutes"),
    ("360", "6 hours", "30", "30 minutes"),
    ("10080", "7 days", "60", "1 hour"),
    ("45", "45 minutes", "5", "5 minutes"),
    ("90", "1 hour 30 minutes", "100", "100 minutes"),
    ("120", "2 hours", "-5", "-5 minutes"),
    ("1500", "1 day 1 hour", "-1", "-1 minutes"),
    ("2880", "2 days", "1440", "1440 minutes"),
    ("100000", "69 days 10 hours 40 minutes", "2147483647", "2147483647 minutes"),
    ("-5", "0 days -5 minutes", "-2147483648", "-2147483648 minutes"),
    ("2147483647", "1491308 days 2 hours 7 minutes", "61", "61 minutes"),
    ("-2147483648", "-1491308 days -2 hours -8 minutes", "59", "59 minutes"),
])
def test_a_stored_duration_has_its_row_and_is_saved_unchanged(
        start, device, interval, interval_text, delay, delay_text):
    device.registry.set("Interval_min", interval)
    device.registry.set("DelayScope_min", delay)
    app = start()
    expect_row(app.combo("Pull Interval"), INTERVALS, interval_text)
    expect_row(app.combo("Delay Scope"), DELAYS, delay_text)
    assert saved(app, device, *BOTH) == [interval, delay]


@pytest.mark.parametrize("stored, interval, delay, number", [
    ("abc", "Never Pull", "No Delay", "0"),
    (" ", "Never Pull", "No Delay", "0"),
    ("0x1E", "Never Pull", "No Delay", "0"),
    ("030 min", "30 minutes", "30 minutes", "30"),
    ("4294967296", "1491308 days 2 hours 7 minutes", "2147483647 minutes", "2147483647"),
    ("-9999999999999999999999", "-1491308 days -2 hours -8 minutes", "-2147483648 minutes",
     "-2147483648"),
])
def test_a_stored_text_counts_as_the_number_that_it_begins_with(
        start, device, stored, interval, delay, number):
    device.registry.set("Interval_min", stored)
    device.registry.set("DelayScope_min", stored)
    app = start()
    expect_row(app.combo("Pull Interval"), INTERVALS, interval)
    expect_row(app.combo("Delay Scope"), DELAYS, delay)
    assert saved(app, device, *BOTH) == [number, number]


def test_an_empty_duration_has_no_row_until_ok_takes_the_recommended_one(start, device):
    device.registry.set("Interval_min", "")
    device.registry.set("DelayScope_min", "")
    app = start()
    interval, delay = app.combo("Pull Interval"), app.combo("Delay Scope")
    assert (interval.active, interval.shown, interval.rows()) == (-1, "", INTERVALS)
    assert (delay.active, delay.shown, delay.rows()) == (-1, "", DELAYS)
    app.button("OK").click()
    for text in (INTERVAL_EMPTY, DELAY_EMPTY):
        message = app.message()
        assert (message.kind, message.text) == ("error", text)
        message.close()
    app.message().close()
    assert app.wait_exit() == 0
    committed = device.registry.committed()
    assert [committed[name] for name in BOTH] == [b"1440", b"10"]


@pytest.mark.parametrize("stored, row", [
    ("0", 0), ("1", 1), ("2", 2), ("7", 0), ("-1", 0), ("", 0), ("abc", 0), ("2x", 2), (None, 0)])
def test_a_stored_log_level_has_its_row_or_the_first(start, device, stored, row):
    if stored is None:
        device.registry.delete("LogLevel")
    else:
        device.registry.set("LogLevel", stored)
    app = start()
    expect_row(app.combo("Log Level"), LOG_LEVELS, LOG_LEVELS[row])
    assert saved(app, device, "LogLevel") == [str(row)]


def test_rows_picked_with_the_mouse_are_saved(start, device):
    app = start()
    for label, text in (("Pull Interval", "6 hours"), ("Log Level", "Information"),
                        ("Delay Scope", "No Delay")):
        app.combo(label).pick_with_mouse(text)
        assert app.combo(label).shown == text
    assert saved(app, device, "Interval_min", "LogLevel", "DelayScope_min") == ["360", "2", "0"]


def test_rows_picked_with_the_keyboard_are_saved(start, device):
    app = start()
    app.combo("Pull Interval").pick_with_keys("6 hours")
    app.combo("Delay Scope").pick_with_keys("No Delay")
    app.entry("Delay Scope").take_focus()
    app.key("shift+Tab")
    assert app.focused() == ("combo", "Log Level")
    app.key("Down")
    app.key("Down")
    assert app.combo("Log Level").shown == "Information"
    assert saved(app, device, "Interval_min", "LogLevel", "DelayScope_min") == ["360", "2", "0"]


@pytest.mark.parametrize("label, below", [
    ("Pull Interval", "7 days"), ("Delay Scope", "30 minutes")])
def test_the_arrow_keys_step_through_the_rows(start, label, below):
    app = start()
    before = app.combo(label).shown
    app.entry(label).take_focus()
    app.key("Down")
    assert app.combo(label).shown == below
    app.key("Up")
    assert app.combo(label).shown == before


def test_an_appended_row_can_be_picked_again(start, device):
    device.registry.set("Interval_min", "45")
    app = start()
    combo = app.combo("Pull Interval")
    combo.pick_with_mouse("Never Pull")
    combo.pick_with_keys("45 minutes")
    assert saved(app, device, "Interval_min") == ["45"]


def test_a_row_longer_than_its_entry_is_saved_unchanged(start, device):
    """The entry holds 50 characters; the number that the rest begins with is not the value."""
    word = "é" * 30
    device.write_table("C.UTF-8", f"[Page_General]\nTime_Hour = {word}\nTime_Minutes = {word}\n")
    device.registry.set("Interval_min", "90")
    app = start()
    assert app.combo("Pull Interval").rows()[-1] == f"1 {word} 30 {word}"
    assert app.entry("Pull Interval").text == f"1 {word} 30 {word}"[:50]
    assert saved(app, device, "Interval_min") == ["90"]


def test_a_percent_sign_in_a_unit_word_is_shown_as_it_stands(start, device):
    device.write_table("C.UTF-8", "[Page_General]\nTime_Minutes = %n%s min 100%\n")
    device.registry.set("Interval_min", "45")
    device.registry.set("DelayScope_min", "5")
    app = start()
    assert app.combo("Pull Interval").shown == "45 %n%s min 100%"
    assert app.combo("Delay Scope").shown == "5 %n%s min 100%"
    assert saved(app, device, *BOTH) == ["45", "5"]
