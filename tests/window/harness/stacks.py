"""The names in the stack traces that sanitizers print. A sanitizer takes longer to find them than a
program to run, even for the leaks that it says nothing of: they are only looked up for a failure."""
import re
import subprocess

# What tells the program's sanitizers to leave them out.
WITHOUT_NAMES = {"ASAN_OPTIONS": "symbolize=0"}
FRAME = re.compile(r"\((/[^()+]+)\+(0x[0-9a-f]+)\)")


def with_names(text):
    """The text with function, file and line after each "(/file+0xoffset)"."""
    def named(frame):
        found = subprocess.run(["addr2line", "--pretty-print", "--functions", "--inlines",
                                "--demangle", f"--exe={frame[1]}", frame[2]],
                               capture_output=True, text=True, check=False)
        return f"{frame[0]} {found.stdout.strip()}"
    return FRAME.sub(named, text)
