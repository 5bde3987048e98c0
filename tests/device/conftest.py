"""What the tests of the simulated device share."""

import os
import select
import signal
import subprocess
import sys
from dataclasses import dataclass
from pathlib import Path

import pytest

TREE = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(TREE / "device"))
sys.path.append(str(TREE / "tests/window"))  # the harness

from simdevice import SimDevice  # noqa: E402

BUILD_DIR = Path(os.environ["KORV_BUILD_DIR"])
LIMIT = 30  # seconds that anything may take

# The end of the terminal, and SIGTERM, are taken as Ctrl-C is: fixtures put away what they have made.
for way_to_end in (signal.SIGHUP, signal.SIGTERM):
    signal.signal(way_to_end, signal.default_int_handler)


@dataclass(frozen=True)
class Result:
    status: int
    stdout: bytes
    stderr: bytes


def run(device, *argv, env=None):
    """Runs a program on the device to its end."""
    program = device.start(argv, env, stdout=subprocess.PIPE, stderr=subprocess.PIPE)
    stdout, stderr = program.communicate(timeout=LIMIT)
    return Result(program.program_status, stdout, stderr)


def wait_for_end(pid):
    """Waits until a process that need not be our child has ended."""
    try:
        process = os.pidfd_open(pid)
    except ProcessLookupError:
        return
    try:
        assert select.select([process], [], [], LIMIT)[0], f"process {pid} goes on"
    finally:
        os.close(process)


@pytest.fixture
def device():
    with SimDevice(BUILD_DIR) as made:
        yield made
