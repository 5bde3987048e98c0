"""That no device is left behind, however its command ends."""

import os
import signal
import subprocess
import sys

import pytest
from conftest import BUILD_DIR, LIMIT, TREE
from harness.waiting import wait_for

MAKE = """
import os, sys
sys.dont_write_bytecode = True
sys.path.insert(0, sys.argv[1])
from simdevice import SimDevice
device = SimDevice(sys.argv[2])
"""


@pytest.fixture
def memory(tmp_path):
    """What the processes of start() have as /dev/shm."""
    directory = tmp_path / "memory"
    directory.mkdir()
    return directory


@pytest.fixture
def start(memory):
    """start(...): starts a command with that memory, as a terminal would, in a group of its own."""
    started = []

    def begin(*command, **options):
        line = ["bwrap", "--dev-bind", "/", "/", "--bind", memory, "/dev/shm", "--", *command]
        options = {"stdin": subprocess.DEVNULL, "stdout": subprocess.DEVNULL, **options}
        started.append(subprocess.Popen(line, stderr=subprocess.PIPE, text=True,
                                        start_new_session=True, **options))
        return started[-1]

    yield begin
    for process in started:
        process.kill()
        process.communicate()


def make(start, script="", build=BUILD_DIR):
    """Runs a script on a device of its own; how it ended and what it complained of."""
    process = start(sys.executable, "-c", MAKE + script, TREE / "device", build)
    complaints = process.communicate(timeout=LIMIT)[1]
    return process.returncode, complaints


def test_a_device_that_is_not_closed_goes_with_the_next(start, memory):
    make(start, "os.kill(os.getpid(), 9)")
    left, = memory.iterdir()
    make(start, "os.kill(os.getpid(), 9)")
    other, = memory.iterdir()
    assert left != other
    assert make(start, "device.close()") == (0, "")
    assert not list(memory.iterdir())


def test_a_device_in_use_is_left_alone(start, memory):
    process = start(sys.executable, "-c", MAKE + "sys.stdin.read(); device.close()", TREE / "device",
                    BUILD_DIR, stdin=subprocess.PIPE)
    wait_for(lambda: list(memory.glob("*/bin/regmux")), "the device")
    used, = memory.iterdir()
    make(start, "device.close()")
    assert list(memory.iterdir()) == [used]
    assert process.communicate("", timeout=LIMIT)[1] == ""
    assert not list(memory.iterdir())


def test_what_somebody_else_has_there_is_left_alone(start, memory):
    (memory / "korv-device.link").symlink_to(TREE)
    (memory / "korv-device.file").touch()
    (memory / "korv-device").mkdir()
    before = set(memory.iterdir())
    make(start, "device.close()")
    assert set(memory.iterdir()) == before


def test_a_device_that_cannot_be_made_goes(start, memory, tmp_path):
    status, complaints = make(start, build=tmp_path)
    assert status == 1 and "FileNotFoundError" in complaints
    assert not list(memory.iterdir())


@pytest.mark.parametrize("number", [signal.SIGINT, signal.SIGTERM, signal.SIGHUP])
def test_the_demo_puts_its_device_away(start, memory, tmp_path, number):
    process = start(TREE / "script/demo", "--no-build", "--build", BUILD_DIR, "--tour",
                    "--screenshots", tmp_path)
    wait_for(lambda: list(tmp_path.glob("*.png")), "the tour to be under way")
    os.killpg(process.pid, number)
    complaints = process.communicate(timeout=LIMIT)[1]
    assert "Traceback" not in complaints
    wait_for(lambda: not list(memory.iterdir()), "the device to go")


@pytest.mark.parametrize("number", [signal.SIGINT, signal.SIGTERM, signal.SIGHUP])
def test_tests_put_their_devices_away(start, memory, tmp_path, number):
    test = tmp_path / "endless_test.py"
    test.write_text("import signal\ndef test_endless(device):\n    signal.pause()\n")
    process = start(sys.executable, "-B", "-m", "pytest", "-p", "no:cacheprovider", "-p", "conftest",
                    "--rootdir", tmp_path, test, env={**os.environ, "PYTHONPATH": str(TREE / "tests/device")})
    wait_for(lambda: list(memory.glob("*/bin/regmux")), "the test's device")
    os.killpg(process.pid, number)
    process.communicate(timeout=LIMIT)
    wait_for(lambda: not list(memory.iterdir()), "the device to go")
