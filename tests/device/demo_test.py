"""script/demo, which shows the program to people, on its tour."""

import os
import re
import subprocess
import sys

import pytest
from conftest import BUILD_DIR, LIMIT, TREE
from PIL import Image


def window(picture):
    """The picture without the task bar, which has a clock."""
    with Image.open(picture) as image:
        return image.crop((0, 0, image.width, image.height - 60)).tobytes()


@pytest.fixture
def demo(tmp_path):
    """demo(...): runs it, from a directory with a blank in its name; all its other directories have one."""
    (tmp_path / "a b").mkdir()

    def run(*options, status=0, **environment):
        variables = {name: value for name, value in {**os.environ, **environment}.items()
                     if value is not None}
        result = subprocess.run(
            [TREE / "script/demo", "--no-build", "--build", BUILD_DIR, *options],
            cwd=tmp_path / "a b", env=variables, capture_output=True, text=True, timeout=10 * LIMIT,
            check=False)
        assert result.returncode == status, result.stdout + result.stderr
        return result.stdout + result.stderr
    return run


def test_the_tour_shows_every_step_and_what_changed(demo, tmp_path):
    said = demo("--tour", "--screenshots", "the pictures")
    pictures = sorted((tmp_path / "a b/the pictures").iterdir())
    assert [picture.name for picture in pictures] == [
        "1-general.png", "2-groups.png", "3-changed.png", "4-hint.png"]
    assert said == "".join([
        "A short tour:\n", *(f"  the pictures/{picture.name}\n" for picture in pictures),
        "Changed in the registry:\n", "  CurrentGateway: 192.168.10.5 -> 10.20.30.40\n"])
    assert len({window(picture) for picture in pictures}) == 4


def test_the_tour_needs_no_package_that_only_tests_have():
    """With the packages that script/setup installs for the demo."""
    hidden = "import sys; sys.modules.update(dict.fromkeys(('gi', 'pytest', '_pytest')))"
    subprocess.run([sys.executable, "-c", f"{hidden}; sys.path.insert(0, 'device'); import tour"],
                   cwd=TREE, check=True)


def test_without_a_display_the_tour_is_taken_in_any_surroundings(demo, tmp_path):
    before = set(tmp_path.rglob("*"))
    said = demo("--screenshots", tmp_path / "pictures", DISPLAY="a b", HOME=None,
                TMPDIR=str(tmp_path / "a b"))
    assert "10.20.30.40" in said
    assert {path.parent for path in set(tmp_path.rglob("*")) - before} == {tmp_path,
                                                                        tmp_path / "pictures"}


def test_a_locale_need_not_be_installed(demo, tmp_path):
    seen = set()
    for name in ("C.UTF-8", "de_DE.utf8", "ja_JP.EUC-JP", "fr_FR"):
        demo("--tour", "--screenshots", name, "--locale", name)
        seen.add(window(tmp_path / "a b" / name / "1-general.png"))
    assert len(seen) == 4


def test_a_device_that_is_kept_has_the_change(demo):
    assert "-> 10.20.30.40" in demo("--tour", "--screenshots", "x", "--device", "my device")
    assert "Nothing changed" in demo("--tour", "--screenshots", "x", "--device", "my device")


@pytest.mark.parametrize("options", [
    ["--device", ""], ["--device", ".."], ["--device", "/"], ["--screenshots", ""],
    ["--screenshots", "/etc/passwd"], ["--locale", ""], ["--locale", "../x"], ["--locale", "-x"],
    ["--build", ".."], ["x"], [""]])
def test_what_makes_no_sense_is_refused(demo, tmp_path, options):
    before = set(tmp_path.rglob("*"))
    assert re.match("script/demo: error: |demo: ", demo("--tour", *options, status=2).splitlines()[-1])
    assert set(tmp_path.rglob("*")) == before


def test_a_locale_that_nobody_knows_is_refused(demo):
    assert "no locale 'xx_YY.UTF-8'" in demo("--tour", "--locale", "xx_YY.UTF-8", status=1)
