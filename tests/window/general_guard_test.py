"""The gateway entries refuse what the registry's client could not carry."""
import contextlib
import threading

import pytest
from Xlib import X, display
from Xlib.ext import record
from general import saved
from harness.waiting import LIMIT, wait_for

LABEL = "Backup Gateway"
REFUSED = ["'", "10.0.0.1'", "'$(reboot)'", "10.0.0.1\n", "a\nb", "a\rb", "\n", "\r\n"]


@pytest.fixture
def entry(start):
    app = start()
    entry = app.entry(LABEL)
    entry.fill("abcdef")
    return entry


def select(entry, start, end):
    """Selects a part of the text with the keyboard; the caret is at its end."""
    entry.app.key("Home")
    for _ in range(start):
        entry.app.key("Right")
    for _ in range(end - start):
        entry.app.key("shift+Right")
    assert entry.selection == (start, end)


def copy(app, text):
    """Copies the text from an entry that takes everything: what comes from the program itself is
    pasted at once, before anything else happens."""
    source = app.entry("Pull Interval")
    app.set_clipboard(text)
    source.select_all()
    app.key("ctrl+v")
    app.wait_for(lambda: source.text == text, "the text to copy")
    source.select_all()
    app.key("ctrl+c")


def test_a_typed_quote_does_nothing(entry):
    entry.app.type("'")
    assert entry.text == "abcdef"
    entry.app.key("Left")
    entry.app.type("'x'")
    assert entry.text == "abcdexf"


@pytest.fixture
def bells(desktop):
    """The requests of all programs that the X server ring its bell, as they come."""
    control, data = display.Display(desktop.name), display.Display(desktop.name)
    keyboard = control.query_extension("XKEYBOARD").major_opcode
    none = (0, 0)
    context = data.record_create_context(0, [record.AllClients], [{
        "core_requests": none, "core_replies": none,
        "ext_requests": (keyboard, keyboard, 3, 3), "ext_replies": (0, 0, 0, 0),  # 3: XkbBell
        "delivered_events": none, "device_events": none, "errors": none,
        "client_started": False, "client_died": False}])
    requests, started = [], threading.Event()

    def hear(reply):
        if reply.category == record.FromClient:
            requests.append(reply.data)
        started.set()

    thread = threading.Thread(target=data.record_enable_context, args=(context, hear), daemon=True)
    thread.start()
    assert started.wait(LIMIT)
    yield requests
    control.record_disable_context(context)
    control.flush()
    thread.join(LIMIT)
    control.close()
    data.close()


def test_a_refused_quote_rings_the_bell(entry, bells):
    entry.app.type("x")
    assert bells == []
    entry.app.type("'")
    wait_for(lambda: len(bells) == 1, "the bell")


def test_a_typed_quote_over_a_selection_leaves_it(entry):
    select(entry, 2, 4)
    entry.app.type("'")
    assert (entry.text, entry.selection) == ("abcdef", (2, 4))
    entry.app.type("''x")
    assert (entry.text, entry.selection) == ("abxef", None)


@pytest.mark.parametrize("steps, caret", [(["Right"] * 4 + ["shift+Left"] * 2, 2),
                                          (["Right"] * 2 + ["shift+Right"] * 2, 4)])
def test_the_caret_stays_at_its_end_of_the_selection(entry, steps, caret):
    for key in ["Home", *steps]:
        entry.app.key(key)
    entry.app.type("'")
    assert (entry.selection, entry.caret) == ((2, 4), caret)


def test_a_refused_key_brings_back_nothing_deleted_before(entry):
    select(entry, 2, 4)
    entry.app.key("BackSpace")
    entry.app.type("'")
    assert entry.text == "abef"


# What a key can be bound to do.
DELETE, LETTER, QUOTE = '"backspace" ()', '"insert-at-cursor" ("x")', '"insert-at-cursor" ("\'")'


@pytest.mark.parametrize("done, text", [
    ([DELETE, LETTER, QUOTE], "abxef"), ([DELETE, QUOTE, LETTER], "abxef"), ([QUOTE, DELETE], "abcef")],
    ids=["delete x '", "delete ' x", "' delete"])
