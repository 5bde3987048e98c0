"""Long use of one window; script/soak runs the long form, with KORV_ROUNDS."""
import os
import pathlib
import re

import pytest
from groups import ADD
from harness.app import TITLE

ROUNDS = int(os.environ.get("KORV_ROUNDS", "50"))
WARM_UP = 10  # what the first ones load stays
# The program alone: what the accessibility bridge keeps is not its doing.
WITHOUT_BRIDGE = {"GTK_MODULES": None, "NO_AT_BRIDGE": "1"}
MEMORY_BOUND = 16  # KiB


def memory(app):
    """KiB that are the program's own, those of its libraries' files not counted."""
    return int(re.search(r"^Anonymous: +(\d+) kB",
                         pathlib.Path(f"/proc/{app.pid}/smaps_rollup").read_text(), re.M)[1])


def descriptors(app):
    return len(os.listdir(f"/proc/{app.pid}/fd"))


def server_resources(app):
    """Windows, pictures and the like that the X server keeps for the program."""
    xid = app.x_window(TITLE).id
    return sum(kind.count for kind in app.desktop.display.res_query_client_resources(xid).types)


def open_and_close(app, title, times):
    for _ in range(times):
        app.desktop.keyboard.press("space")
        app.wait_active(title)
        app.desktop.keyboard.press("Escape")
        app.wait_active(TITLE)
        assert not app.x_window(title)


@pytest.mark.parametrize("what, tabs, title", [("dialogs", 3, ADD), ("messages", 5, "")],
                         ids=["dialogs", "messages"])
def test_what_opens_and_closes_leaves_nothing_behind(start, what, tabs, title):
    """Add..., and Delete with no group selected."""
    app = start(env=WITHOUT_BRIDGE, wait=False)
    app.wait_active(TITLE)
    for key in ("ctrl+Page_Down", *["Tab"] * tabs):
        app.desktop.keyboard.press(key)
    open_and_close(app, title, WARM_UP)
    before = memory(app), descriptors(app), server_resources(app)
    open_and_close(app, title, ROUNDS)
    growth = [now - then for now, then in zip(
        (memory(app), descriptors(app), server_resources(app)), before)]
    print(f"{ROUNDS} {what}: {growth[0]:+} KiB of memory, {growth[1]:+} descriptors, "
          f"{growth[2]:+} resources of the X server")
    assert growth[0] <= MEMORY_BOUND
    assert growth[1:] == [0, 0]
