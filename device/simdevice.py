"""A simulated thin client: a sandbox in which a program finds the platform that it was made for.

    with SimDevice("build/release") as device:
        program = device.start([device.program], env={"DISPLAY": ":7"})
        ...
        program.terminate()
        print(program.wait(), device.journal(), device.registry.committed())

The program sees this machine, read-only, and beside its files those of the device: below /etc,
/usr/sbin, /usr/share/pixmaps and /run (which is also /var/run), and commands in the device's own
directory, the first on the search path. /tmp, XDG_RUNTIME_DIR, the build directory, /dev and the
network are the machine's, so X server, session bus and accessibility bus stay within reach. So are
its process ids. Everything that the device consists of lies in one directory, `state`; nothing else
on the machine changes. Root and ordinary users alike can run it; it needs bubblewrap.

Programs end with the thread that started them: start them from one that stays.
"""

import contextlib
import dataclasses
import fcntl
import json
import os
import shutil
import signal
import sqlite3
import subprocess
import tempfile
import time
from pathlib import Path

_HERE = Path(__file__).resolve().parent
_BRANCH = "root/vexa/agent/"
_TABLES = "/etc/vexaagent/i18n/configui"

# Where the device has the machine's whole tree, for links to its files. Short, because a file
# system keeps a long link in a block of its own, and a device has hundreds.
_MACHINE = "/run/.machine"

# How the directory of a device begins that goes with its process.
_OWN = "korv-device."

# Directories of the machine that hold files of the device among others, and what the machine may
# have there itself that must not be taken for the device's.
_SHARED = ("/etc", "/usr/sbin", "/usr/share/pixmaps", "/run")
_HIDDEN = {"/etc/systeminfo", "/etc/imageid", "/etc/vexaagent", "/etc/regmux", "/usr/sbin/vexaagent",
           "/usr/share/pixmaps/agent_48.png", "/run/korv-agent-mgr.pid",
           "/run/user"}  # the last is bound as it is

_SYSTEMINFO = """\
PRODUCT_NAME="Pellion"
PRODUCT_CONFIG="ostrel"
PRODUCT_VERSION="6.3.1"
"""
_VALUES = {
    "CurrentGateway": b"192.168.10.5",
    "BackupGateway": b"192.168.10.6",
    "Interval_min": b"1440",
    "LogLevel": b"0",
    "DelayScope_min": b"10",
    "GetGroupsFromDHCP": b"0",
    "PreAssignGroups": b'MG="floor2";P1="lab";SALES="north"',
}


@dataclasses.dataclass(frozen=True)
class Call:
    """One call of the registry client."""

    args: list[str]              # without the client's name; bytes that are not UTF-8 are escaped
    status: int | None           # None: it has not ended, or was killed
    ld_library_path: str | None  # None: not in its environment
    caller: int                  # the process that ran it, shells left out


@dataclasses.dataclass(frozen=True)
class AgentRun:
    """One run of the device's own agent."""

    args: str
    ld_library_path: str | None


class Program(subprocess.Popen):
    """A program on the device. `pid` and `returncode` are those of the sandbox around it."""

    program_pid: int

    @property
    def program_status(self):
        """How the program ended, as Popen says it: its status, or minus the signal that killed it.
        None while it runs. (The sandbox adds 128 to a signal, so 129 to 192 count as one.)"""
        status = self.poll()
        return 128 - status if status is not None and 128 < status <= 192 else status

    def send_signal(self, sig):
        """Sends the signal to the program itself; terminate() and kill() do so through this."""
        if self.poll() is None:
            with contextlib.suppress(ProcessLookupError):
                os.kill(self.program_pid, sig)


class Registry:
    """The device's registry from outside. A name without a slash is one of the agent's settings;
    values are bytes, a str is encoded as a file name is."""

    def __init__(self, database):
        self._database = database

    def get(self, name):
        """What the client would show now; None: no such key."""
        return self.current().get(name)

    def set(self, name, value):
        """Creates or changes a value and commits it, and nothing else."""
        for table in ("current", "committed"):
            self._database.execute(f"INSERT OR REPLACE INTO {table} VALUES (?, ?)",
                                   (self._key(name), os.fsencode(value)))

    def delete(self, name):
        """Removes a value and commits that."""
        for table in ("current", "committed"):
            self._database.execute(f"DELETE FROM {table} WHERE key = ?", (self._key(name),))

    def current(self):
        """All that the client would show now."""
        return self._values("current")

    def committed(self):
        """All that the device starts with."""
        return self._values("committed")

    def _values(self, table):
        rows = self._database.execute(f"SELECT key, value FROM {table} ORDER BY key")
        return {os.fsdecode(key).removeprefix(_BRANCH): value for key, value in rows}

    @staticmethod
    def _key(name):
        return os.fsencode(name if "/" in name else _BRANCH + name)


