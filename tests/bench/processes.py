"""What the system tells about a process while it runs: its memory and its processor time."""
import ctypes
import dataclasses
import os
import pathlib
import re

PROC = pathlib.Path("/proc")
PR_SET_CHILD_SUBREAPER = 36


@dataclasses.dataclass(frozen=True)
class Memory:
    """In bytes. `pss` counts what is shared in shares, `private` only what is the process's own."""

    pss: int
    private: int


def memory(pid):
    text = (PROC / str(pid) / "smaps_rollup").read_text()
    sizes = {name: int(size) * 1024 for name, size in re.findall(r"^(\w+): +(\d+) kB", text, re.M)}
    return Memory(sizes["Pss"], sizes["Private_Clean"] + sizes["Private_Dirty"])


def processor_time(pid):
    """Nanoseconds that the process has run, all threads, children not included."""
    return sum(int((task / "schedstat").read_text().split()[0])
               for task in (PROC / str(pid) / "task").iterdir())


def ended_children(pid):
    """The children that have ended and that nobody has waited for."""
    return {int(directory.name) for directory in PROC.iterdir() if directory.name.isdigit()
            and _state_and_parent(directory) == ("Z", str(pid))}


def adopt_orphans():
    """Children that an ended process has left become this one's."""
    if ctypes.CDLL(None, use_errno=True).prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0) != 0:
        raise OSError(ctypes.get_errno(), "cannot adopt orphans")


def wait_for_orphan(pid):
    """Milliseconds that the adopted child, which has ended, and its own children have run."""
    usage = os.wait4(pid, 0)[2]
    return (usage.ru_utime + usage.ru_stime) * 1000


def is_asleep(pid):
    """Whether the process waits for something other than its turn on a processor."""
    state = _state_and_parent(PROC / str(pid))
    return state is not None and state[0] in "SD"


def _state_and_parent(directory):
    """("S", "1") for one that sleeps; None: it is gone."""
    try:
        return tuple((directory / "stat").read_text().rpartition(")")[2].split()[:2])
    except (FileNotFoundError, ProcessLookupError):
        return None
