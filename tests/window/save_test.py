"""What OK does, read from the journal of the registry's client."""
import pytest
from device_calls import BRANCH, SETTINGS, gets, writes, written
from harness.accessibility import Role
from harness.app import TITLE
from harness.waiting import LIMIT, wait_for

DEFAULTS = {"CurrentGateway": "192.168.10.5", "BackupGateway": "192.168.10.6",
            "Interval_min": "1440", "LogLevel": "0", "DelayScope_min": "10",
            "GetGroupsFromDHCP": "0", "PreAssignGroups": 'MG="floor2";P1="lab";SALES="north"'}
REFRESH = ["get", BRANCH + "CurrentGateway"]


def press_ok(app):
    """OK, and the hint closed."""
    app.button("OK").click()
    app.message().close()
    assert app.wait_exit() == 0


def committed(device):
    return {name: device.registry.committed()[name].decode() for name in SETTINGS}


def test_reads_seven_values_then_writes_seven_and_commits_once(start, device):
    app = start()
    press_ok(app)
    calls = [call.args for call in device.journal()]
    assert calls[:7] == gets()
    assert [call for call in calls[7:] if call != REFRESH] == writes(DEFAULTS)
    first, last = calls.index(["create", BRANCH + "CurrentGateway"]), calls.index(["commit"])
    assert REFRESH not in calls[first:last], "nothing comes between the writes"


def test_saves_what_was_changed(start, device):
    app = start()
    app.entry("Current Gateway").fill("10.9.8.7")
    app.entry("Backup Gateway").fill("")
    press_ok(app)
    assert committed(device) == {**DEFAULTS, "CurrentGateway": "10.9.8.7", "BackupGateway": ""}


def test_tells_that_the_agent_must_be_restarted(start, device):
    app = start()
    app.button("OK").press()
    hint = app.message()
    assert hint.text == "Warning"
    assert hint.secondary == "The settings will only take effect after the Agent is restarted."
    assert hint.kind == "info"
    assert written(device)[-1] == ["commit"], "the hint comes last"
    hint.close()
    assert app.wait_exit() == 0


def test_the_hint_stands_in_the_middle_and_cannot_be_resized(start, desktop):
    app = start()
    app.button("OK").click()
    x, y, width, height = app.message().box
    assert abs(x + width / 2 - desktop.size[0] / 2) < 20
    assert abs(y + height / 2 - desktop.size[1] / 2) < 30
    hints = list(app.desktop.active_window().read("WM_NORMAL_HINTS"))
    assert hints[5:7] == hints[7:9]
    app.key("Escape")
    assert app.wait_exit() == 0


def test_the_hint_stands_in_the_middle_where_no_window_manager_puts_it(start, desktop_with):
    desktop = desktop_with(manager=None)
    app = start(desktop=desktop)
    app.button("OK").click()
    x, y, width, height = app.message().box
    assert abs(x + width / 2 - desktop.size[0] / 2) < 20
    assert abs(y + height / 2 - desktop.size[1] / 2) < 20


def test_the_window_waits_behind_the_hint(start, device):
    app = start()
    app.button("OK").click()
    hint = app.message()
    device.clear_journal()
    app.window(TITLE).entry("Backup Gateway").click()
    app.close_window()
    assert app.running and app.message().text == "Warning"
    wait_for(device.journal, "a refresh while the hint is open")
    hint.close()
    assert app.wait_exit() == 0
    assert written(device) == []


def test_a_refused_value_writes_nothing_and_keeps_the_window(start, device):
    app = start()
    app.entry("Backup Gateway").fill("255.255.255.255")
    app.button("OK").click()
    message = app.message()
    assert (message.kind, message.text) == ("error", "Backup gateway is not correct..")
    message.close()
    assert written(device) == []
    app.entry("Backup Gateway").fill("10.0.0.2")
    press_ok(app)
    assert committed(device)["BackupGateway"] == "10.0.0.2"


def test_the_version_stays_in_sight_when_ok_was_refused(start):
    app = start()
    app.entry("Current Gateway").fill("255.255.255.255")
    app.button("OK").click()
    app.message().close()
    assert "5.2.1\n" in app.texts()
    app.button("Cancel").click()
    assert app.wait_exit() == 0


def test_a_failing_client_changes_nothing_else(start, device):
    device.faults.fail(verbs=["create", "set", "commit"])
    app = start()
    press_ok(app)
    assert written(device) == writes(DEFAULTS)
    assert [call.status for call in device.journal() if call.args[0] != "get"] == [1] * 15


def test_an_empty_registry_opens_an_empty_window(start, device):
    for name in SETTINGS:
        device.registry.delete(name)
    app = start()
    for label in ("Current Gateway", "Backup Gateway", "Pull Interval", "Delay Scope"):
        assert app.entry(label).text == "", label
    app.page("Groups")
    assert app.table().rows == []


def test_an_empty_registry_is_filled_after_two_messages(start, device):
    for name in SETTINGS:
        device.registry.delete(name)
    app = start()
    app.button("OK").click()
    assert app.message().text.startswith("The pull interval value is empty.")
    app.message().close()
    assert app.message().text.startswith("The delay scope value is empty.")
    app.message().close()
    app.message().close()
    assert app.wait_exit() == 0
    assert committed(device) == {"CurrentGateway": "", "BackupGateway": "", "Interval_min": "1440",
                                 "LogLevel": "0", "DelayScope_min": "10",
                                 "GetGroupsFromDHCP": "1", "PreAssignGroups": ""}


