"""device/device, with which people make and use a device."""

import subprocess

import pytest
from conftest import BUILD_DIR, TREE


@pytest.fixture
def command(tmp_path):
    def call(name, *args, status=0, build=BUILD_DIR):
        line = [TREE / "device/device", "--build", build, name, tmp_path / "device", *args]
        result = subprocess.run(line, capture_output=True, text=True, check=False)
        assert result.returncode == status, result.stderr
        return result.stdout
    return call


def test_a_device_is_made_once_and_used_by_its_directory(command):
    command("run", "true", status=2)
    command("new")
    command("new", status=2)
    assert command("registry", "LogLevel") == "LogLevel = 0\n"


def test_no_device_is_begun_where_nothing_is_built(command, tmp_path):
    command("new", build=tmp_path, status=2)
    assert not (tmp_path / "device").exists()


def test_a_program_runs_in_the_callers_environment_and_gives_its_status(command, monkeypatch):
    monkeypatch.setenv("LANG", "xx_YY")
    command("new")
    assert command("run", "sh", "-c", "echo $LANG; exit 3", status=3) == "xx_YY\n"
    assert "PRODUCT_VERSION" in command("run", "cat", "/etc/systeminfo")


def test_what_is_not_committed_is_marked_and_gone_after_a_restart(command):
    command("new")
    command("run", "regmux", "set", "root/vexa/agent/LogLevel", "2")
    assert "LogLevel = 2  (not committed)\n" in command("registry")
    command("restart")
    assert "LogLevel = 0\n" in command("registry")
    command("registry", "LogLevel", "1")
    command("restart")
    assert command("registry", "LogLevel") == "LogLevel = 1\n"


def test_the_journal_is_shown_and_forgotten(command):
    command("new")
    command("run", "env", "LD_LIBRARY_PATH=/lib", "regmux", "get", "root/none", status=1)
    assert command("journal") == "1  'get' 'root/none'  LD_LIBRARY_PATH=/lib\n"
    assert command("journal", "--clear") == ""
    assert command("journal") == ""
