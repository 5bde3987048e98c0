"""The device's registry client, called as the program calls it."""

import pytest
from conftest import BUILD_DIR, run
from simdevice import SimDevice

AGENT = "root/vexa/agent"
ALL_BYTES = bytes(range(1, 256))


def regmux(device, *args, env=None):
    return run(device, "regmux", *args, env=env)


def test_a_value_is_printed_after_its_word(device):
    result = regmux(device, "get", f"{AGENT}/Interval_min")
    assert (result.status, result.stdout, result.stderr) == (0, b"value 1440\n", b"")


def test_an_empty_value_is_the_word_and_a_blank(device):
    device.registry.set("LogLevel", b"")
    assert regmux(device, "get", f"{AGENT}/LogLevel").stdout == b"value \n"


def test_a_branch_lists_its_keys_and_directories_once(device):
    device.registry.set(f"{AGENT}/net/a", b"1")
    device.registry.set(f"{AGENT}/net/b", b"2")
    device.registry.set("root/vexa/agent2", b"3")
    result = regmux(device, "get", AGENT)
    assert result.status == 0
    assert result.stdout.decode().splitlines() == [
        "key BackupGateway", "key CurrentGateway", "key DelayScope_min", "key GetGroupsFromDHCP",
        "key Interval_min", "key LogLevel", "key PreAssignGroups", "dir net"]
    assert regmux(device, "get", "root").stdout == b"dir vexa\n"


@pytest.mark.parametrize("verb", [["get"], ["set", "v"], ["delete"]])
def test_a_missing_key_is_one_line_on_standard_error(device, verb):
    result = regmux(device, verb[0], f"{AGENT}/None", *verb[1:])
    assert (result.status, result.stdout) == (1, b"")
    assert result.stderr.count(b"\n") == 1 and result.stderr.endswith(b"\n")
    assert not result.stderr.startswith((b"key", b"dir", b"value"))
    assert device.registry.get("None") is None


def test_create_makes_an_empty_value_and_keeps_one_that_exists(device):
    assert regmux(device, "create", "root/new").status == 0
    assert device.registry.get("root/new") == b""
    assert regmux(device, "create", f"{AGENT}/Interval_min").status == 0
    assert device.registry.get("Interval_min") == b"1440"


def test_every_byte_comes_back_in_values_and_keys(device):
    key = b"root/" + ALL_BYTES.replace(b"/", b"")
    for args in (["create", key], ["set", key, ALL_BYTES]):
        assert regmux(device, *args).status == 0
    assert regmux(device, "get", key).stdout == b"value " + ALL_BYTES + b"\n"
    assert device.registry.get(device.journal()[0].args[1]) == ALL_BYTES


def test_delete_removes_a_value_or_a_branch_and_nothing_beside_it(device):
    for key in ("root/vexa/agent2", "root/vexa/agent-x/y", "root/vexa"):
        device.registry.set(key, b"1")
    assert regmux(device, "delete", f"{AGENT}/LogLevel").status == 0
    assert device.registry.get("LogLevel") is None
    assert regmux(device, "delete", AGENT).status == 0
    assert list(device.registry.current()) == ["root/vexa", "root/vexa/agent-x/y",
                                               "root/vexa/agent2"]


def test_changes_are_shown_at_once_and_kept_only_by_a_commit(device):
    before = device.registry.committed()
    regmux(device, "set", f"{AGENT}/LogLevel", "2")
    regmux(device, "create", "root/new")
    regmux(device, "delete", f"{AGENT}/BackupGateway")
    assert regmux(device, "get", f"{AGENT}/LogLevel").stdout == b"value 2\n"
    assert device.registry.committed() == before

    device.restart()
    assert device.registry.current() == before

    regmux(device, "set", f"{AGENT}/LogLevel", "1")
    regmux(device, "delete", f"{AGENT}/BackupGateway")
    assert regmux(device, "commit").status == 0
    device.restart()
    assert device.registry.get("LogLevel") == b"1"
    assert "BackupGateway" not in device.registry.committed()


def test_apply_succeeds_and_commits_nothing(device):
    regmux(device, "set", f"{AGENT}/LogLevel", "2")
    assert regmux(device, "apply").status == 0
    assert device.registry.committed()["LogLevel"] == b"0"


@pytest.mark.parametrize("args", [[], ["get"], ["set", "key"], ["commit", "now"], ["list"]])
def test_a_call_that_is_not_understood_changes_nothing_and_is_journalled(device, args):
    before = device.registry.current()
    result = regmux(device, *args)
    assert (result.status, result.stdout) == (2, b"")
    assert device.registry.current() == before
    assert [(call.args, call.status) for call in device.journal()] == [(args, 2)]


def test_the_journal_has_every_call_in_order(device):
    script = "regmux get root/none; regmux create 'a b'; regmux set 'a b' ''; regmux commit"
    assert run(device, "/bin/bash", "-c", script).status == 0
    assert [(call.args, call.status) for call in device.journal()] == [
        (["get", "root/none"], 1), (["create", "a b"], 0), (["set", "a b", ""], 0), (["commit"], 0)]
    device.clear_journal()
    assert device.journal() == []


@pytest.mark.parametrize("env", [{}, {"LD_LIBRARY_PATH": ""}, {"LD_LIBRARY_PATH": "/a:/\udcff"}])
def test_the_journal_has_the_library_path_or_its_absence(device, env):
    regmux(device, "commit", env=env)
    assert [call.ld_library_path for call in device.journal()] == [env.get("LD_LIBRARY_PATH")]


def test_the_journal_names_the_program_behind_the_shells(device):
    program = device.start(["/bin/bash", "-c", "regmux commit; sh -c 'regmux commit; true'; true"])
    assert program.wait() == 0
    assert [call.caller for call in device.journal()] == [program.program_pid] * 2


def test_two_callers_at_once_lose_nothing(device):
    rounds = 20
    script = ("i=0; while [ $i -lt $1 ]; do i=$((i+1));"
              " regmux create $2/$i && regmux set $2/$i $i && regmux commit || exit 9; done")
    callers = [device.start(["/bin/bash", "-c", script, "x", str(rounds), f"root/{name}"])
               for name in "ab"]
    assert [caller.wait() for caller in callers] == [0, 0]
    committed = device.registry.committed()
    for caller, name in zip(callers, "ab"):
        assert [committed[f"root/{name}/{i}"] for i in range(1, rounds + 1)] == [
            str(i).encode() for i in range(1, rounds + 1)]
        calls = [call for call in device.journal() if call.caller == caller.program_pid]
        assert [call.args[0] for call in calls] == ["create", "set", "commit"] * rounds
        assert {call.status for call in calls} == {0}


def test_devices_know_nothing_of_each_other(device):
    with SimDevice(BUILD_DIR) as other:
        regmux(other, "create", "root/new")
        assert len(other.journal()) == 1
    assert device.registry.get("root/new") is None
    assert device.journal() == []
