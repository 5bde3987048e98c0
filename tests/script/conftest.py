"""A copy of the tree in which the scripts run, with stand-ins for the commands that they call."""
import os
import pathlib
import shutil
import subprocess

import pytest

ROOT = pathlib.Path(__file__).resolve().parents[2]
SCRIPTS = sorted(path.name for path in (ROOT / "script").iterdir() if os.access(path, os.X_OK))
# What would install, build or take its time. Each notes its call; a few do what a script waits for.
STAND_INS = {name: "" for name in ("apt-get", "apt-cache", "sudo", "cmake", "ctest", "gcovr", "lintian",
                                   "clang-format", "clang-tidy", "cppcheck", "shellcheck",
                                   "mmdebstrap")} | {
    "dpkg-query": 'shift 3; for package; do echo "installed $package"; done',
    "dpkg-buildpackage": "for type in deb dsc; do echo new >../korv-agent-mgr_1.0.0_amd64.$type; done"}


class Tree:
    """The copy is `path`, in a directory with things of other people."""

    def __init__(self, directory):
        self.directory = directory
        self.path = directory / "a checkout"
        self._commands = directory / "commands"
        self._calls = directory / "calls"
        for part in ("script", "device", "tests/bench", "tests/window/harness"):
            shutil.copytree(ROOT / part, self.path / part, ignore=shutil.ignore_patterns("__pycache__"))
        subprocess.run(["git", "init", "--quiet", "--template=", self.path], check=True)
        self._commands.mkdir()
        for name, action in STAND_INS.items():
            self.stand_in(name, action)
        self._calls.touch()
        for name in ("source/file", "korv-agent-mgr/file", "korv-agent-mgr-old", "build/file",
                     "korv-agent-mgr_0.9.0_amd64.deb"):
            other = directory / name
            other.parent.mkdir(exist_ok=True)
            other.write_text("somebody's")

    def stand_in(self, name, action):
        """Makes the command of that name do this instead, besides noting its call."""
        command = self._commands / name
        command.write_text(f"#!/bin/sh\nprintf '%s\\n' \"{name} $*\" >>'{self._calls}'\n{action}\n")
        command.chmod(0o755)

    def run(self, script, *arguments, directory=None, **environment):
        """Runs a script with nothing of the machine to be written but the copy's surroundings."""
        variables = {**os.environ, "PATH": f"{self._commands}:/usr/sbin:/usr/bin:/sbin:/bin",
                     **environment}
        variables = {name: value for name, value in variables.items() if value is not None}
        sandbox = ["bwrap", "--die-with-parent", "--ro-bind", "/", "/", "--dev", "/dev", "--proc",
                   "/proc", "--tmpfs", "/tmp", "--bind", self.directory, self.directory,
                   "--chdir", directory or self.directory, "--"]
        return subprocess.run([*sandbox, self.path / "script" / script, *arguments], env=variables,
                              stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=120,
                              check=False)

    def calls(self):
        return self._calls.read_text().splitlines()

    def files(self):
        """Every file around and in the copy, by its content; what is built and noted left out."""
        found = {}
        for directory, inner, names in os.walk(self.directory):
            if directory == str(self.path):
                inner[:] = set(inner) - {"build", ".git"}
            for path in map(pathlib.Path(directory).joinpath, names):
                if path != self._calls:
                    found[path] = path.read_bytes()
        return found


@pytest.fixture
def tree(tmp_path):
    return Tree(tmp_path)


@pytest.fixture(scope="module")
def idle_tree(tmp_path_factory):
    """One for all the tests in which a script does nothing."""
    return Tree(tmp_path_factory.mktemp("idle"))
