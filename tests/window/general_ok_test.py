"""What OK takes from the General page, what it refuses, and the refresh beside it."""
import pytest
from device_calls import BRANCH, written
from general import (BACKUP_FAULT, CURRENT_FAULT, DELAY_EMPTY, DELAY_FORMAT, DELAY_RANGE,
                     INTERVAL_EMPTY, INTERVAL_FORMAT, INTERVAL_RANGE, expect_message, saved)

from harness.waiting import wait_for

GATEWAYS = {"Current Gateway": ("CurrentGateway", CURRENT_FAULT),
            "Backup Gateway": ("BackupGateway", BACKUP_FAULT)}


@pytest.fixture
def device(device):
    """The device knows a few hosts, and no name server."""
    device.write("/etc/nsswitch.conf", "hosts: files\n")
    device.write("/etc/hosts", "127.0.0.1 localhost\n10.0.0.7 gw.example gateway-7\n"
                               "255.255.255.255 everyone.example\n")
    return device


DURATION_FAULTS = {
    "Pull Interval": {"EMPTY": INTERVAL_EMPTY, "FORMAT": INTERVAL_FORMAT, "RANGE": INTERVAL_RANGE},
    "Delay Scope": {"EMPTY": DELAY_EMPTY, "FORMAT": DELAY_FORMAT, "RANGE": DELAY_RANGE}}


def expect_message_then_hint(app, text):
    message = app.message()
    assert (message.kind, message.text) == ("error", text)
    message.close()
    assert app.message().kind == "info"


def expect_refusal(app, device, text):
    """OK shows the message, writes nothing, and leaves the window open."""
    app.button("OK").click()
    expect_message(app, text)
    assert app.running and written(device) == []


# --- gateways ---

@pytest.mark.parametrize("label", GATEWAYS)
@pytest.mark.parametrize("typed, stored", [
    ("192.168.1.10", "192.168.1.10"), ("  10.0.0.1  ", "10.0.0.1"), ("gw.example", "gw.example"),
    ("gateway-7", "gateway-7"), ("10.1", "10.1"), ("", ""), ("   ", "")])
def test_a_gateway_is_saved_as_typed(start, device, label, typed, stored):
    app = start()
    app.entry(label).fill(typed)
    assert saved(app, device, GATEWAYS[label][0]) == [stored]


@pytest.mark.parametrize("label", GATEWAYS)
def test_what_is_no_gateway_is_refused(start, device, label):
    app = start()
    entry = app.entry(label)
    for typed in ("255.255.255.255", "everyone.example", "no-such-host", "256.1.1.1", "10.0.0.1.",
                  "1.2.3.4.5", "10.0.0.1\u00a0", "::1", "two words", "\u00e9"):
        entry.fill(typed)
        expect_refusal(app, device, GATEWAYS[label][1])
        assert entry.text == typed
    app.button("Cancel").click()
    assert app.wait_exit() == 0
    assert written(device) == []


def test_a_gateway_holds_fifty_characters(start, device):
    app = start()
    entry = app.entry("Backup Gateway")
    entry.fill("\u00e9" * 49 + "xyz")
    assert entry.text == "\u00e9" * 49 + "x"
    app.no_message()


LONG = "a-host-name-of-more-than-fifty-bytes.somewhere.example"


@pytest.mark.parametrize("label", GATEWAYS)
def test_a_stored_gateway_that_is_too_long_is_shown_cut_and_saved_whole(start, device, label):
    name = GATEWAYS[label][0]
    device.write("/etc/hosts", f"10.0.0.7 {LONG}\n")
    device.registry.set(name, LONG)
    app = start()
    entry = app.entry(label)
    assert entry.text == LONG[:50]
    app.entry("Pull Interval").fill("45")
    assert saved(app, device, name, "Interval_min") == [LONG, "45"]


@pytest.mark.parametrize("label", GATEWAYS)
def test_of_a_long_gateway_that_was_touched_what_shows_counts(start, device, label):
    name = GATEWAYS[label][0]
    device.write("/etc/hosts", f"10.0.0.7 {LONG}\n10.0.0.8 {LONG[:49]}\n")
    device.registry.set(name, LONG)
    app = start()
    entry = app.entry(label)
    entry.take_focus()
    app.key("End")
    app.key("BackSpace")
    assert entry.text == LONG[:49]
    assert saved(app, device, name) == [LONG[:49]]


def test_a_gateway_that_is_no_utf8_is_saved_as_it_was(start, device):
    device.write("/etc/hosts", b"10.0.0.7 caf\xe9\n")
    device.registry.set("CurrentGateway", b" caf\xe9")
    app = start()
    assert app.entry("Current Gateway").text == " caf\ufffd"
    assert saved(app, device, "CurrentGateway") == ["caf\udce9"]


# --- where a fault is shown ---

@pytest.mark.parametrize("label", GATEWAYS)
def test_the_page_of_a_wrong_gateway_is_turned_to(start, device, label):
    app = start()
    entry = app.entry(label)
    entry.fill("no-such-host")
    app.page("Groups")
    app.button("OK").click()
    message = app.message()
    assert not entry.showing, "the message is read first"
    message.close()
    assert entry.showing

    app.page("Groups")
    expect_refusal(app, device, GATEWAYS[label][1])
    assert entry.showing
    assert app.focused() == ("button", "OK"), "where the click has left it"