class Faults:
    """How the registry client is to behave other than it should. Each holds from its call until
    clear(). All take the same choice of the calls that they are for: `verbs` (a name or several;
    none: all), `key`, and `nth`: which of those calls, counted from now on (none: each).

    Anything else is a script written over the client: device.write(device.bin / "regmux", ...),
    which reaches the client itself as device.client.
    """

    def __init__(self, device):
        self._device = device
        self._database = device.database

    def clear(self):
        """The client behaves again, whatever was changed about it."""
        self._database.execute("DELETE FROM faults")
        self._device.install_client()

    def client_missing(self):
        """There is no client on the search path."""
        self._device.remove(self._device.bin / "regmux")

    def fail(self, status=1, **calls):
        """The call does nothing but end with a line on standard error and this status."""
        self._add("fail", status, **calls)

    def print(self, output, **calls):
        """The call does nothing but print these bytes."""
        self._add("print", output, **calls)

    def die(self, sig=signal.SIGKILL, **calls):
        """The client dies by this signal before it does anything."""
        self._add("die", int(sig), **calls)

    def delay(self, seconds, **calls):
        """The call takes so much longer."""
        self._add("delay", round(seconds * 1000), **calls)

    def silent(self, **calls):
        """Nothing is said on standard error: a get of a missing key prints nothing at all."""
        self._add("silent", "", **calls)

    def registry_full(self, file_size=0, **calls):
        """The system refuses every write that would make a file of the registry, its rollback
        journal included, longer than so many bytes."""
        self._add("file size limit", file_size, **calls)

    def signal_program(self, sig, **calls):
        """The program that called gets this signal when the call has ended."""
        self._add("signal caller", int(sig), **calls)

    def _add(self, behaviour, argument, verbs=(), key=None, nth=None):
        verbs = [verbs] if isinstance(verbs, str) else verbs
        verbs = verbs or ("get", "create", "set", "delete", "commit", "apply")
        argument = argument if isinstance(argument, bytes) else str(argument).encode()
        self._database.execute(
            "INSERT INTO faults (verbs, key, nth, behaviour, argument) VALUES (?, ?, ?, ?, ?)",
            (f",{','.join(verbs)},", key and Registry._key(key), nth, behaviour, argument))


