"""One instance at a time: the second start hands over to the first and ends."""
import os
import signal

import pytest
from conftest import SANITIZERS
from harness.app import TITLE
from harness.desktop import ALL_WORKSPACES
from harness.waiting import LIMIT, wait_for
from harness.xwindow import XWindow
from pellion import GREETING, HANDED_OVER, PELLION_5, PID_FILE, SYSTEM_INFO, pid_file, run_to_end
from Xlib import X, Xatom, Xutil

MANAGERS = ["openbox", "metacity", "xfwm4", "icewm"]
with_and_without_manager = pytest.mark.parametrize("manager", [None, "openbox", "metacity"])


@pytest.fixture
def device(device):
    device.write(SYSTEM_INFO, PELLION_5)
    return device


@pytest.fixture
def manager():
    return "openbox"


@pytest.fixture
def desktop(desktop_with, manager):
    return desktop_with(manager=manager)


def has_keyboard(window, desktop):
    return (desktop.active_window() if desktop.manager else desktop.input_focus()) == window


@pytest.fixture
def cover(desktop):
    """cover(): puts a window of another program, which gets the keyboard, over the whole screen."""
    made = []

    def put():
        window = desktop.root.create_window(0, 0, *desktop.size, 0, X.CopyFromParent)
        made.append(window)
        window.set_wm_name("Cover")
        window.set_wm_hints(flags=Xutil.InputHint, input=True)
        window.change_property(desktop.atom("_NET_WM_PID"), Xatom.CARDINAL, 32, [os.getpid()])
        window.map()
        covering = XWindow(desktop, window.id)
        wait_for(lambda: covering in desktop.stacking(), "the window to be there")
        if desktop.manager:
            desktop.activate(covering)  # a new window may have to wait while another is being used
        else:
            desktop.give_focus(covering)
        wait_for(lambda: desktop.stacking()[-1] == covering, "the window to cover the others")
        wait_for(lambda: has_keyboard(covering, desktop), "the keyboard to belong to it")
        return covering

    yield put
    for window in made:
        window.destroy()
    desktop.display.sync()


def start_again(device, desktop):
    assert run_to_end(device, desktop.environment) == HANDED_OVER


def wait_in_front(window, desktop):
    wait_for(lambda: desktop.stacking()[-1] == window, f"{window} to be above all others")
    wait_for(lambda: has_keyboard(window, desktop), f"{window} to have the keyboard")


def test_the_first_says_so_once_and_writes_its_pid(start, device):
    app = start()
    assert app.stdout.encode() == GREETING
    assert pid_file(device) == b"%d\n" % app.pid
    app.button("Cancel").click()
    assert app.wait_exit() == 0
    assert app.stdout.encode() == GREETING


def test_the_second_says_so_and_ends_without_touching_anything(start, device, desktop):
    app = start()
    for _ in range(2):
        start_again(device, desktop)
    assert pid_file(device) == b"%d\n" % app.pid
    assert {call.caller for call in device.journal()} == {app.pid}
    assert len(device.agent_runs()) == 1
    assert app.window(TITLE).showing


def test_any_number_run_on_other_platforms(start, device):
    device.write(SYSTEM_INFO, PELLION_5.replace("5.1", "6.1"))
    for app in start(), start(wait="mapped"):
        assert app.window(TITLE).showing and app.stdout == ""
    assert pid_file(device) is None


@with_and_without_manager
def test_brings_a_covered_window_to_the_front(start, device, desktop, cover):
    app = start()
    covering = cover()
    start_again(device, desktop)
    wait_in_front(app.x_window(), desktop)
    assert covering.mapped and desktop.stacking() == [covering, app.x_window()]


@with_and_without_manager
def test_leaves_the_window_on_the_page_where_it_is(start, device, desktop, cover):
    app = start()
    app.page("Groups")
    app.button("Edit...").take_focus()
    app.settled()  # it has also asked for its window to be brought to the front
    cover()
    start_again(device, desktop)
    wait_in_front(app.x_window(), desktop)
    assert app.table().showing
    assert app.focused() == ("button", "Edit...")