@pytest.mark.parametrize("typed, fault", [("x", "FORMAT"), ("99999", "RANGE")])
@pytest.mark.parametrize("label, faults", DURATION_FAULTS.items())
def test_the_page_of_a_wrong_duration_is_turned_to(start, device, label, faults, typed, fault):
    app = start()
    entry = app.entry(label)
    entry.fill(typed)
    app.page("Groups")
    assert not entry.showing
    expect_refusal(app, device, faults[fault])
    assert entry.showing
    assert app.focused() == ("entry", label)
    app.key("Down")
    assert entry.text != typed, "the key reached what is on the screen"


@pytest.mark.parametrize("label, faults", DURATION_FAULTS.items())
def test_the_page_of_an_empty_duration_is_turned_to(start, label, faults):
    app = start()
    entry = app.entry(label)
    entry.fill("")
    app.page("Groups")
    app.button("OK").click()
    expect_message_then_hint(app, faults["EMPTY"])
    assert entry.showing and entry.text != ""


# --- durations ---

@pytest.mark.parametrize("label, name, typed, stored", [
    ("Pull Interval", "Interval_min", "45", "45"),
    ("Pull Interval", "Interval_min", " 6 hours ", "360"),
    ("Pull Interval", "Interval_min", "10079.5", "10080"),
    ("Delay Scope", "DelayScope_min", "+30", "30"),
    ("Delay Scope", "DelayScope_min", "+-2147483648", "-2147483648"),
    ("Delay Scope", "DelayScope_min", "No Delay", "0")])
def test_a_typed_duration_is_checked_and_saved(start, device, label, name, typed, stored):
    app = start()
    app.entry(label).fill(typed)
    assert saved(app, device, name) == [stored]


@pytest.mark.parametrize("label, typed, message", [
    ("Pull Interval", "abc", INTERVAL_FORMAT),
    ("Pull Interval", "10081", INTERVAL_RANGE),
    ("Delay Scope", "abc", DELAY_FORMAT),
    ("Delay Scope", "61", DELAY_RANGE)])
def test_a_refused_duration_stops_ok(start, device, label, typed, message):
    app = start()
    app.entry(label).fill(typed)
    for _ in range(2):
        expect_refusal(app, device, message)
        assert app.focused() == ("entry", label)
        assert app.entry(label).text == typed
    app.close_window()
    assert app.wait_exit() == 0
    assert written(device) == []


# --- several faults, and many ---

def test_faults_are_told_one_at_a_time_in_the_order_of_the_page(start, device):
    app = start()
    steps = [("Current Gateway", "nowhere", CURRENT_FAULT, "10.0.0.1"),
             ("Backup Gateway", "nowhere", BACKUP_FAULT, "10.0.0.2"),
             ("Pull Interval", "10081", INTERVAL_RANGE, "0x10"),
             ("Delay Scope", "x", DELAY_FORMAT, "7")]
    for label, wrong, _, _ in steps:
        app.entry(label).fill(wrong)
    for label, _, message, right in steps:
        expect_refusal(app, device, message)
        app.entry(label).fill(right)
    assert saved(app, device, "CurrentGateway", "BackupGateway", "Interval_min", "LogLevel",
                 "DelayScope_min") == ["10.0.0.1", "10.0.0.2", "16", "0", "7"]


def test_ok_saves_nothing_when_the_window_goes_under_its_message(start, device):
    device.registry.set("DelayScope_min", "")
    app = start(fatal_warnings=False)
    app.button("OK").click()
    message = app.message()
    app.destroy_window()
    message.close()
    assert app.wait_exit() == 0
    assert app.stderr.count(" **: ") == app.stderr.count("unexpectedly destroyed") == 1
    assert written(device) == []


def test_a_hundred_refused_oks_do_no_harm(start, device):
    app = start()
    app.entry("Pull Interval").fill("45")
    app.entry("Delay Scope").fill("61")
    for _ in range(100):
        app.button("OK").press()
        app.message()
        app.key("Return")
        app.wait_for(lambda: len(app.windows()) == 1, "the message to close")
    assert written(device) == []
    app.button("Cancel").press()
    assert app.wait_exit() == 0


# --- the refresh ---

def test_the_refresh_never_touches_the_entry(start, device):
    app = start()
    entry = app.entry("Current Gateway")
    entry.take_focus()
    app.key("Home")
    app.type("9")
    device.registry.set("CurrentGateway", "10.1.1.1")
    device.clear_journal()
    wait_for(lambda: len(device.journal()) >= 2, "two refreshes, the first of them done")
    assert {tuple(call.args) for call in device.journal()} == {("get", BRANCH + "CurrentGateway")}
    assert (entry.text, entry.caret, entry.selection) == ("9192.168.10.5", 1, None)


def test_the_refresh_does_not_mind_a_client_that_says_nothing(start, device):
    app = start()
    device.faults.silent()
    device.faults.fail(verbs="get")
    device.clear_journal()
    wait_for(lambda: len(device.journal()) >= 2, "two refreshes, the first of them done")
    assert saved(app, device, "CurrentGateway") == ["192.168.10.5"]
