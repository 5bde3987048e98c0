"""The General page as it opens: what it shows, in which language, and for whom."""
import pytest
from frames import frame, margins
from general import saved
from languages import install_made_up, made_up

FIELDS = {"Current Gateway": "192.168.10.5", "Backup Gateway": "192.168.10.6",
          "Pull Interval": "1 day(recommended)", "Delay Scope": "10 minutes"}
LABELS = ["Agent Version :", "5.2.1\n", "Settings", "Current Gateway", "Backup Gateway",
          "Pull Interval", "Log Level", "Delay Scope"]
# Every text of the page and its messages, by key.
PAGE_LABELS = ["Label_AgentVer", "Frame_Settings", "Label_CurrentGW", "Label_BackupGW",
               "Label_Interval", "Label_Log", "Label_Delay"]
INTERVAL_ROWS = [f"PullInterval_Store_Item{n}" for n in range(1, 7)]
LEVEL_ROWS = [f"LogLevel_Store_Item{n}" for n in range(1, 4)]
DELAY_ROWS = [f"DelayScope_Store_Item{n}" for n in range(1, 6)]
UNITS = ["Time_Minute", "Time_Minutes", "Time_Hour", "Time_Hours", "Time_Day", "Time_Days"]
MESSAGES = [*(f"Msg_PageGeneral_Interval_Err{n}" for n in range(1, 5)),
            *(f"Msg_PageGeneral_Delay_Err{n}" for n in range(1, 5)), "Msg_Current_Gateway_Err",
            "Msg_Backup_Gateway_Err"]


def start_translated(start, device):
    """Starts the program with all texts of the page, and no others, in the made-up language."""
    install_made_up(device, {
        "Page_General": [*PAGE_LABELS, *INTERVAL_ROWS, *LEVEL_ROWS, *DELAY_ROWS, *UNITS],
        "Message": MESSAGES})
    return start()


def test_shows_the_version_and_the_settings_in_their_order(start):
    app = start()
    assert [text for text in app.texts() if text in LABELS] == [*LABELS, "Settings"], \
        "the frame's label is a node of its own"
    assert {label: app.entry(label).text for label in FIELDS} == FIELDS
    assert app.combo("Log Level").shown == "Error(recommended)"


def test_stands_below_one_another_in_two_columns(start):
    app = start()
    fields = [app.entry("Current Gateway"), app.entry("Backup Gateway"), app.combo("Pull Interval"),
              app.combo("Log Level"), app.combo("Delay Scope")]
    tops = [field.box[1] for field in fields]
    assert tops == sorted(tops)
    assert len({(field.box[0], field.box[2]) for field in fields}) == 1, "one column"
    for label in ("Current Gateway", "Backup Gateway", "Pull Interval", "Log Level", "Delay Scope"):
        x, _, width, _ = app.label(label).box
        assert fields[0].box[0] - (x + width) == 25, "borders and paddings of both columns"
    width, height = frame(app, "Settings").box[2:]
    assert width == 400 and height >= 250
    assert margins(app, "Settings") == (10, 10, 10)


def test_without_an_agent_there_is_no_version(start, device):
    device.remove("/usr/sbin/vexaagent")
    app = start()
    assert "5.2.1\n" not in app.texts()
    assert app.label("Agent Version :").showing


def test_tab_goes_in_reading_order(start):
    app = start()
    app.entry("Current Gateway").take_focus()
    forward = []
    while app.focused() != ("button", "OK"):
        forward.append(app.focused())
        app.key("Tab")
    assert forward == [
        ("entry", "Current Gateway"), ("entry", "Backup Gateway"), ("entry", "Pull Interval"),
        ("combo", "Pull Interval"), ("combo", "Log Level"), ("entry", "Delay Scope"),
        ("combo", "Delay Scope")]
    backward = []
    while app.focused() != ("entry", "Current Gateway"):
        app.key("shift+Tab")
        backward.append(app.focused())
    assert backward == forward[::-1]


def test_labels_name_the_fields_where_the_focus_is(start):
    app = start()
    for label in ("Current Gateway", "Backup Gateway"):
        assert app.entry(label).label == label
    for label in ("Pull Interval", "Delay Scope"):
        assert app.combo(label).entry.label == label
    app.entry("Delay Scope").take_focus()
    app.key("shift+Tab")
    assert app.focused() == ("combo", "Log Level")
    version = app.label("5.2.1\n")
    assert version.label == "Agent Version :"


@pytest.mark.parametrize("label, next_label", [
    ("Pull Interval", None), ("Log Level", "Delay Scope"), ("Delay Scope", None)])
