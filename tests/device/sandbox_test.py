"""What a program finds on the device, and what it cannot do to the machine."""

import os
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import time
from pathlib import Path

import pytest
from conftest import BUILD_DIR, LIMIT, TREE, run, wait_for_end
from simdevice import AgentRun, SimDevice

# Holds the lock that it takes until it reads something; says who holds it when it cannot have it.
LOCK_SCRIPT = """
import fcntl, os, struct, sys
file = open("/var/run/korv-agent-mgr.pid", "a")
try:
    fcntl.lockf(file, fcntl.LOCK_EX | fcntl.LOCK_NB)
    print("locked", os.getpid(), flush=True)
    sys.stdin.read(1)
except OSError:
    asked = struct.pack("hhqqi", fcntl.F_WRLCK, os.SEEK_SET, 0, 0, 0)
    print("held by", struct.unpack("hhqqi", fcntl.fcntl(file, fcntl.F_GETLK, asked))[4])
"""

# Says that it waits for SIGTERM, then ends with a status of its own.
WAIT_SCRIPT = """
import signal, sys
signal.pthread_sigmask(signal.SIG_BLOCK, {signal.SIGTERM})
print("waiting", flush=True)
signal.sigwait({signal.SIGTERM})
sys.exit(7)
"""


# ---- What is there ----

def test_a_fresh_device_is_complete(device):
    assert device.registry.current() == device.registry.committed()
    assert set(device.registry.current()) == {
        "CurrentGateway", "BackupGateway", "Interval_min", "LogLevel", "DelayScope_min",
        "GetGroupsFromDHCP", "PreAssignGroups"}
    info = run(device, "cat", "/etc/systeminfo").stdout
    assert b'PRODUCT_NAME="Pellion"\n' in info and b'PRODUCT_VERSION="6' in info
    icon = run(device, "cat", "/usr/share/pixmaps/agent_48.png").stdout
    assert icon[:8] == b"\x89PNG\r\n\x1a\n" and icon[16:24] == bytes([0, 0, 0, 48] * 2)
    assert run(device, "ls", "-A", "/etc/vexaagent/i18n/configui").stdout == b""
    assert run(device, "test", "-e", "/etc/imageid").status == 1
    assert device.journal() == [] and device.agent_runs() == []


def test_the_agent_tells_its_version_and_notes_its_library_path(device):
    agent = ["/usr/sbin/vexaagent", "-v"]
    assert run(device, *agent).stdout == b"Agent Version : 5.2.1\n"
    device.write("/etc/vexaagent/version", b"\xff\n")
    assert run(device, *agent, env={"LD_LIBRARY_PATH": ""}).stdout == b"\xff\n"
    device.remove("/etc/vexaagent/version")
    assert run(device, *agent, env={"LD_LIBRARY_PATH": "/a:/b"}).stdout == b""
    assert device.agent_runs() == [AgentRun("-v", None), AgentRun("-v", ""), AgentRun("-v", "/a:/b")]

    device.write(agent[0], "#!/bin/sh\necho other\n", 0o755)
    assert run(device, *agent).stdout == b"other\n"
    device.remove(agent[0])
    assert run(device, "test", "-e", agent[0]).status == 1


@pytest.mark.parametrize("path", ["/etc/imageid", "/etc/vexaagent/i18n/configui/de_DE.UTF-8.prop",
                                  "/usr/sbin/tool", "/usr/share/pixmaps/x.png", "/run/dir/file",
                                  "/var/run/file", "/etc/passwd"])
def test_files_of_the_device_are_written_and_removed_from_outside(device, path):
    device.write(path, b"\xff one", 0o640)
    assert run(device, "cat", path).stdout == b"\xff one"
    device.write(path, "two")
    result = run(device, "stat", "-c", "%a %s", path)
    assert result.stdout == b"644 3\n"
    device.remove(path)
    device.remove(path)
    assert run(device, "test", "-e", path).status == 1


def test_a_directory_can_stand_where_a_file_should(device):
    device.mkdir("/etc/vexaagent/i18n/configui/en_US.prop/deeper")
    assert run(device, "test", "-d", "/etc/vexaagent/i18n/configui/en_US.prop/deeper").status == 0
    device.remove("/etc/vexaagent/i18n/configui/en_US.prop")
    assert run(device, "ls", "/etc/vexaagent/i18n/configui").stdout == b""


def test_commands_of_the_device_come_before_those_of_the_machine(device):
    device.write(device.bin / "locale", "#!/bin/sh\necho LC_CTYPE=own\n", 0o755)
    assert run(device, "sh", "-c", "locale").stdout == b"LC_CTYPE=own\n"


def test_the_rest_is_as_on_the_machine(device):
    for path in ("/etc/passwd", "/etc/os-release", "/etc/fonts/fonts.conf"):
        assert run(device, "cat", path).stdout == Path(path).read_bytes()
    assert run(device, "ls", "/usr/bin").stdout == subprocess.check_output(["ls", "/usr/bin"])


