"""Commands of the start that close their output and live on: none is waited for."""
import os

import pytest
from agent_version_test import version
from harness.waiting import wait_for
from pellion import HANDED_OVER, PELLION_5, SYSTEM_INFO, run_to_end

GATE = "/run/gate"


@pytest.fixture
def lasting(device):
    """lasting(path, commands): puts a command on the device that ends only with the test."""
    gate = device.host_path(GATE)
    os.mkfifo(gate)

    def put(path, commands):
        device.write(path, f"#!/bin/sh\n{commands}\nexec >&- 2>&-\nread word <{GATE}\n", 0o755)

    def open_gate():
        """Whether somebody has reached it."""
        try:
            os.close(os.open(gate, os.O_WRONLY | os.O_NONBLOCK))
        except OSError:
            return False
        return True

    yield put
    wait_for(open_gate, "the command to wait for the end of the test")


def test_the_agent(start, device, lasting):
    lasting("/usr/sbin/vexaagent", "echo v: 9")
    app = start()
    assert version(app) == "9\n"
    app.button("Cancel").click()
    assert app.wait_exit() == 0


def test_the_locale_tool(start, device, lasting):
    lasting(device.bin / "locale", "echo 'LC_CTYPE=\"xx_XX.UTF-8\"'")
    device.write_table("xx_XX.UTF-8", "[MainWindow]\nTitle = Another title\n")
    start(title="Another title")


def test_the_reader_of_the_pid_file(start, device, desktop, lasting):
    device.write(SYSTEM_INFO, PELLION_5)
    device.remove("/usr/sbin/vexaagent")  # the device's own is a script that runs cat, too
    lasting(device.bin / "cat", '/bin/cat "$@"')
    start()
    assert run_to_end(device, desktop.environment) == HANDED_OVER
