"""What the scripts do when they are called in ways that they did not expect: no harm."""
import pytest
from conftest import SCRIPTS

ODD = ["", "a b", "-x", "..", "/", "$(touch made)"]
PACKAGE = "korv-agent-mgr_1.0.0_amd64.deb"


@pytest.mark.parametrize("script", SCRIPTS)
def test_help_answers_at_once_and_does_nothing(idle_tree, script):
    for option in ("--help", "-h"):
        result = idle_tree.run(script, option)
        assert (result.returncode, result.stderr) == (0, ""), option
        assert f"usage: script/{script}" in result.stdout
        assert "set -" not in result.stdout and "source" not in result.stdout.split("\n")[-2]
    assert idle_tree.calls() == []
    assert not (idle_tree.path / "build").exists()


@pytest.mark.parametrize("script", SCRIPTS)
def test_an_unknown_option_is_refused_before_any_work(idle_tree, script):
    if script == "test":
        pytest.skip("its options are those of ctest")
    result = idle_tree.run(script, "--bogus")
    assert result.returncode == 2
    assert result.stderr.startswith(f"{script}: ") and "--bogus" in result.stderr
    assert idle_tree.calls() == []


@pytest.mark.parametrize("line", [["demo", "--tour", "--no-build"], ["bench", "--quick", "--no-build"],
                                  ["soak", "1", "1", "1", "1"], ["soak", "--busy", "1", "1"]])
def test_arguments_in_the_wrong_place_are_refused_before_any_work(idle_tree, line):
    result = idle_tree.run(*line)
    assert result.returncode == 2
    assert result.stderr.startswith(f"{line[0]}: ")
    assert idle_tree.calls() == []


@pytest.mark.parametrize("script", SCRIPTS)
def test_an_odd_argument_costs_nobody_a_file(tree, script):
    before = tree.files()
    for argument in ODD:
        tree.run(script, argument)
        after = tree.files()
        assert {path: after.get(path) for path in before} == before, argument
        assert all(path.name.startswith("korv-agent-mgr_1.0.0_")
                   for path in after.keys() - before.keys()), argument


@pytest.mark.parametrize("variables", [["TMPDIR"], ["HOME", "DISPLAY", "CDPATH"]])
def test_an_odd_environment_costs_nobody_a_file(tree, variables):
    before = tree.files()
    for value in (None, *ODD):
        for script, status in (("demo", 2), ("package", 0)):
            result = tree.run(script, **dict.fromkeys(variables, value))
            # It must not end early over one of several, which would hide what the others do.
            assert result.returncode == status or len(variables) == 1, result.stderr
        assert tree.files() == before, value


@pytest.mark.parametrize("value", [None, "", "a b", "-x", "..", "."])
def test_packages_are_built_in_any_temporary_directory_and_nothing_is_left_there(tree, value):
    for name in ("a b", "-x"):
        (tree.directory / name).mkdir()
    before = tree.files()
    result = tree.run("package", TMPDIR=value)
    assert result.returncode == 0, result.stderr
    assert (tree.path / "build/package" / PACKAGE).read_text() == "new\n"
    assert tree.files() == before
    assert not list(tree.directory.glob("*/korv-package*")) + list(tree.directory.glob("korv-package*"))


@pytest.mark.parametrize("directory, lands_in", [
    (None, "a checkout/build/package"), ("..", ""), (".", "a checkout"), ("a b", "a checkout/a b"),
    ("./-x", "a checkout/-x"), ("new/one", "a checkout/new/one")])
def test_only_results_of_the_same_version_are_replaced(tree, directory, lands_in):
    target = tree.directory / lands_in
    target.mkdir(parents=True, exist_ok=True)
    (target / PACKAGE).write_text("old")
    (target / "source").mkdir(exist_ok=True)
    (target / "korv-agent-mgr_1.0.0_notes.txt").write_text("somebody's")
    before = tree.files()
    result = tree.run("package", *([] if directory is None else [directory]), directory=tree.path)
    assert result.returncode == 0, result.stderr
    assert (target / PACKAGE).read_text() == "new\n"
    after = tree.files()
    assert {path: after.get(path) for path in before if path != target / PACKAGE} == {
        path: content for path, content in before.items() if path != target / PACKAGE}
    assert after.keys() - before.keys() <= {target / PACKAGE, (target / PACKAGE).with_suffix(".dsc")}


def test_no_package_goes_where_no_directory_was_named(idle_tree):
    for arguments in ([""], ["one", "two"]):
        assert idle_tree.run("package", *arguments).returncode == 2
    assert idle_tree.calls() == []


def test_lintian_looks_at_every_package_unless_told_otherwise(tree):
    def looked():
        return len([call for call in tree.calls() if call.startswith("lintian ")])

    assert tree.run("package").returncode == 0 and looked() == 1
    assert tree.run("package", "--no-lintian").returncode == 0 and looked() == 1


def test_what_all_builds_decide_alike_is_left_out_only_where_no_tests_are_chosen(tree):
    left_out = "--label-exclude ^repeats$"
    tree.run("test")
    assert [call for call in tree.calls() if call.startswith("ctest ") and call.endswith(left_out)]
    before = len(tree.calls())
    tree.run("test", "-R", ".")
    called = [call for call in tree.calls()[before:] if call.startswith("ctest ")]
    assert called and not [call for call in called if left_out in call]


@pytest.mark.parametrize("purposes", [[], [""], ["all"], ["test", "tests"], ["program"]])
def test_nothing_is_installed_for_what_is_no_purpose(tree, purposes):
    result = tree.run("setup", *purposes)
    assert result.returncode == 2 and "purpose" in result.stderr
    assert tree.calls() == [call for call in tree.calls() if call.startswith("dpkg-query")]


def test_what_is_missing_is_installed_and_nothing_else(tree):
    def installed():
        return [call.split("--no-install-recommends ")[1] for call in tree.calls() if " install " in call]

    assert tree.run("setup", "build").returncode == 0 and installed() == []
    tree.stand_in("dpkg-query", """shift 3; for package; do case $package in
        cmake) ;;  # has never been there
        ninja-build) echo "config-files ninja-build" ;;
        *) echo "installed $package" ;;
        esac; done; exit 1""")
    assert tree.run("setup", "build", "package").returncode == 0
    assert installed() == ["cmake ninja-build"]


@pytest.mark.parametrize("arguments", [["many"], ["-1"], ["0x10"], ["1", "../../x"], ["1", "a b"]])
def test_fuzzers_run_only_for_seconds_and_by_their_names(idle_tree, arguments):
    result = idle_tree.run("fuzz", *arguments)
    assert result.returncode == 2
    assert idle_tree.calls() == []
