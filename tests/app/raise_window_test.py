"""Raising the running instance's windows, on X servers of the test's own with plain windows."""
import contextlib
import os
import select
import signal
import subprocess
import time

import pytest
from Xlib import X, Xatom, Xutil, display as xdisplay
from Xlib.protocol import event

DRIVER = os.environ["KORV_RAISE_DRIVER"]
PID = 4711
OTHER_PID = 4712
DEADLINE_SECONDS = 20


@contextlib.contextmanager
def x_server():
    """A fresh X server; gives its display's name."""
    read_end, write_end = os.pipe()
    server = subprocess.Popen(
        ["Xvfb", "-displayfd", str(write_end), "-screen", "0", "640x480x24", "-nolisten", "tcp",
         "-noreset"], pass_fds=[write_end], stderr=subprocess.DEVNULL)
    os.close(write_end)
    try:
        with os.fdopen(read_end) as number:
            name = ":" + number.readline().strip()
        if name == ":0":  # where other tests' programs come that are told of no display
            with x_server() as name:
                yield name
        else:
            yield name
    finally:
        server.terminate()
        server.wait()


@pytest.fixture(scope="module", name="server")
def fixture_server():
    with x_server() as name:
        yield name


@pytest.fixture(name="x")
def fixture_x(server):
    """A connection to an X server that no window manager manages, without windows."""
    connection = xdisplay.Display(server)
    yield connection
    for window in stack(connection):
        window.destroy()
    connection.sync()
    connection.close()


def start_driver(display_name, *pids):
    environment = {key: value for key, value in os.environ.items() if key != "DISPLAY"}
    if display_name is not None:
        environment["DISPLAY"] = display_name
    return subprocess.Popen([DRIVER, *map(str, pids)], env=environment, text=True,
                            stdout=subprocess.PIPE, stderr=subprocess.PIPE)


def finish(driver):
    """Waits for the driver; what it printed less the "." that it ends with."""
    stdout, stderr = driver.communicate(timeout=DEADLINE_SECONDS)
    assert (driver.returncode, stderr) == (0, "")
    assert stdout.endswith(".")
    return stdout[:-1]


def raise_windows(x, *pids):
    x.sync()
    return finish(start_driver(x.get_display_name(), *pids))


def make_window(parent, pid=None, mapped=True):
    """A window, on top of its siblings, that names a process unless `pid` is None."""
    window = parent.create_window(0, 0, 100, 100, 0, X.CopyFromParent,
                                  event_mask=X.FocusChangeMask | X.StructureNotifyMask)
    if pid is not None:
        set_pid(window, Xatom.CARDINAL, 32, [pid])
    if mapped:
        window.map()
    window.display.flush()
    return window


def set_pid(window, kind, item_bits, items):
    window.change_property(pid_atom(window), kind, item_bits, items)


def pid_atom(window):
    return window.display.get_atom("_NET_WM_PID")


def root_of(x):
    return x.screen().root


def stack(x):
    """The top-level windows, from the lowest to the uppermost."""
    return root_of(x).query_tree().children


def wait_for(condition):
    """Waits until the condition holds, and gives what it gave."""
    deadline = time.monotonic() + DEADLINE_SECONDS
    while not (result := condition()):
        assert time.monotonic() < deadline, "the condition never held"
        select.select([], [], [], 0.01)
    return result


def test_raises_and_focuses_a_covered_window(x):
    target = make_window(root_of(x), PID)
    other = make_window(root_of(x), OTHER_PID)
    assert stack(x) == [target, other]
    assert raise_windows(x, PID) == ""
    assert stack(x) == [other, target]
    focus = x.get_input_focus()
    assert (focus.focus, focus.revert_to) == (target, X.RevertToNone)


def test_nothing_happens_when_no_window_matches(x):
    windows = [make_window(root_of(x), OTHER_PID), make_window(root_of(x))]
    before = x.get_input_focus().focus
    assert raise_windows(x, PID) == ""
    assert stack(x) == windows
    assert x.get_input_focus().focus == before


def test_raises_every_match_in_tree_order(x):
    first, other, second = (make_window(root_of(x), pid) for pid in (PID, OTHER_PID, PID))
    raise_windows(x, PID)
    assert stack(x) == [other, first, second]
    assert x.get_input_focus().focus == second