def test_a_program_starts_on_a_machine_without_icons(tmp_path):
    script = tmp_path / "script.py"
    script.write_text(f"""
import sys
sys.dont_write_bytecode = True
sys.path.insert(0, {str(TREE / "device")!r})
from simdevice import SimDevice
with SimDevice({str(BUILD_DIR)!r}) as device:
    device.start(["head", "-c4", "/usr/share/pixmaps/agent_48.png"]).wait()
""")
    line = ["bwrap", "--dev-bind", "/", "/", "--tmpfs", "/usr/share", sys.executable, script]
    assert subprocess.check_output(line) == b"\x89PNG"


# ---- What stays outside ----

@pytest.mark.parametrize("path", ["/usr/bin/tool", "/etc/../usr/bin/tool", "/etcetera", "relative",
                                  "/etc/fonts/tool", "/home/x"])
def test_files_of_the_machine_cannot_be_written_through_the_device(device, path):
    with pytest.raises(ValueError):
        device.write(path, "")
    assert not os.path.exists(path)


def test_nothing_is_left_on_the_machine():
    name = f"korv-left-{os.getpid()}"
    directories = ["/etc", "/usr/sbin", "/usr/share/pixmaps", "/run", "/var/run", "/usr/bin", "/",
                   "/var"]
    if not any(Path.home().is_relative_to(shared) for shared in ("/tmp", tempfile.gettempdir())):
        directories.append(str(Path.home()))
    own = [Path(path) for path in ("/etc/systeminfo", "/usr/sbin/vexaagent", "/etc/vexaagent",
                                   "/usr/share/pixmaps/agent_48.png", "/etc/regmux",
                                   "/etc/hostname")]
    there_before = [path.exists() for path in own]
    with SimDevice(BUILD_DIR) as device:
        run(device, "touch", *(f"{directory}/{name}" for directory in directories))
        run(device, "rm", "-f", "/etc/hostname")
        assert run(device, "ls", f"/etc/{name}", f"/run/{name}").status == 0
        state = device.state
    assert not state.exists()
    assert [d for d in directories if os.path.exists(f"{d}/{name}")] == []
    assert [path.exists() for path in own] == there_before


def test_an_ordinary_user_can_do_all_this():
    if os.geteuid() != 0:
        pytest.skip("the other tests are run by one already")
    with tempfile.TemporaryDirectory() as copy:
        os.chmod(copy, 0o755)
        shutil.copytree(TREE / "device", f"{copy}/device")
        shutil.copytree(TREE / "tests/device", f"{copy}/tests/device")
        for built in ("device/regmux", "packaging/agent_48.png"):
            Path(f"{copy}/build/{built}").parent.mkdir(parents=True)
            shutil.copy(BUILD_DIR / built, f"{copy}/build/{built}")
        result = subprocess.run(
            ["setpriv", "--reuid=nobody", "--regid=nogroup", "--clear-groups", sys.executable, "-m",
             "pytest", "-q", "-p", "no:cacheprovider", f"{copy}/tests/device/sandbox_test.py"], cwd=copy,
            env={**os.environ, "KORV_BUILD_DIR": f"{copy}/build", "HOME": "/nonexistent",
                 "PYTHONDONTWRITEBYTECODE": "1"},
            capture_output=True, text=True, check=False)
    assert result.returncode == 0, result.stdout + result.stderr


def test_only_the_given_environment_reaches_the_program(device, monkeypatch):
    for name in ("LC_ALL", "LD_LIBRARY_PATH", "DISPLAY", "KORV_STRAY"):
        monkeypatch.setenv(name, "stray")
    assert set(run(device, "env").stdout.decode().splitlines()) == {
        f"PATH={device.bin}:/usr/bin:/bin", "PWD=/"}
    result = run(device, "env", env={"PATH": "/usr/bin", "LANG": "x\udcff", "EMPTY": ""})
    assert set(result.stdout.splitlines()) == {
        f"PATH={device.bin}:/usr/bin".encode(), b"PWD=/", b"LANG=x\xff", b"EMPTY="}


def test_no_file_but_the_standard_ones_is_open(device):
    assert run(device, "sh", "-c", "ls /proc/$$/fd; :").stdout.split() == [b"0", b"1", b"2"]


# ---- What is within reach ----

@pytest.mark.parametrize("where", ["tmp", "runtime", "abstract"])
def test_sockets_of_the_machine_are_within_reach(device, where):
    with tempfile.TemporaryDirectory(dir="/tmp" if where == "tmp" else "/var/tmp") as directory:
        name = f"\0korv-{os.getpid()}" if where == "abstract" else f"{directory}/socket"
        with socket.socket(socket.AF_UNIX) as server:
            server.bind(name)
            server.listen()
            client = "import socket, sys; socket.socket(socket.AF_UNIX).connect(eval(sys.argv[1]))"
            result = run(device, sys.executable, "-c", client, repr(name),
                         env={"XDG_RUNTIME_DIR": directory})
            assert result.status == 0, result.stderr
        if where == "runtime":
            run(device, "touch", f"{directory}/new", env={"XDG_RUNTIME_DIR": directory})
            assert os.path.exists(f"{directory}/new")