def test_the_wheel_over_a_closed_list_changes_nothing(start, device, label, next_label):
    device.registry.set("LogLevel", "1")
    app = start()
    combo = app.combo(label)
    shown, (x, y, width, height) = combo.shown, combo.box

    def turn_wheel():
        for across in (width // 4, width - 10):  # over the text, over the arrow
            for wheel in (4, 5, 5):
                app.click_at(x + across, y + height // 2, wheel)
        assert combo.shown == shown

    turn_wheel()
    app.entry(next_label or label).take_focus()
    if next_label:
        app.key("shift+Tab")
    assert app.focused()[1] == label
    turn_wheel()


def test_a_full_translation_leaves_no_english_on_the_page(start, device):
    device.registry.set("Interval_min", "1501")
    device.registry.set("DelayScope_min", "7")
    app = start_translated(start, device)
    one_of_each = f"1 {made_up('Time_Day')} 1 {made_up('Time_Hour')} 1 {made_up('Time_Minute')}"
    seven = f"7 {made_up('Time_Minutes')}"
    interval, level, delay = (app.combo(made_up(label))
                              for label in ("Label_Interval", "Label_Log", "Label_Delay"))
    assert (interval.shown, delay.shown) == (one_of_each, seven)
    assert interval.rows() == [*map(made_up, INTERVAL_ROWS), one_of_each]
    assert level.rows() == [*map(made_up, LEVEL_ROWS)]
    assert delay.rows() == [*map(made_up, DELAY_ROWS), seven]
    assert {*map(made_up, PAGE_LABELS)} <= set(app.texts())
    assert {text for text in app.texts() if "«" not in text} == {
        "Agent Configure Manager", "General", "Groups", "OK", "Cancel", "5.2.1\n", "192.168.10.5",
        "192.168.10.6"}


def test_a_full_translation_leaves_no_english_in_the_messages(start, device):
    app = start_translated(start, device)

    def is_told(key):
        message = app.message()
        assert message.text == made_up(key)
        message.close()

    def presses_ok_with(gateway, label, told):
        entry = app.entry(made_up(label))
        entry.fill(gateway)
        app.button("OK").click()
        is_told(told)
        entry.fill("")

    def enters(duration, label, told, key="Return"):
        app.entry(made_up(label)).fill(duration)
        app.key(key)
        is_told(told)

    presses_ok_with("255.255.255.255", "Label_CurrentGW", "Msg_Current_Gateway_Err")
    presses_ok_with("255.255.255.255", "Label_BackupGW", "Msg_Backup_Gateway_Err")
    enters("", "Label_Interval", "Msg_PageGeneral_Interval_Err1")
    enters("10081", "Label_Interval", "Msg_PageGeneral_Interval_Err2")
    enters("abc", "Label_Interval", "Msg_PageGeneral_Interval_Err3")
    enters("9" * 50, "Label_Interval", "Msg_PageGeneral_Interval_Err4", key="Left")
    enters("", "Label_Delay", "Msg_PageGeneral_Delay_Err2")
    enters("10081", "Label_Delay", "Msg_PageGeneral_Delay_Err3")
    enters("abc", "Label_Delay", "Msg_PageGeneral_Delay_Err4")
    enters("9" * 50, "Label_Delay", "Msg_PageGeneral_Delay_Err1", key="Left")


def test_a_row_that_cannot_be_shown_is_english_and_keeps_its_value(start, device):
    device.write_table("C.UTF-8", b"[Page_General]\nPullInterval_Store_Item2 = 30 \xff\n"
                                  b"Time_Hour = \xff\n"
                                  b"LogLevel_Store_Item2 = \xff\nDelayScope_Store_Item3 = \xff\n")
    device.registry.set("Interval_min", "30")
    device.registry.set("LogLevel", "1")
    app = start()
    assert app.combo("Pull Interval").shown == "30 minutes"
    assert app.combo("Log Level").shown == "Warning"
    assert app.combo("Delay Scope").shown == "10 minutes"
    app.entry("Pull Interval").fill("90")
    app.key("Return")
    assert app.combo("Pull Interval").shown == "1 hour 30 minutes"
    assert saved(app, device, "Interval_min", "LogLevel", "DelayScope_min") == ["90", "1", "10"]


@pytest.mark.parametrize("gateway, shown", [
    (b"a\xffb", "a\ufffdb"), (b"ab\xe4\xb8", "ab\ufffd\ufffd"), (b"\xe9t\xe9", "\ufffdt\ufffd")])
def test_bytes_that_are_no_utf8_are_replaced_on_the_screen(start, device, gateway, shown):
    device.registry.set("BackupGateway", gateway)
    device.write("/etc/vexaagent/version", b"v: 5\xff\n")
    app = start()
    assert app.entry("Backup Gateway").text == shown
    assert app.label("5\ufffd\n").showing
    app.entry("Backup Gateway").take_focus()
    app.key("End")
    app.type("é")
    assert app.entry("Backup Gateway").text == shown + "é"