@with_and_without_manager
def test_brings_an_open_message_to_the_front_of_its_window(start, device, desktop, cover):
    app = start()
    app.page("Groups")
    app.button("Delete").click()
    app.message()
    main, message = app.x_windows()
    covering = cover()
    start_again(device, desktop)
    wait_in_front(message, desktop)
    assert desktop.stacking() == [covering, main, message]
    app.key("Escape")
    app.no_message()


@pytest.mark.parametrize("manager", MANAGERS)
def test_brings_a_minimised_window_back(start, device, desktop, cover):
    app = start()
    window = app.x_window()
    desktop.iconify(window)
    cover()
    start_again(device, desktop)
    wait_in_front(window, desktop)
    assert window.mapped and not window.iconic
    app.entry("Backup Gateway").fill("10.0.0.2")


@pytest.fixture
def with_message(start):
    """The main window and the message that is open in it."""
    app = start()
    app.page("Groups")
    app.button("Delete").click()
    app.message()
    main, message = app.x_windows()
    return main, message


@pytest.mark.parametrize("manager", MANAGERS)
def test_brings_a_minimised_window_back_below_its_message(device, desktop, cover, with_message):
    main, message = with_message
    for window in with_message:  # not every window manager minimises both at once
        desktop.iconify(window)
    covering = cover()
    start_again(device, desktop)
    wait_in_front(message, desktop)
    wait_for(lambda: main.mapped and not main.iconic, "the main window")
    assert message.mapped and not message.iconic
    assert desktop.stacking() == [covering, main, message]


@pytest.mark.parametrize("manager", MANAGERS)
def test_unrolls_a_window(start, device, desktop, cover):
    window = start().x_window()
    desktop.shade(window)
    cover()
    start_again(device, desktop)
    wait_in_front(window, desktop)
    wait_for(lambda: window.mapped and not window.shaded, "the window to be whole")


@pytest.mark.parametrize("manager", MANAGERS)
def test_unrolls_a_window_below_its_message(device, desktop, cover, with_message):
    main, message = with_message
    desktop.shade(main)
    cover()
    start_again(device, desktop)
    wait_in_front(message, desktop)
    wait_for(lambda: main.mapped and not main.shaded, "the main window to be whole")


@pytest.fixture
def other_workspace(desktop):
    """other_workspace(): the user goes to one, until the test's end."""
    yield lambda: desktop.go_to_workspace(1)
    desktop.go_to_workspace(0)


@pytest.mark.parametrize("manager", MANAGERS)
def test_brings_the_windows_from_another_workspace(device, desktop, other_workspace, with_message):
    main, message = with_message
    other_workspace()
    wait_for(lambda: not main.mapped and not message.mapped, "the windows to be left behind")
    start_again(device, desktop)
    wait_in_front(message, desktop)
    wait_for(lambda: main.mapped and message.mapped, "both windows")
    assert desktop.stacking() == [main, message]
    assert desktop.workspace == 1


def test_leaves_a_window_on_all_workspaces(start, device, desktop, other_workspace, cover):
    window = start().x_window()
    desktop.show_on_all_workspaces(window)
    other_workspace()
    cover()
    start_again(device, desktop)
    wait_in_front(window, desktop)
    assert window.workspace == ALL_WORKSPACES


def test_takes_over_from_one_that_was_killed(start, device):
    first = start()
    first.process.kill()
    first.wait_crash()
    assert pid_file(device) == b"%d\n" % first.pid, "nobody has cleaned up"
    third = start()
    assert third.stdout.encode() == GREETING
    assert pid_file(device) == b"%d\n" % third.pid


def test_a_pid_file_without_its_process_keeps_nobody_out(start, device):
    device.write(PID_FILE, f"{os.getpid()}\nand more, of whatever length\n")
    app = start()
    assert pid_file(device) == b"%d\n" % app.pid