class SimDevice:
    """A device: platform code 9, the agent, its icon, seven values, no string tables.

    A state directory that is given is made, or taken up again, and stays; one of its own goes with
    close(), or where it never came to that, with the next device.
    """

    def __init__(self, build_dir, state=None):
        self.build_dir = Path(build_dir).resolve()
        self.program = str(self.build_dir / "korv-agent-mgr")
        self.client = self.build_dir / "device/regmux"
        self._lock = None
        if state is None:
            state, self._lock = _own_directory()
        self.state = Path(state).resolve()
        self.bin = self.state / "bin"  # the device's own directory on the search path
        self._files = self.state / "files"
        self._shared = [_existing(directory) for directory in _SHARED]
        self._programs = []
        self.database = None
        try:
            self._set_up()
        except BaseException:
            self.close()
            raise

    def _set_up(self):
        is_new = not self._files.exists()
        if is_new:
            self._make_directories()
        self.database = sqlite3.connect(self.host_path("/etc/regmux/registry.db"),
                                        isolation_level=None, timeout=30, check_same_thread=False)
        self.database.execute("PRAGMA synchronous = OFF")
        self.registry = Registry(self.database)
        self.faults = Faults(self)
        if is_new:
            self._install()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        """Ends what start() started and removes the device's own state directory."""
        self._stop_programs()
        if self._lock is not None:
            if self.database:
                # A client that outlived its program waits for this, and then finds no device.
                self.database.execute("BEGIN EXCLUSIVE")
            shutil.rmtree(self.state)
            os.close(self._lock)
            self._lock = None
        if self.database:
            self.database.close()

    # ---- Files ----

    def host_path(self, path):
        """Where a file of the device lies on the machine."""
        path = os.path.normpath(path)
        if path.startswith("/var/run/"):
            path = path.removeprefix("/var")
        if Path(path).is_relative_to(self.bin):
            return Path(path)
        host = Path(f"{self._files}{path}")
        if (not any(Path(path).is_relative_to(directory) for directory in self._shared)
                or not host.parent.resolve().is_relative_to(self._files)):
            raise ValueError(f"{path} is the machine's, not the device's")
        return host

    def write(self, path, content, mode=0o644):
        """Puts a file on the device, directories above it included, in place of any other."""
        host = self.host_path(path)
        host.parent.mkdir(parents=True, exist_ok=True)
        new = self.state / "new"
        new.write_bytes(os.fsencode(content))
        new.chmod(mode)
        new.replace(host)

    def write_table(self, locale, content):
        """Puts a string table on the device; `locale` is its name without the ending."""
        self.write(f"{_TABLES}/{locale}.prop", content)

    def install_languages(self):
        """Puts the string tables of the shipped languages on the device."""
        for table in (self.build_dir / "translations/configui").iterdir():
            self.write_table(table.stem, table.read_bytes())

    def mkdir(self, path):
        self.host_path(path).mkdir(parents=True, exist_ok=True)

    def remove(self, path):
        """Removes a file or a whole directory; that there is none is fine."""
        host = self.host_path(path)
        if host.is_dir() and not host.is_symlink():
            shutil.rmtree(host)
        else:
            host.unlink(missing_ok=True)

    # ---- What happened ----

    def journal(self):
        """Every call of the registry client, in order."""
        rows = self.database.execute(
            "SELECT args, status, ld_library_path, caller FROM calls ORDER BY id")
        return [Call([os.fsdecode(arg) for arg in args.split(b"\0")[:-1]], status,
                     None if path is None else os.fsdecode(path), caller)
                for args, status, path, caller in rows]

    def clear_journal(self):
        self.database.execute("DELETE FROM calls")

    def agent_runs(self):
        """Every run of the device's own agent (not of one written in its place), in order. What it
        prints as its version is the file /etc/vexaagent/version."""
        runs = self.host_path("/etc/vexaagent/runs")
        lines = os.fsdecode(runs.read_bytes()).split("\n") if runs.exists() else []
        return [AgentRun(args, path[1:] if path else None)
                for args, path in zip(lines[::2], lines[1::2])]

    # ---- Running ----

    def command(self, argv, env=None):
        """The command line that runs a program on the device. `env` is its whole environment, but
        for the device's directory on PATH and the working directory, which is /."""
        env = dict(env or {})
        env["PATH"] = f"{self.bin}:{env.get('PATH', '/usr/bin:/bin')}"
        writable = {"/tmp", tempfile.gettempdir(), env.get("XDG_RUNTIME_DIR") or "/tmp"}
        line = ["bwrap", "--die-with-parent", "--ro-bind", "/", "/", "--dev-bind", "/dev", "/dev",
                "--bind", "/proc", "/proc"]
        for directory in self._shared:
            line += ["--bind", f"{self._files}{directory}", directory]
        line += ["--bind-try", "/run/user", "/run/user"]
        for directory in sorted(writable) + [str(self.build_dir), str(self.state)]:
            line += ["--bind-try", directory, directory]
        line += ["--ro-bind", "/", _MACHINE, "--chdir", "/", "--clearenv"]
        for name, value in env.items():
            line += ["--setenv", name, value]
        return line + ["--", *map(os.fsdecode, argv)]

    def start(self, argv, env=None, **popen):
        """Starts a program on the device; the other arguments are Popen's."""
        line = self.command(argv, env)
        read_end, write_end = os.pipe()
        popen["pass_fds"] = (write_end, *popen.get("pass_fds", ()))
        try:
            program = Program([line[0], "--info-fd", str(write_end), *line[1:]],
                              **{"stdin": subprocess.DEVNULL, "process_group": 0, **popen})
        finally:
            os.close(write_end)
            with open(read_end, "rb") as info:
                text = info.read()
        if not text:
            raise RuntimeError(f"no sandbox: bwrap ended with status {program.wait()}")
        program.program_pid = json.loads(text)["child-pid"]
        self._programs.append(program)
        _wait_for_exec(program)
        return program

    def restart(self):
        """The device starts again: what start() started has ended, /run is empty, and changes of
        the registry that were not committed are gone."""
        self._stop_programs()
        shutil.rmtree(f"{self._files}/run")
        self._link_machine("/run")
        self.database.executescript(
            "BEGIN; DELETE FROM current; INSERT INTO current SELECT * FROM committed; COMMIT")

    def _stop_programs(self):
        for program in self._programs:
            if program.poll() is None:
                os.killpg(program.pid, signal.SIGKILL)  # with the commands that it runs
            program.wait()
        self._programs.clear()

    # ---- Making one ----

    def _make_directories(self):
        self.bin.mkdir(parents=True)
        for directory in self._shared:
            self._link_machine(directory)
        for directory in ("/etc/regmux", _TABLES, "/usr/share/pixmaps"):
            self.mkdir(directory)

    def _link_machine(self, directory):
        """Makes the device's copy of a directory: links to what the machine has there."""
        copy = Path(f"{self._files}{directory}")
        copy.mkdir(parents=True)
        for entry in os.scandir(directory):
            if entry.path not in _HIDDEN:
                os.symlink(f"{_MACHINE}{entry.path}", f"{copy}/{entry.name}")

    def _install(self):
        self.database.executescript((_HERE / "schema.sql").read_text())
        for name, value in _VALUES.items():
            self.registry.set(name, value)
        self.install_client()
        self.write("/etc/systeminfo", _SYSTEMINFO)
        self.write("/etc/vexaagent/version", "Agent Version : 5.2.1\n")
        self.write("/usr/sbin/vexaagent", (_HERE / "vexaagent").read_bytes(), 0o755)
        self.write("/usr/share/pixmaps/agent_48.png",
                   (self.build_dir / "packaging/agent_48.png").read_bytes())

    def install_client(self):
        """Puts the registry client on the search path, in place of any other."""
        self.remove(self.bin / "regmux")
        (self.bin / "regmux").symlink_to(self.client)


