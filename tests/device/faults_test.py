"""How the registry client misbehaves when it is told to."""

import os
import signal
import time
from pathlib import Path

import pytest
from conftest import LIMIT, run

LEVEL = "root/vexa/agent/LogLevel"
SAVE = ("create", "set", "commit")
SAVE_SCRIPT = f"""
for key in {LEVEL} root/vexa/agent/Interval_min; do
  regmux create $key; regmux set $key 9
done
regmux commit
echo survived
"""


def regmux(device, *args):
    return run(device, "regmux", *args)


def calls(device):
    return [(call.args[0], call.status) for call in device.journal()]


def test_a_missing_client_is_not_found_by_the_shell(device):
    device.faults.client_missing()
    result = run(device, "/bin/sh", "-c", f"regmux get {LEVEL}")
    assert (result.status, result.stdout) == (127, b"")


def test_a_client_that_fails_does_nothing_and_is_journalled(device):
    device.faults.fail(status=4)
    for args in (["get", LEVEL], ["set", LEVEL, "2"], ["delete", LEVEL], ["commit"]):
        result = regmux(device, *args)
        assert (result.status, result.stdout, result.stderr.count(b"\n")) == (4, b"", 1)
    assert device.registry.get("LogLevel") == b"0"
    assert calls(device) == [("get", 4), ("set", 4), ("delete", 4), ("commit", 4)]


@pytest.mark.parametrize("nth", [1, 2, 3, 5])
def test_exactly_the_nth_of_some_calls_fails(device, nth):
    regmux(device, "commit")  # A call before the fault was set does not count.
    device.faults.fail(verbs=SAVE, nth=nth)
    device.clear_journal()
    regmux(device, "get", LEVEL)
    run(device, "/bin/bash", "-c", SAVE_SCRIPT)
    statuses = [status for verb, status in calls(device) if verb in SAVE]
    assert statuses == [1 if n == nth else 0 for n in range(1, 6)]
    assert calls(device)[0] == ("get", 0)


def test_a_fault_can_be_for_one_verb_and_one_key(device):
    device.faults.fail(verbs="set", key="LogLevel")
    assert regmux(device, "set", LEVEL, "2").status == 1
    assert regmux(device, "get", LEVEL).status == 0
    assert regmux(device, "set", "root/vexa/agent/Interval_min", "2").status == 0


@pytest.mark.parametrize("output", [b"", b"nonsense\n", b"value \xff\xfe\n", b"val\0ue 1\0\n",
                                    b"value " + b"x" * 10_000_000], ids=len)
def test_other_output_takes_the_place_of_the_answer(device, output):
    device.faults.print(output, verbs="get")
    result = regmux(device, "get", LEVEL)
    assert (result.status, result.stdout, result.stderr) == (0, output, b"")


def test_a_client_that_dies_has_done_nothing_and_leaves_no_status(device):
    device.faults.die(signal.SIGSEGV, verbs="set")
    assert regmux(device, "set", LEVEL, "2").status == -signal.SIGSEGV
    assert device.registry.get("LogLevel") == b"0"
    assert calls(device) == [("set", None)]


def test_a_slow_call_takes_its_time_and_then_works(device):
    device.faults.delay(0.3, verbs="get")
    begin = time.monotonic()
    assert regmux(device, "get", LEVEL).stdout == b"value 0\n"
    assert time.monotonic() - begin >= 0.3


def test_several_faults_meet_in_one_call(device):
    device.faults.delay(0.2)
    device.faults.fail(status=3)
    begin = time.monotonic()
    assert regmux(device, "commit").status == 3
    assert time.monotonic() - begin >= 0.2


def test_a_silent_client_says_nothing_of_a_missing_key(device):
    device.faults.silent()
    result = regmux(device, "get", "root/none")
    assert (result.status, result.stdout, result.stderr) == (1, b"", b"")
    assert regmux(device, "get", LEVEL).stdout == b"value 0\n"


def test_a_full_registry_takes_no_change_and_still_answers(device):
    regmux(device, "set", LEVEL, "1")
    device.faults.registry_full()
    for args in (["create", "root/new"], ["set", LEVEL, "2"], ["delete", LEVEL], ["commit"]):
        result = regmux(device, *args)
        assert (result.status, result.stdout, result.stderr.count(b"\n")) == (1, b"", 1)
    assert regmux(device, "get", LEVEL).stdout == b"value 1\n"
    assert device.registry.get("root/new") is None
    assert device.registry.committed()["LogLevel"] == b"0"
    assert [status for _, status in calls(device)] == [0, 1, 1, 1, 1, 0]

    device.faults.clear()
    assert regmux(device, "commit").status == 0
    assert device.registry.committed()["LogLevel"] == b"1"


def test_a_commit_that_runs_out_of_room_half_way_changes_nothing(device):
    before = device.registry.committed()
    regmux(device, "set", "root/vexa/agent/CurrentGateway", "10.0.0.1")
    regmux(device, "set", "root/vexa/agent/PreAssignGroups", "x" * 60_000)
    database = device.host_path("/etc/regmux/registry.db")
    device.faults.registry_full(file_size=database.stat().st_size)
    assert regmux(device, "commit").status == 1
    assert device.registry.committed() == before
    device.restart()
    assert device.registry.current() == before


@pytest.mark.parametrize("nth", range(1, 6))
def test_the_program_is_killed_when_the_nth_call_has_ended(device, nth):
    device.faults.signal_program(signal.SIGKILL, verbs=SAVE, nth=nth)
    result = run(device, "/bin/bash", "-c", f"sh -c '{SAVE_SCRIPT}; true'; echo survived")
    assert result.status == -signal.SIGKILL
    done = [("create", 0), ("set", 0)] * 2 + [("commit", 0)]
    assert calls(device)[:nth] == done[:nth]


def test_the_program_is_paused_when_the_call_has_ended(device):
    device.faults.signal_program(signal.SIGSTOP, verbs="create", nth=2)
    program = device.start(["/bin/bash", "-c", SAVE_SCRIPT])
    stat = Path(f"/proc/{program.program_pid}/stat")
    limit = time.monotonic() + LIMIT
    while stat.read_text().rpartition(")")[2].split()[0] != "T":
        assert time.monotonic() < limit, "the program goes on"
        os.sched_yield()
    assert calls(device) == [("create", 0), ("set", 0), ("create", 0)]
    program.send_signal(signal.SIGCONT)
    assert program.wait(LIMIT) == 0
    assert calls(device)[-1] == ("commit", 0)


def test_faults_are_cleared_all_at_once(device):
    device.faults.fail()
    device.faults.client_missing()
    device.faults.clear()
    assert regmux(device, "get", LEVEL).stdout == b"value 0\n"


def test_a_script_can_stand_in_for_the_client(device):
    device.write(device.bin / "regmux",
                 '#!/bin/sh\n[ "$1" = commit ] && exit 5\n'
                 f"""exec '{device.client}' "$@"\n""", 0o755)
    assert regmux(device, "commit").status == 5
    assert regmux(device, "get", LEVEL).stdout == b"value 0\n"
    assert calls(device) == [("get", 0)]
    device.faults.clear()
    assert regmux(device, "commit").status == 0