def test_opens_all_the_same_when_there_can_be_no_pid_file(start, device):
    device.mkdir(PID_FILE)
    for app in start(), start(wait="mapped"):
        assert app.stdout.encode() == GREETING + b"open file error\n"


def test_started_without_standard_files_it_prints_into_nothing_else(start, device, desktop):
    without = ["/bin/sh", "-c", 'exec "$0" <&- >&- 2>&-', str(device.program)]
    first = device.start(without, desktop.environment)
    wait_for(lambda: desktop.windows(pid=first.program_pid), "its window")
    assert [os.readlink(f"/proc/{first.program_pid}/fd/{number}") for number in range(3)] \
        == ["/dev/null"] * 3
    second = device.start(without, desktop.environment)
    second.wait(LIMIT)
    assert second.program_status == 0
    assert pid_file(device) == b"%d\n" % first.program_pid
    first.kill()
    first.wait()


def test_prints_into_a_pipe_that_nobody_reads(device, desktop, cover):
    """Each line is lost, and nothing else: both starts do what they do, and end as they do."""
    device.remove("/usr/sbin/vexaagent")  # the device's own is a script that runs cat, too
    for command in "locale", "cat":
        device.write(device.bin / command, "#!/bin/sh\ngrep ^SigIgn /proc/self/status >>/run/signals\n"
                     f'exec /usr/bin/{command} "$@"\n', 0o755)
    reader, writer = os.pipe()
    os.close(reader)
    environment = {**SANITIZERS, **desktop.environment}
    first = device.start([device.program], environment, stdout=writer)
    wait_for(lambda: desktop.windows(pid=first.program_pid), "its window")
    window, = desktop.windows(pid=first.program_pid)
    cover()
    second = device.start([device.program], environment, stdout=writer)
    os.close(writer)
    second.wait(LIMIT)
    assert second.program_status == 0
    wait_in_front(window, desktop)
    desktop.close_window(window)
    first.wait(LIMIT)
    assert first.program_status == 0
    ignored = [int(mask, 16) for mask in device.host_path("/run/signals").read_text().split()[1::2]]
    assert len(ignored) == 2 and not any(mask & 1 << signal.SIGPIPE - 1 for mask in ignored), \
        "the commands before the toolkit, which ignores it for all later ones, inherit nothing"


@pytest.mark.parametrize("manager", [None])
def test_ends_quietly_without_a_display(start, device, desktop, cover):
    start()
    covering = cover()
    without = {name: value for name, value in desktop.environment.items() if name != "DISPLAY"}
    for environment in ({**without, "DISPLAY": ":987"}, without):
        assert run_to_end(device, environment) == HANDED_OVER
    assert desktop.stacking()[-1] == covering and has_keyboard(covering, desktop)


@pytest.mark.parametrize("manager", [None])
@pytest.mark.parametrize("text", ["", "\n", "none\n"])
def test_without_a_pid_in_the_file_the_root_window_is_taken(start, device, desktop, cover, text):
    """It is the first that names no process: it gets the keyboard, and nothing is raised."""
    start()
    cover()
    before = desktop.stacking()
    device.host_path(PID_FILE).write_text(text)  # in place: the lock is on this very file
    start_again(device, desktop)
    assert desktop.stacking() == before
    assert desktop.input_focus() == XWindow(desktop, desktop.root.id)


def test_commands_do_not_inherit_the_pid_file(start, device, desktop):
    real = {device.bin / "regmux": device.client, device.bin / "cat": "/bin/cat",
            "/usr/sbin/vexaagent": "/bin/true"}
    for command, program in real.items():
        device.write(command, "#!/bin/sh\nreadlink /proc/self/fd/* >>/run/files\n"
                              f"""exec '{program}' "$@"\n""", 0o755)
    start()
    start_again(device, desktop)
    files = device.host_path("/run/files").read_text().split("\n")
    assert len([file for file in files if file.startswith("pipe:")]) >= 8, "seven reads and the pid file"
    assert "/run/korv-agent-mgr.pid" not in files
