"""Helper processes, which are servers and window managers, and whether the program is idle."""
import os
import pathlib
import platform
import subprocess

# The numbers of poll and ppoll; the younger architectures all have the same ones.
POLL = {"x86_64": ("7", "271")}.get(platform.machine(), ("73",))


def start_helper(argv, env, log, **options):
    """Starts a process that also ends when this one is killed; its output goes to the file log."""
    with open(log, "ab") as output:
        return subprocess.Popen(["setpriv", "--pdeathsig", "TERM", *argv], env=env, stdout=output,
                                stderr=output, stdin=subprocess.DEVNULL, **options)


def end_helper(process):
    process.terminate()
    try:
        process.wait(10)
    except subprocess.TimeoutExpired:
        process.kill()
        process.wait()


def read_announced(argv, option, env, log, **options):
    """Starts a helper that announces one line on a descriptor; returns the process and the line."""
    reader, writer = os.pipe()
    process = start_helper([*argv, *option(writer)], env, log, pass_fds=[writer], **options)
    os.close(writer)
    with open(reader, encoding="ascii") as announced:
        line = announced.readline().strip()
    if not line:
        end_helper(process)
        raise RuntimeError(f"{argv[0]} did not start:\n{pathlib.Path(log).read_text()}")
    return process, line


def is_idle(pid):
    """Whether the program's main loop sleeps; a wait for the answer to a request of its own polls one
    file. A program that has ended is idle; one that is just ending only root can look into."""
    try:
        call = pathlib.Path(f"/proc/{pid}/syscall").read_text().split()
    except (FileNotFoundError, ProcessLookupError):
        return True
    except PermissionError:
        return False
    return call[0] in POLL and int(call[2], 16) > 1
