"""Faults in the middle of OK: its fifteen calls of the registry's client, one by one."""
import signal

import pytest
from device_calls import written
from save_test import DEFAULTS, committed, press_ok, writes

CHANGED = {**DEFAULTS, "CurrentGateway": "10.9.8.7"}
CHANGING = ("create", "set", "commit")
EACH_CALL = pytest.mark.parametrize("nth", range(1, 16))


def start_and_change(start):
    app = start()
    app.entry("Current Gateway").fill(CHANGED["CurrentGateway"])
    return app


@EACH_CALL
def test_a_call_that_fails_stops_none_of_the_others(start, device, nth):
    device.faults.fail(verbs=CHANGING, nth=nth)
    app = start_and_change(start)
    press_ok(app)
    assert written(device) == writes(CHANGED)
    statuses = [call.status for call in device.journal() if call.args[0] != "get"]
    assert statuses == [int(number == nth) for number in range(1, 16)]


@EACH_CALL
def test_killed_after_a_call_it_leaves_all_of_the_change_or_nothing(start, device, nth):
    device.faults.signal_program(signal.SIGKILL, verbs=CHANGING, nth=nth)
    app = start_and_change(start)
    app.button("OK").click()
    app.wait_crash()
    device.restart()
    assert committed(device) == (CHANGED if nth == 15 else DEFAULTS)


def test_a_registry_that_is_full_keeps_what_it_had(start, device):
    device.faults.registry_full(verbs=CHANGING)
    app = start_and_change(start)
    press_ok(app)
    device.faults.clear()
    device.restart()
    assert committed(device) == DEFAULTS
