"""The X server ends while the program runs: it ends too, and leaves nothing half done."""
import subprocess

import pytest
from device_calls import written
from harness.desktop import Desktop
from harness.waiting import wait_for
from save_test import DEFAULTS, committed, writes

CHANGED = {**DEFAULTS, "BackupGateway": "10.0.0.2"}


@pytest.fixture
def desktop(bus):
    desktop = Desktop(bus)
    yield desktop
    desktop.close()


def open_window(app):
    app.entry("Backup Gateway").fill(CHANGED["BackupGateway"])


def open_list(app):
    app.combo("Log Level").open()


def open_dialog(app):
    app.page("Groups")
    app.button("Add...").click()
    app.dialog("Add New Group").entry("Value").fill("x")


def open_message(app):
    app.entry("Backup Gateway").fill("255.255.255.255")
    app.button("OK").click()
    app.message()


def open_message_on_dialog(app):
    app.page("Groups")
    app.button("Add...").click()
    app.dialog("Add New Group").button("OK").click()
    app.message()


def end_server(app):
    """Ends it, and waits for the end of the program and of every command it had running."""
    app.desktop.end_server()
    status = app.wait_exit()
    wait_for(lambda: not is_left(app.process.pid), "all processes of the program to end")
    return status


def is_left(group):
    """Whether a process of the group has not ended."""
    return subprocess.run(["pgrep", "--pgroup", str(group), "--runstates", "DIRST"],
                          stdout=subprocess.DEVNULL, check=False).returncode == 0


@pytest.mark.parametrize("opened", [open_window, open_list, open_dialog, open_message,
                                    open_message_on_dialog])
def test_ends_with_a_status_and_writes_nothing(start, device, opened):
    app = start()
    opened(app)
    assert end_server(app) == 1
    assert written(device) == []
    assert committed(device) == DEFAULTS


def test_under_the_hint_all_is_written_and_stays(start, device):
    app = start()
    open_window(app)
    app.button("OK").click()
    app.message()
    assert end_server(app) == 1
    assert written(device) == writes(CHANGED)
    device.restart()
    assert committed(device) == CHANGED


def test_in_the_middle_of_ok_the_rest_is_written_all_the_same(start, device):
    """OK does not look at the screen before it is done."""
    app = start()
    open_window(app)
    device.write("/run/going-on", "")
    device.write(device.bin / "regmux", f"""#!/bin/sh
        '{device.client}' "$@" || exit
        while [ "$1 $2" = "set root/vexa/agent/LogLevel" ] && [ -e /run/going-on ]; do
          sleep 0.01
        done""", 0o755)
    app.button("OK").click(settle=False)
    wait_for(lambda: len(written(device)) == 8, "the eighth call")
    app.desktop.end_server()
    assert app.running
    device.remove("/run/going-on")
    assert end_server(app) == 1
    assert written(device) == writes(CHANGED)
    device.restart()
    assert committed(device) == CHANGED
