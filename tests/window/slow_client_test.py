"""A registry whose client takes a second for each call: slow, but nothing is lost."""
from device_calls import gets, written, writes
from harness.app import TITLE
from harness.waiting import LIMIT, wait_for
from save_test import DEFAULTS, committed

SECONDS = 1
CALLS = {"start": 7, "OK": 15, "refresh": 1}


def in_time(*what):
    """As long as these take, and what is generous otherwise."""
    return SECONDS * sum(CALLS[each] for each in what) + LIMIT


def test_what_is_typed_and_pressed_meanwhile(start, device):
    device.faults.delay(SECONDS)
    app = start(wait=False)
    app.wait_for(lambda: app.x_window(TITLE), "the window", in_time("start"))
    assert [call.args for call in device.journal()][:7] == gets()
    app.wait_started()

    # Typed while a refresh holds the window up, all of it is taken afterwards.
    entry = app.entry("Backup Gateway")
    entry.select_all()
    refreshes = len(device.journal())
    wait_for(lambda: len(device.journal()) > refreshes, "a refresh to begin")
    app.type("10.9.8.7")
    assert entry.text == "10.9.8.7"

    # What comes while OK is at work comes too late to change or repeat anything.
    ok = app.button("OK")
    x, y, width, height = ok.box
    ok.click(settle=False)
    wait_for(lambda: written(device), "OK to be at work")
    app.desktop.keyboard.type("1", app.desktop.settle_manager)
    for key in ("Return", "space", "Escape"):  # each of them would close the hint
        app.desktop.keyboard.press(key)
    app.desktop.click_at(x + width // 2, y + height // 2)
    changed = {**DEFAULTS, "BackupGateway": "10.9.8.7"}
    wait_for(lambda: len(written(device)) == 15, "the last call", in_time("OK", "refresh"))
    hint = app.message()
    assert hint.text == "Warning"
    assert written(device) == writes(changed)
    assert committed(device) == changed
    hint.close()
    assert app.wait_exit() == 0
    assert len(written(device)) == 15


def test_a_client_slower_than_the_refreshes_leaves_room_for_what_is_clicked(start, device):
    app = start()
    x, y, width, height = app.button("Cancel").resting_box()
    device.faults.delay(4 * SECONDS, verbs="get")
    device.clear_journal()
    wait_for(lambda: len(device.journal()) >= 2, "a second refresh, due before the first was done",
             in_time("refresh") + 8 * SECONDS)
    app.desktop.press_at(x + width // 2, y + height // 2)
    assert app.wait_exit(LIMIT + 8 * SECONDS) == 0
    assert len(device.journal()) <= 3, "the refreshes did not let the clicks through"
