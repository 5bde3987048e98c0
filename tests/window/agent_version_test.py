"""What the window says of the agent's version, and what the commands see of LD_LIBRARY_PATH."""
import pytest
from harness.accessibility import Role

LIBRARY = "/etc/vexaagent/lib"


def version(app):
    """The text behind "Agent Version :"."""
    return next(label.name for label in app.window().find(Role.LABEL)
                if label.label == "Agent Version :")


@pytest.mark.parametrize("output, shown", [
    ("Agent Version : 5.2.1\\n", "5.2.1\n"),
    ("  5.2.1  ", "5.2.1"),
    ("5.2.1\\nBuild: 77\\n", "77\n"),
    ("Version: 5.2.1\\n\\n", "\n"),
    ("a:b:c", "b:c"),
    ("", ""),
])
def test_is_the_last_line_behind_its_colon(start, device, output, shown):
    device.write("/usr/sbin/vexaagent", f"#!/bin/sh\nprintf '{output}'\n", 0o755)
    assert version(start()) == shown


def test_a_long_line_counts_as_several(start, device):
    device.write("/usr/sbin/vexaagent",
                 "#!/bin/sh\nprintf 'Version: %0255d' 7\n", 0o755)
    assert version(start()) == "000000007", "what a read of 255 bytes leaves for the next"


def test_is_empty_without_an_agent(start, device):
    device.remove("/usr/sbin/vexaagent")
    app = start()
    assert version(app) == ""
    app.button("Cancel").click()
    assert app.wait_exit() == 0


def test_an_agent_that_fails_is_still_heard(start, device):
    device.write("/usr/sbin/vexaagent", "#!/bin/sh\necho v: 9\nkill -9 $$\n", 0o755)
    assert version(start()) == "9\n"


def test_bytes_that_are_no_utf8_do_no_harm(start, device):
    device.write("/usr/sbin/vexaagent", "#!/bin/sh\nprintf 'v: a\\377b'\n", 0o755)
    app = start()
    app.button("Cancel").click()
    assert app.wait_exit() == 0


def test_the_agent_is_asked_once_with_its_libraries(start, device):
    start()
    assert [(run.args, run.ld_library_path) for run in device.agent_runs()] == [("-v", LIBRARY)]


def test_a_path_that_was_not_set_stays_for_all_later_commands(start, device):
    start()
    assert {call.ld_library_path for call in device.journal()} == {LIBRARY}


@pytest.mark.parametrize("old", ["/opt/lib", "", "/opt/" + "x" * 3000])
def test_a_path_that_was_set_is_extended_for_the_agent_alone(start, device, old):
    start(env={"LD_LIBRARY_PATH": old})
    assert [run.ld_library_path for run in device.agent_runs()] == [f"{old}:{LIBRARY}"]
    assert {call.ld_library_path for call in device.journal()} == {None}