def test_of_what_one_key_does_a_part_can_be_refused(start, desktop, tmp_path, done, text):
    """A user's own key binding can delete and insert more than once; the toolkit's insertion drops the
    selection."""
    bindings = tmp_path / "gtkrc"
    bindings.write_text(f"""binding "own" {{
        bind "F5" {{ {" ".join(done)} }}
    }}
    class "GtkEntry" binding "own" """)
    app = start(env={"GTK2_RC_FILES": f"{desktop.environment['GTK2_RC_FILES']}:{bindings}"})
    entry = app.entry(LABEL)
    entry.fill("abcdef")
    select(entry, 2, 4)
    app.key("F5")
    assert (entry.text, entry.caret) == (text, text.index("ef"))


def test_a_paste_that_holds_one_is_refused_whole(entry):
    for text in REFUSED:
        copy(entry.app, text)
        entry.take_focus()
        entry.app.key("ctrl+v")
        assert entry.text == "abcdef", text


def test_a_refused_paste_over_a_selection_leaves_it(entry):
    for text in REFUSED:
        copy(entry.app, text)
        entry.take_focus()
        select(entry, 1, 5)
        entry.app.key("ctrl+v")
        assert (entry.text, entry.selection) == ("abcdef", (1, 5)), text


def test_any_other_paste_replaces_the_selection(entry):
    copy(entry.app, "\"`$(x)\\;")
    entry.take_focus()
    select(entry, 1, 5)
    entry.app.key("ctrl+v")
    assert (entry.text, entry.selection) == ("a\"`$(x)\\;f", None)


def test_a_paste_with_the_middle_button_is_refused_whole(entry):
    app = entry.app
    app.set_clipboard("it's")
    app.middle_click(entry)
    app.set_clipboard("its")
    app.middle_click(entry)
    app.wait_for(lambda: sorted(entry.text) == sorted("abcdefits"), "the second paste alone")


@pytest.mark.parametrize("label", [LABEL, "Pull Interval"])
def test_a_refused_drop_leaves_the_text_where_it_was(start, device, label):
    device.registry.set("BackupGateway", "it's far")
    device.registry.set("Interval_min", "")
    app = start()
    source, target = app.entry(label), app.entry("Current Gateway")
    if label != LABEL:
        source.fill("it's far")
    target.fill("there")
    source.take_focus()
    select(source, 0, 4)
    app.drag(source.point(2), target.point(5))
    source.take_focus()
    select(source, 5, 8)
    app.drag(source.point(6), target.point(5))
    app.wait_for(lambda: "far" in target.text and "far" not in source.text, "the second drop")
    assert sorted(target.text) == sorted("therefar")
    assert source.text == "it's "


def test_a_refused_drop_ends_the_drag(start, desktop, device):
    """The source is told, which puts away the picture that was under the pointer."""
    device.registry.set("BackupGateway", "it's far")
    app = start()
    source, target = app.entry(LABEL), app.entry("Current Gateway")
    source.take_focus()
    select(source, 0, 4)
    with contextlib.closing(display.Display(desktop.name)) as watcher:
        watcher.screen().root.change_attributes(event_mask=X.SubstructureNotifyMask)
        watcher.sync()
        app.drag(source.point(2), target.point(5))
        shown = set()

        def put_away():
            while watcher.pending_events():
                event = watcher.next_event()
                if event.type == X.MapNotify:
                    shown.add(event.window)
                elif event.type == X.DestroyNotify and event.window in shown:
                    return True
            return False

        app.wait_for(put_away, "the end of the drag")


@pytest.mark.parametrize("label", ["Current Gateway", "Backup Gateway"])
def test_both_entries_are_guarded(start, label):
    app = start()
    app.entry(label).fill("10'0")
    assert app.entry(label).text == "100"


@pytest.mark.parametrize("stored", ["10.0.0.1'", "'$(touch /run/trap)'", "a'b\u00e9"])
def test_a_stored_quote_is_shown_and_can_be_edited_away(start, device, stored):
    device.registry.set("BackupGateway", stored)
    app = start()
    entry = app.entry(LABEL)
    assert entry.text == stored
    entry.take_focus()
    app.key("End")
    app.key("BackSpace")
    app.type("'")
    assert entry.text == stored[:-1]
    entry.fill("10.0.0.2")
    assert saved(app, device, "BackupGateway") == ["10.0.0.2"]


def test_the_duration_entries_take_a_quote_as_any_other_character(start):
    """It never gets further: only numbers are saved."""
    app = start()
    app.entry("Pull Interval").fill("3'0")
    assert app.entry("Pull Interval").text == "3'0"