def test_uncommitted_changes_of_others_are_seen_and_committed(start, device):
    other = device.start([device.client, "set", BRANCH + "Interval_min", "30"])
    assert other.wait(LIMIT) == 0
    app = start()
    assert app.combo("Pull Interval").shown == "30 minutes"
    press_ok(app)
    device.restart()
    assert committed(device) == {**DEFAULTS, "Interval_min": "30"}


def test_a_stored_single_quote_is_shown_kept_and_never_run(start, device):
    trap = "'$(touch /run/trap)'"
    device.registry.set("BackupGateway", trap)
    device.registry.set("PreAssignGroups", f'A="{trap}"')
    app = start()
    assert app.entry("Backup Gateway").text == trap
    app.page("Groups")
    assert app.table().rows == [["A", trap]]
    app.page("General")
    app.entry("Backup Gateway").fill("10.0.0.2")
    press_ok(app)
    assert written(device) == writes(
        {**DEFAULTS, "BackupGateway": "10.0.0.2", "PreAssignGroups": None})
    assert committed(device)["PreAssignGroups"] == f'A="{trap}"'
    assert not device.host_path("/run/trap").exists()


def test_what_the_shell_would_expand_is_passed_as_it_stands(start, device):
    groups = 'A="$(touch /run/trap) `touch /run/trap` $HOME \\ | & "'
    device.registry.set("PreAssignGroups", groups)
    app = start()
    press_ok(app)
    assert committed(device)["PreAssignGroups"] == groups
    assert not device.host_path("/run/trap").exists()


def test_bytes_are_written_back_as_they_were(start, device):
    groups = 'CAF\u00c9="d\u00e9p\u00f4t \u4e2d\u6587 \u00ff"'
    device.registry.set("PreAssignGroups", groups)
    app = start()
    press_ok(app)
    assert committed(device)["PreAssignGroups"] == groups


def test_what_ok_has_collected_is_what_it_saves(start, device):
    """The registry changes under an open message; a refresh reads it, OK still saves the entry."""
    device.registry.set("Interval_min", "")
    app = start()
    app.entry("Current Gateway").fill("10.9.8.7")
    app.button("OK").click()
    message = app.message()
    device.clear_journal()
    device.registry.set("CurrentGateway", "10.1.1.1")
    wait_for(lambda: len(device.journal()) >= 2, "two refreshes, the first of them done")
    message.close()
    app.message().close()
    assert app.wait_exit() == 0
    assert committed(device)["CurrentGateway"] == "10.9.8.7"


def press(window, name):
    """Presses a button as only an assistive tool can, behind any open dialog."""
    button = next(node for node in window.find(Role.PUSH_BUTTON) if node.name == name)
    button.activate()


def test_cancel_behind_a_message_writes_nothing(start, device):
    """The settings are gone then, not empty."""
    device.registry.set("Interval_min", "")
    app = start()
    app.button("OK").click()
    message = app.message()
    press(app.window(TITLE), "Cancel")
    message.close()
    assert app.wait_exit() == 0
    assert written(device) == []


@pytest.mark.parametrize("label, typed", [("Current Gateway", "no host"), ("Pull Interval", "x"),
                                          ("Delay Scope", "x")])
def test_ok_does_nothing_while_it_is_at_work(start, device, label, typed):
    app = start()
    app.entry(label).fill(typed)
    app.button("OK").click()
    message = app.message()
    press(app.window(TITLE), "OK")
    assert [window.role for window in app.windows()].count(Role.ALERT) == 1
    message.close()
    assert app.running and written(device) == []


def test_after_cancel_behind_a_message_ok_writes_nothing(start, device):
    app = start()
    app.page("Groups")
    app.button("Delete").click()
    message = app.message()
    press(app.window(TITLE), "Cancel")
    press(app.window(TITLE), "OK")
    message.close()
    assert app.wait_exit() == 0
    assert written(device) == []


def test_after_cancel_behind_the_dialog_nothing_is_written(start, device):
    app = start()
    app.page("Groups")
    app.button("Add...").click()
    dialog = app.dialog("Add New Group")
    dialog.entry("Group Name").fill("new")
    dialog.entry("Value").fill("x")
    press(app.window(TITLE), "Cancel")
    press(app.window(TITLE), "OK")
    press(dialog, "OK")
    assert app.wait_exit() == 0
    assert written(device) == []


def test_after_ok_behind_the_dialog_nothing_more_is_written(start, device):
    app = start()
    app.page("Groups")
    app.button("Add...").click()
    dialog = app.dialog("Add New Group")
    press(app.window(TITLE), "OK")
    app.message().close()
    press(app.window(TITLE), "OK")
    press(dialog, "Cancel")
    assert app.wait_exit() == 0
    assert len(written(device)) == 15


def test_a_window_that_is_destroyed_under_a_message_of_ok_writes_nothing(start, device):
    device.registry.set("DelayScope_min", "")
    app = start(fatal_warnings=False)
    app.button("OK").click()
    message = app.message()
    app.destroy_window()
    message.close()
    assert app.wait_exit() == 0
    assert written(device) == []