def test_walks_depth_first_and_a_window_before_its_children(x):
    frame = make_window(root_of(x))
    inner_frame = make_window(frame)
    inside = make_window(inner_frame, PID)
    covering = make_window(inner_frame, OTHER_PID)
    beside = make_window(root_of(x), PID)
    raise_windows(x, PID)
    assert inner_frame.query_tree().children == [covering, inside]
    assert x.get_input_focus().focus == beside  # the last in tree order, although higher up


def test_does_not_search_the_children_of_a_match(x):
    target = make_window(root_of(x), PID)
    child = make_window(target, PID)
    other_child = make_window(target)
    raise_windows(x, PID)
    assert target.query_tree().children == [child, other_child]
    assert x.get_input_focus().focus == target


def test_pid_0_is_the_root_window_alone(x):
    windows = [make_window(root_of(x), pid) for pid in (None, 0, PID)]
    raise_windows(x, PID)  # takes the focus away from the root
    raise_windows(x, 0)
    assert stack(x) == windows
    focus = x.get_input_focus()
    assert (focus.focus, focus.revert_to) == (root_of(x), X.RevertToNone)


def test_an_unmapped_window_of_the_same_process_is_no_obstacle(x):
    leader = make_window(root_of(x), PID, mapped=False)
    target = make_window(root_of(x), PID)
    other = make_window(root_of(x), OTHER_PID)
    raise_windows(x, PID)
    assert stack(x) == [other, leader, target]
    assert x.get_input_focus().focus == target
    assert leader.get_attributes().map_state == X.IsUnmapped


def test_windows_that_vanish_during_the_walk_are_no_obstacle(x):
    first = make_window(root_of(x), PID)
    vanishing = [make_window(root_of(x)) for _ in range(3000)]
    last = make_window(root_of(x), PID)
    x.sync()
    driver = start_driver(x.get_display_name(), PID)
    wait_for_focus_in(x, first)
    for window in vanishing:
        window.destroy()
    x.sync()
    assert finish(driver) == ""
    assert stack(x) == [first, last]
    assert x.get_input_focus().focus == last


def wait_for_focus_in(x, window):
    while True:
        assert x.pending_events() or select.select([x], [], [], DEADLINE_SECONDS)[0]
        while x.pending_events():
            happened = x.next_event()
            if happened.type == X.FocusIn and happened.window == window:
                return


@pytest.mark.parametrize("kind, item_bits, items", [
    (Xatom.CARDINAL, 8, PID.to_bytes(4, "little")),
    (Xatom.CARDINAL, 16, [PID, 0]),
    (Xatom.CARDINAL, 32, []),
    (Xatom.CARDINAL, 8, b""),
    (Xatom.CARDINAL, 8, b"\x01"),
    (Xatom.INTEGER, 32, [PID]),
    (Xatom.STRING, 8, b"4711"),
    (Xatom.CARDINAL, 32, [OTHER_PID + 1, PID]),
])
def test_a_property_of_another_form_names_no_process(x, kind, item_bits, items):
    odd = make_window(root_of(x))
    set_pid(odd, kind, item_bits, items)
    target, other = make_window(root_of(x), PID), make_window(root_of(x), OTHER_PID)
    raise_windows(x, PID)
    assert stack(x) == [odd, other, target]
    raise_windows(x, 1)
    assert stack(x) == [odd, other, target]


def test_only_the_first_item_of_the_property_counts(x):
    target = make_window(root_of(x))
    set_pid(target, Xatom.CARDINAL, 32, [PID, OTHER_PID, 0])
    other = make_window(root_of(x))
    raise_windows(x, PID)
    assert stack(x) == [other, target]


def test_the_process_id_is_a_signed_number(x):
    target = make_window(root_of(x), 2**32 - 5)
    other = make_window(root_of(x), 5)
    raise_windows(x, -5)
    assert stack(x) == [other, target]


def test_a_very_deep_tree_is_no_obstacle(x):
    window = root_of(x)
    for _ in range(200):
        window = make_window(window)
    target = make_window(window, PID)
    x.sync()
    raise_windows(x, PID)
    assert x.get_input_focus().focus == target


