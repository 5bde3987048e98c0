"""Measures the program against its yardsticks, side by side; script/bench runs it."""
import argparse
import contextlib
import datetime
import os
import pathlib
import platform
import re
import shutil
import subprocess
import sys
import tempfile
import time
from statistics import median

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path[:0] = [str(ROOT), str(ROOT / "tests" / "window")]
from device.simdevice import SimDevice, end_in_order  # noqa: E402

import processes  # noqa: E402
from figures import ratio_of_medians, table  # noqa: E402
from screen import Screen  # noqa: E402

HERE = pathlib.Path(__file__).resolve().parent
START_BOUND = SAVE_BOUND = 1.05
MEMORY_BOUND = REFRESH_BOUND = 1.10
GROUP_COUNTS = (1, 10, 100, 500)
GROUPS_LENGTHS = (100, 1000, 2000, 4046)  # bytes; the last is the longest that can be saved
# Programs for like jobs, in the form in which people meet them.
LIKES = {
    "lxappearance": ["lxappearance"],
    "lxrandr": ["lxrandr"],
    "pavucontrol, without a sound server": ["pavucontrol"],
    "yad form": ["yad", "--form", *(f"--field={name}" for name in (
        "Current Gateway", "Backup Gateway", "Pull Interval:CBE", "Log Level:CB",
        "Delay Scope:CBE"))],
    "zenity form": ["zenity", "--forms", "--text=Settings", *(f"--add-entry={name}" for name in (
        "Current Gateway", "Backup Gateway", "Pull Interval", "Log Level", "Delay Scope"))],
}
MIB = 1024 * 1024
REFRESH_WINDOWS = 4  # at a time, to have more refreshes to measure