def test_the_runtime_directories_of_users_are_the_machines(device):
    if not os.path.isdir("/run/user"):
        pytest.skip("this machine has none")
    users = os.stat("/run/user")
    result = run(device, "stat", "-c", "%d %i", "/run/user")
    assert result.stdout.split() == [b"%d" % users.st_dev, b"%d" % users.st_ino]


def test_two_programs_share_run_and_its_locks(device):
    holder = device.start([sys.executable, "-c", LOCK_SCRIPT], stdin=subprocess.PIPE,
                          stdout=subprocess.PIPE)
    assert holder.stdout.readline() == b"locked %d\n" % holder.program_pid
    second = run(device, sys.executable, "-c", LOCK_SCRIPT)
    assert second.stdout == b"held by %d\n" % holder.program_pid
    holder.communicate(b"x", timeout=LIMIT)
    assert run(device, sys.executable, "-c", LOCK_SCRIPT).stdout.startswith(b"locked")


# ---- How programs live and end ----

def test_a_program_has_the_same_process_id_inside_and_outside(device):
    program = device.start(["sh", "-c", "echo $$"], stdout=subprocess.PIPE)
    assert int(program.communicate(timeout=LIMIT)[0]) == program.program_pid


@pytest.mark.parametrize("script, status", [("exit 0", 0), ("exit 3", 3), ("kill -KILL $$", -9),
                                            ("kill -ABRT $$", -6), ("exit 255", 255)])
def test_the_programs_own_end_is_known(device, script, status):
    assert run(device, "sh", "-c", f"ulimit -c 0; {script}").status == status


def test_a_signal_goes_to_the_program_itself(device):
    # It waits for the signal itself: a shell may go into its next read just after one has come.
    program = device.start([sys.executable, "-c", WAIT_SCRIPT], stdout=subprocess.PIPE)
    program.stdout.readline()
    assert program.program_status is None
    program.terminate()
    assert program.wait(LIMIT) == 7
    program.terminate()  # One that has ended takes no harm.


@pytest.mark.parametrize("sig", [signal.SIGKILL, signal.SIGTERM])
def test_a_program_ends_with_its_sandbox(device, sig):
    program = device.start(["sleep", "1000"])
    os.kill(program.pid, sig)
    wait_for_end(program.program_pid)


def test_a_program_ends_with_the_process_that_started_it(device):
    script = """
import os, sys
sys.path.insert(0, sys.argv[1])
from simdevice import SimDevice
print(SimDevice(sys.argv[2], sys.argv[3]).start(["sleep", "1000"]).program_pid, flush=True)
os.kill(os.getpid(), 9)
"""
    starter = subprocess.run([sys.executable, "-c", script, TREE / "device", BUILD_DIR,
                              device.state], stdout=subprocess.PIPE, check=False)
    wait_for_end(int(starter.stdout))


def test_closing_ends_programs_and_their_commands(device):
    program = device.start(["/bin/bash", "-c", "sleep 1000 & echo $!; wait"],
                           stdout=subprocess.PIPE)
    child = int(program.stdout.readline())
    device.restart()
    assert program.program_status == -signal.SIGKILL
    wait_for_end(child)


def test_a_slow_call_ends_with_the_device():
    with SimDevice(BUILD_DIR) as device:
        device.faults.delay(1000)
        device.faults.signal_program(signal.SIGKILL)
        # In a group of its own the call outlives the program.
        program = device.start(["/bin/bash", "-c", "setsid regmux commit & echo $!; wait"],
                               stdout=subprocess.PIPE)
        call = int(program.stdout.readline())
        limit = time.monotonic() + LIMIT
        while not device.journal():
            assert time.monotonic() < limit
            os.sched_yield()
    wait_for_end(call)


def test_a_restart_empties_run_and_keeps_etc(device):
    run(device, "touch", "/run/a", "/var/run/b", "/etc/c")
    device.restart()
    assert run(device, "ls", "/run/a", "/run/b").status != 0
    assert run(device, "test", "-e", "/etc/c").status == 0
    assert run(device, "touch", "/run/a").status == 0


def test_a_device_in_a_given_directory_stays_and_is_taken_up_again(tmp_path):
    with SimDevice(BUILD_DIR, tmp_path / "device") as device:
        device.registry.set("LogLevel", b"2")
        device.remove("/etc/systeminfo")
    with SimDevice(BUILD_DIR, tmp_path / "device") as device:
        assert device.registry.get("LogLevel") == b"2"
        assert run(device, "test", "-e", "/etc/systeminfo").status == 1
        assert run(device, "regmux", "get", "root/vexa/agent/LogLevel").stdout == b"value 2\n"
