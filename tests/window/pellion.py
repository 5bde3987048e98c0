"""The platform on which only one instance of the program may run, and starts that open no window."""
import subprocess

from harness.waiting import LIMIT

SYSTEM_INFO = "/etc/systeminfo"
IMAGE_ID = "/etc/imageid"
PID_FILE = "/var/run/korv-agent-mgr.pid"
GREETING = b"Pellion 5\n"
# What a start does that finds another instance running: (status, standard output, standard error).
HANDED_OVER = (0, GREETING + b"pid file locked already.\n", b"")


def system_info(**values):
    """The file's text: system_info(NAME="Pellion", CONFIG="ostrel", VERSION="5.1")."""
    return "".join(f'PRODUCT_{key}="{value}"\n' for key, value in values.items())


PELLION_5 = system_info(NAME="Pellion", CONFIG="ostrel", VERSION="5.1")


def pid_file(device):
    """The pid file's content, None when there is none."""
    file = device.host_path(PID_FILE)
    return file.read_bytes() if file.exists() else None


def run_to_end(device, environment):
    """Starts the program where it ends by itself: (status, standard output, standard error), the
    last two read from pipes."""
    program = device.start([device.program], environment,
                           stdout=subprocess.PIPE, stderr=subprocess.PIPE)
    output, errors = program.communicate(timeout=LIMIT)
    return program.program_status, output, errors