def test_a_window_left_minimised_without_a_window_manager_comes_back(x):
    target = make_window(root_of(x), PID, mapped=False)
    other = make_window(root_of(x), OTHER_PID)
    wm_state_atom = x.intern_atom("WM_STATE")
    target.change_property(wm_state_atom, wm_state_atom, 32, [Xutil.IconicState, X.NONE])
    raise_windows(x, PID)
    assert stack(x) == [other, target]
    assert x.get_input_focus().focus == target


def test_the_connection_is_kept(x):
    first, second = make_window(root_of(x), PID), make_window(root_of(x), OTHER_PID)
    raise_windows(x, OTHER_PID, PID)
    assert stack(x) == [second, first]
    assert x.get_input_focus().focus == first


def test_fails_where_nobody_knows_the_property():
    with x_server() as name:
        assert finish(start_driver(name, PID)) == "failed"


@pytest.mark.parametrize("display_name", [None, "", ":", "nonsense", ":64000"])
def test_ends_quietly_without_a_reachable_display(display_name):
    assert finish(start_driver(display_name, PID)) == ""


@contextlib.contextmanager
def managed_by(name, home):
    """A connection to a fresh X server with a window manager that is ready, and its process."""
    with x_server() as display_name, contextlib.closing(xdisplay.Display(display_name)) as x:
        environment = dict(os.environ, DISPLAY=display_name, HOME=str(home))
        manager = subprocess.Popen([name], env=environment, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            wait_until_managed(make_window(root_of(x)))
            yield x, manager
        finally:
            manager.kill()
            manager.wait()


@pytest.fixture(name="managed_x", params=["openbox", "metacity"])
def fixture_managed_x(request, tmp_path):
    with managed_by(request.param, tmp_path) as (x, _):
        yield x


def wait_until_managed(window):
    """Asks until it is: a window manager that is just starting may miss a request."""
    def ask():
        window.map()
        return wm_state(window) == Xutil.NormalState
    wait_for(ask)
    wait_for(lambda: window.get_attributes().map_state == X.IsViewable)


def make_managed_window(x, pid):
    window = make_window(root_of(x), pid, mapped=False)
    window.set_wm_hints(flags=Xutil.InputHint, input=True)
    wait_until_managed(window)
    return window


def wm_state(window):
    atom = window.display.get_atom("WM_STATE")
    value = window.get_full_property(atom, atom)
    return value and value.value[0]


def uppermost(x):
    atom = x.intern_atom("_NET_CLIENT_LIST_STACKING")
    return root_of(x).get_full_property(atom, Xatom.WINDOW).value[-1]


def iconify(x, window):
    message = event.ClientMessage(window=window, client_type=x.intern_atom("WM_CHANGE_STATE"),
                                  data=(32, [Xutil.IconicState, 0, 0, 0, 0]))
    root_of(x).send_event(
        message, event_mask=X.SubstructureRedirectMask | X.SubstructureNotifyMask)
    wait_for(lambda: wm_state(window) == Xutil.IconicState)
    wait_for(lambda: window.get_attributes().map_state == X.IsUnmapped)


def wait_until_in_front(x, window):
    wait_for(lambda: window.get_attributes().map_state == X.IsViewable)
    wait_for(lambda: uppermost(x) == window.id)
    wait_for(lambda: x.get_input_focus().focus == window)
    assert wm_state(window) == Xutil.NormalState


def test_brings_a_managed_window_to_the_front(managed_x):
    x = managed_x
    target = make_managed_window(x, PID)
    other = make_managed_window(x, OTHER_PID)
    raise_windows(x, OTHER_PID)
    wait_until_in_front(x, other)
    raise_windows(x, PID)
    wait_until_in_front(x, target)


def test_brings_a_minimised_window_back(managed_x):
    x = managed_x
    target = make_managed_window(x, PID)
    other = make_managed_window(x, OTHER_PID)
    iconify(x, target)
    raise_windows(x, OTHER_PID)
    wait_until_in_front(x, other)
    raise_windows(x, PID)
    wait_until_in_front(x, target)


def test_a_window_manager_that_hangs_is_waited_for_two_seconds(tmp_path):
    with managed_by("openbox", tmp_path) as (x, manager):
        target = make_managed_window(x, PID)
        iconify(x, target)
        manager.send_signal(signal.SIGSTOP)
        begin = time.monotonic()
        assert raise_windows(x, PID) == ""
        # A busy machine can only make it longer.
        assert time.monotonic() - begin >= 2