class Bench:
    """A device, a display, and what is measured on them."""

    def __init__(self, build, pairs):
        processes.adopt_orphans()
        self.pairs = pairs
        self.device = SimDevice(build)
        self.screen = Screen()
        self.home = tempfile.TemporaryDirectory(prefix="korv-bench-")
        self.tools = build / "tests" / "bench"
        self.program = [self.device.program]
        self.bare_window = [str(self.tools / "bare_window"), str(HERE / "save_commands.sh")]
        self.bare_start = [str(HERE / "start_commands.sh"), *self.bare_window]

    def close(self):
        self.device.close()
        self.screen.close()
        self.home.cleanup()

    @contextlib.contextmanager
    def running(self, argv):
        """The command, started on an empty screen, its window drawn: the process and how long that
        took, in milliseconds."""
        self.device.clear_journal()
        self.screen.desktop.park_pointer()
        self.screen.forget()
        variables = {**self.screen.environment, "LC_ALL": "C.UTF-8", "HOME": self.home.name,
                     "NO_AT_BRIDGE": "1", "GSETTINGS_BACKEND": "memory"}
        process = self.device.start([str(self.tools / "stamped"), *argv], variables,
                                    stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        try:
            begin = int(process.stdout.readline())
            yield process, (self.screen.drawn(process.program_pid) - begin) / 1e6
        finally:
            process.kill()
            process.wait()
            process.stdout.close()

    def start(self, argv):
        """(milliseconds to the drawn window, its memory)"""
        with self.running(argv) as (process, taken):
            return taken, processes.memory(process.program_pid)

    def save(self, argv):
        """Milliseconds from OK to the drawn hint."""
        with self.running(argv) as (process, _):
            begin = self.screen.press_ok(process.program_pid)
            return (self.screen.drawn(process.program_pid) - begin) / 1e6

    def side_by_side(self, measure, program, baseline):
        """Pairs of figures, the two taking turns to be first."""
        pairs = []
        for number in range(self.pairs):
            if number % 2:
                second = measure(baseline)
                pairs.append((measure(program), second))
            else:
                pairs.append((measure(program), measure(baseline)))
        return pairs

    # --- one refresh ---

    def refreshes(self):
        """Pairs of processor times in milliseconds, of a refresh and of a bare get, and how often a
        window did anything between two refreshes."""
        measured = []
        with contextlib.ExitStack() as stack:
            windows = [stack.enter_context(self.running(self.program))[0]
                       for _ in range(min(REFRESH_WINDOWS, self.pairs))]
            getter = self.device.start([str(self.tools / "bare_get")], stdin=subprocess.PIPE,
                                       stdout=subprocess.PIPE, bufsize=0)
            stack.callback(getter.wait)
            stack.callback(getter.kill)
            watches = [RefreshWatch(window.program_pid) for window in windows]
            while len(measured) < self.pairs:
                time.sleep(RefreshWatch.STEP)
                for own, child in filter(None, [watch.look() for watch in watches]):
                    measured.append((own, child, bare_get(getter)))
        # Now that the windows are gone, their children can be waited for.
        pairs = [(own + processes.wait_for_orphan(child), bare) for own, child, bare in measured]
        return pairs, sum(watch.stirrings for watch in watches)


def bare_get(getter):
    getter.stdin.write(b"\n")
    return int(getter.stdout.readline()) / 1e3


class RefreshWatch:
    """Sees from outside when a window refreshes: it uses processor time, and one more child has
    ended, which the program leaves unwaited for."""

    STEP = 0.05
    SETTLED = 0.5  # seconds without a change: the refresh is over

    def __init__(self, pid):
        self.pid = pid
        self.stirrings = 0
        self._refreshes = 0
        self._children = processes.ended_children(pid)
        self._before = self._used = processes.processor_time(pid)
        self._changed = time.monotonic()

    def look(self):
        """The milliseconds that a refresh took the window itself, and its child, when one is over
        since the last look; otherwise None. The first one of a window does not count: it runs code that
        has not been loaded yet."""
        used = processes.processor_time(self.pid)
        now = time.monotonic()
        if used != self._used:
            self._used, self._changed = used, now
        if self._used == self._before or now - self._changed < self.SETTLED:
            return None
        return self._account()

    def _account(self):
        children = processes.ended_children(self.pid) - self._children
        taken = (self._used - self._before) / 1e6
        self._before = self._used
        self._children |= children
        if len(children) != 1:
            self.stirrings += 1
            return None
        self._refreshes += 1
        return (taken, children.pop()) if self._refreshes > 1 else None


# --- the report ---

class Report:
    """The Markdown, and whether a bound was missed."""

    def __init__(self):
        self.missed = []
        self._ratios = []
        self._parts = []

    def ratio(self, what, pairs, unit, bound):
        ratio = ratio_of_medians(pairs)
        program, baseline = (median(figures) for figures in zip(*pairs))
        verdict = "holds"
        if ratio.misses(bound):
            verdict = "MISSED"
            self.missed.append(what)
        elif ratio.value > bound:
            verdict = "open"
        self._ratios.append([what, f"{program:.2f} {unit}", f"{baseline:.2f} {unit}", ratio,
                             f"{bound:.2f}", verdict])
        print(f"{what}: {ratio}, bound {bound:.2f}: {verdict}", file=sys.stderr, flush=True)

    def part(self, text):
        self._parts.append(text)

    def markdown(self, conditions):
        heads = ["", "the program", "its yardstick", "ratio of the medians (95 %)", "bound", ""]
        return "\n\n".join([conditions, table(heads, self._ratios), *self._parts])


def machine():
    """The kind of machine, in a few words."""
    cpu = pathlib.Path("/proc/cpuinfo").read_text()
    model = re.search(r"^model name\s*: (.*)$", cpu, re.MULTILINE)
    kind = "virtual machine, " if re.search(r"^flags.* hypervisor", cpu, re.MULTILINE) else ""
    return (f"{kind}{os.cpu_count()} x {model[1] if model else platform.machine()}, "
            f"{platform.freedesktop_os_release()['PRETTY_NAME']}, Linux {platform.release()}")


def measure_starts(bench, report):
    pairs = bench.side_by_side(bench.start, bench.program, bench.bare_start)
    report.ratio("start to drawn window", [(a[0], b[0]) for a, b in pairs], "ms", START_BOUND)
    for what, size in (("memory, PSS", lambda figure: figure[1].pss / MIB),
                       ("memory, private", lambda figure: figure[1].private / MIB)):
        report.ratio(what, [(size(a), size(b)) for a, b in pairs], "MiB", MEMORY_BOUND)


def measure_saves(bench, report):
    pairs = bench.side_by_side(bench.save, bench.program, bench.bare_window)
    report.ratio("OK to drawn hint", pairs, "ms", SAVE_BOUND)


def measure_refreshes(bench, report):
    pairs, stirrings = bench.refreshes()
    report.ratio("one refresh, processor time", pairs, "ms", REFRESH_BOUND)
    report.part(f"Between {len(pairs)} refreshes the windows used the processor {stirrings} times.")
    if stirrings:
        report.missed.append("nothing between refreshes")


def measure_likes(bench, report):
    rows = []
    for name, argv in {"korv-agent-mgr": bench.program, **LIKES}.items():
        if not (argv == bench.program or shutil.which(argv[0])):
            rows.append([name, "not installed", "", ""])
            continue
        try:
            starts = [bench.start(argv) for _ in range(max(3, bench.pairs // 10))]
        except TimeoutError:
            rows.append([name, "shows no window here", "", ""])
            continue
        rows.append([name, f"{median(taken for taken, _ in starts):.0f} ms",
                     f"{median(size.pss for _, size in starts) / MIB:.1f} MiB",
                     f"{median(size.private for _, size in starts) / MIB:.1f} MiB"])
    report.part(table(["beside others", "start", "PSS", "private"], rows))


def measure_growth(bench, report):
    times = max(3, bench.pairs // 10)
    rows = []
    for count in GROUP_COUNTS:
        bench.device.registry.set("PreAssignGroups", groups_text(count))
        taken = median(bench.start(bench.program)[0] for _ in range(times))
        rows.append([count, f"{taken:.0f} ms"])
    report.part(table(["groups stored", "start"], rows))
    rows = []
    for length in GROUPS_LENGTHS:
        bench.device.registry.set("PreAssignGroups", groups_text(length=length))
        taken = median(bench.save(bench.program) for _ in range(times))
        rows.append([length, f"{taken:.0f} ms"])
    report.part(table(["bytes of groups text", "OK"], rows))
    lookups = subprocess.run([bench.tools / "lookup_time"], capture_output=True, text=True,
                             check=True).stdout
    rows = [[texts, f"{nanoseconds} ns"] for texts, nanoseconds
            in map(str.split, lookups.splitlines())]
    report.part(table(["texts in the table", "one look-up"], rows))


def groups_text(count=None, length=None):
    """So many groups, or as many as fill the length, to the byte."""
    if count is not None:
        return ";".join(f'G{number}="room {number}"' for number in range(count))
    text = groups_text(count=length // 12)[:length]
    text = text[:text.rfind(";")]
    return text[:-1] + "x" * (length - len(text)) + '"'


def options():
    parser = argparse.ArgumentParser(prog="script/bench", description=__doc__.splitlines()[0])
    parser.add_argument("--quick", action="store_true", help="10 pairs instead of 200")
    parser.add_argument("--pairs", type=int, help="so many pairs")
    parser.add_argument("--build", type=pathlib.Path, default=ROOT / "build" / "release",
                        help="the build directory to take the program from (build/release)")
    return parser.parse_args()


def main():
    chosen = options()
    end_in_order()
    pairs = chosen.pairs or (10 if chosen.quick else 200)
    bench = Bench(chosen.build.resolve(), pairs)
    report = Report()
    load = os.getloadavg()[0]
    try:
        for measure in (measure_starts, measure_saves, measure_refreshes, measure_likes,
                        measure_growth):
            measure(bench, report)
    finally:
        bench.close()
    print(report.markdown(
        f"Measured {datetime.date.today()}: {machine()}; {pairs} pairs, alternating; "
        f"load average {load:.1f} before, {os.getloadavg()[0]:.1f} after."))
    if report.missed:
        sys.exit(f"Missed: {', '.join(report.missed)}")


if __name__ == "__main__":
    main()
