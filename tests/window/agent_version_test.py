"""What the window says of the agent's version, and what the commands see of LD_LIBRARY_PATH."""
import pytest
from gi.repository import Atspi
from harness.accessibility import Role
from harness.xwindow import XWindow
from PIL import Image, ImageChops

LIBRARY = "/etc/vexaagent/lib"


def version_label(app):
    """The label after "Agent Version :"."""
    return next(label for label in app.window().find(Role.LABEL) if label.label == "Agent Version :")


def version(app):
    return version_label(app).name


@pytest.mark.parametrize("output, shown", [
    ("Agent Version : 5.2.1\\n", "5.2.1\n"),
    ("  5.2.1  ", "5.2.1"),
    ("5.2.1\\nBuild: 77\\n", "77\n"),
    ("Version: 5.2.1\\n\\n", "\n"),
    ("a:b:c", "b:c"),
    ("", ""),
])
def test_is_the_last_line_after_its_colon(start, device, output, shown):
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


def says(device, output):
    """Has the agent print these bytes."""
    device.write("/etc/vexaagent/output", output)
    device.write("/usr/sbin/vexaagent", "#!/bin/sh\ncat /etc/vexaagent/output\n", 0o755)


@pytest.fixture
def usual_size(start, device):
    says(device, b"5.2.1\n")
    app = start()
    size = app.x_window().box[2:]
    app.button("Cancel").click()
    assert app.wait_exit() == 0
    return size


@pytest.mark.parametrize("output", [
    b"", b"5.2.1", b"W" * 105 + b"\n", b"v" * 254 + b"\n", "\u4e2d\u6587".encode() * 40 + b"\n",
    b"5.2.1\rBuild 77\r\n", b"5.2.1\tBuild\t77\t\t\t\t\t\t\t\t\t\t.\n",
    "5.2.1\u2029Build\u2028 77\n".encode(), b"5\v2\f1\n", "5\u00852\n".encode(), b"\xff" * 100])
def test_the_window_is_as_large_as_ever(start, device, usual_size, output):
    says(device, output)
    assert start().x_window().box[2:] == usual_size


def text_shown(app):
    """The version's text as it is laid out, shortened or not."""
    label = version_label(app).accessible
    return Atspi.Text.get_text(label, 0, Atspi.Text.get_character_count(label))


def test_a_version_that_fits_is_shown_whole(start, device):
    says(device, b"5.2.1-beta (build 77)")
    assert text_shown(start()) == "5.2.1-beta (build 77)"


@pytest.mark.parametrize("separator", ["\r", "\t" * 9, "\u2028", "\u2029"],
                         ids=["return", "tabs", "line separator", "paragraph separator"])
def test_of_a_version_of_too_many_lines_the_first_is_shown(start, device, separator):
    says(device, separator.join(["5.2.1", "Build", "77"]).encode())
    assert text_shown(start()) == "5.2.1\u2026"


def test_of_a_version_too_long_the_first_line_is_shown(start, device):
    says(device, f"5.2.1\u0085{'Build' * 20}".encode())  # which ends a line, but takes no room for one
    assert text_shown(start()) == "5.2.1\u2026"


def last_ink(picture):
    """The height of what is drawn last in a line: of the rightmost columns that are not empty."""
    ink = ImageChops.difference(picture, Image.new("RGB", picture.size, picture.getpixel((0, 0))))
    right = ink.getbbox()[2]
    _, top, _, bottom = ink.crop((right - 2, 0, right, picture.height)).getbbox()
    return bottom - top


def test_a_line_that_does_not_fit_ends_in_an_ellipsis(start, device):
    says(device, b"W" * 200)
    app = start()
    picture = app.picture(version_label(app))
    assert last_ink(picture) <= picture.height // 4


def tooltip(app):
    """The box of the tooltip on the screen, None when there is none: the one window of the program
    that the window manager does not manage."""
    client = app.x_window().client()
    for window in app.desktop.display.screen().root.query_tree().children:
        tip = XWindow(app.desktop, window.id)
        if tip.client() == client and tip.mapped and window.get_attributes().override_redirect:
            return tip.box
    return None


@pytest.mark.parametrize("whole, lines", [("x" * 254, 4), ("5.2.1\rBuild 77", 2),
                                          ("5.2.1 and much more " * 6, 2)])
def test_a_version_that_does_not_fit_can_be_read_in_a_tooltip(start, device, desktop, whole, lines):
    says(device, whole.encode() + b"\n")
    app = start()
    shown = version_label(app)
    assert shown.name == whole + "\n", "for assistive tools"
    x, y, _, height = shown.box
    desktop.move_pointer(x + 10, y + height // 4)
    tip_x, tip_y, tip_width, tip_height = app.wait_for(lambda: tooltip(app), "the tooltip")
    assert tip_x >= 0 and tip_x + tip_width <= desktop.size[0]
    assert tip_y >= 0 and tip_y + tip_height <= desktop.size[1]
    line_height = height // 2  # the label has the agent's line end
    assert tip_height >= lines * line_height


def test_the_tooltip_breaks_a_version_without_blanks_and_adds_nothing(start, device, desktop):
    says(device, b"W" * 200)
    app = start()
    x, y, _, height = version_label(app).box
    desktop.move_pointer(x + 10, y + height // 2)
    tip_x, tip_y, tip_width, _ = app.wait_for(lambda: tooltip(app), "the tooltip")
    app.settled()
    line_height = height // 2  # the label has room for the agent's line end
    first_line = desktop.picture((tip_x + 2, tip_y + 2, tip_width - 4, line_height))
    assert last_ink(first_line) > line_height // 3, "a letter, no hyphen"