def end_in_order():
    """From here on Ctrl-C, a terminal that is closed and SIGTERM end this process as sys.exit() does,
    so that what it has made is put away."""
    ways = (signal.SIGINT, signal.SIGHUP, signal.SIGTERM)

    def end(number, _):
        for way in ways:
            signal.signal(way, signal.SIG_IGN)
        raise SystemExit(128 + number)

    for way in ways:
        signal.signal(way, end)


def is_usable(state):
    """Whether a directory is a device's state, or can become one: it is not there yet, or empty."""
    return (state / "files/etc/regmux").is_dir() or not state.exists() or not any(state.iterdir())


def _own_directory():
    """A new directory for a device, and the lock that tells that its process lives. Those whose
    processes have ended in another way than through close() are removed."""
    parent = _memory() or tempfile.gettempdir()
    for left in Path(parent).glob(f"{_OWN}*"):
        lock = _lock(left)
        if lock is not None:
            shutil.rmtree(left, ignore_errors=True)
            os.close(lock)
    while True:
        made = tempfile.mkdtemp(prefix=_OWN, dir=parent)
        lock = _lock(made)
        if lock is not None:  # else another process took it for one that was left
            return made, lock


def _lock(directory):
    """Locks a directory of this user; the lock's descriptor, None when the directory has another's
    lock or is gone. The lock ends with the process."""
    try:
        lock = os.open(directory, os.O_RDONLY | os.O_DIRECTORY | os.O_NOFOLLOW)
    except OSError:
        return None
    with contextlib.suppress(OSError):
        fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
        status = os.fstat(lock)
        if status.st_uid == os.geteuid() and os.path.samestat(status, os.stat(directory)):
            return lock
    os.close(lock)
    return None


def _memory():
    """A directory in memory that can hold programs, where making a device's hundreds of links takes
    a tenth of the time; None: there is none."""
    with contextlib.suppress(FileNotFoundError):
        if os.access("/dev/shm", os.W_OK) and not os.statvfs("/dev/shm").f_flag & os.ST_NOEXEC:
            return "/dev/shm"
    return None


def _wait_for_exec(program):
    """Waits until the sandbox's process has become the program: not before then is it certain to
    end with the sandbox."""
    comm = Path(f"/proc/{program.program_pid}/comm")
    while program.poll() is None:
        with contextlib.suppress(FileNotFoundError, ProcessLookupError):
            if comm.read_text() != "bwrap\n":
                return
        time.sleep(0.001)


def _existing(directory):
    """The directory, or the first above it that the machine has: only there can it be shown."""
    while not os.path.isdir(directory):
        directory = os.path.dirname(directory)
    return directory
