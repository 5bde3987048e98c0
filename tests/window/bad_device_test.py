"""A device where things are missing or broken: the window opens, OK and Cancel work."""
import pytest
from device_calls import SETTINGS, written

FIELDS = ["Current Gateway", "Backup Gateway", "Pull Interval", "Delay Scope"]
TABLE = "/etc/vexaagent/i18n/configui/C.UTF-8.prop"


def shown(app):
    return [app.entry(label).text for label in FIELDS]


def close_all_messages_of_ok(app):
    """OK with empty durations: two messages that take the defaults, then the hint."""
    app.button("OK").click()
    for _ in range(3):
        app.message().close()
    assert app.wait_exit() == 0


def test_no_registry_client(start, device):
    device.faults.client_missing()
    app = start()
    assert shown(app) == [""] * 4
    close_all_messages_of_ok(app)


def test_a_client_that_fails(start, device):
    device.faults.fail(status=3)
    app = start()
    assert shown(app) == [""] * 4
    close_all_messages_of_ok(app)
    assert len(written(device)) == 15


def test_a_client_that_says_nothing_at_all(start, device):
    device.faults.silent()
    device.faults.fail()
    app = start()
    assert shown(app) == [""] * 4
    app.button("Cancel").click()
    assert app.wait_exit() == 0


def test_a_client_that_dies(start, device):
    device.faults.die()
    app = start()
    assert shown(app) == [""] * 4
    close_all_messages_of_ok(app)


def test_a_client_that_prints_garbage(start, device):
    device.faults.print(b"#@! nothing known\nvalue 1\n", verbs="get")
    app = start()
    assert shown(app) == [""] * 4
    close_all_messages_of_ok(app)


def test_a_client_that_prints_a_nul(start, device):
    device.faults.print(b"value 4\x0099\n", verbs="get")
    app = start()
    assert shown(app) == ["4", "4", "4 minutes", "4 minutes"]
    app.button("Cancel").click()
    assert app.wait_exit() == 0


def test_a_client_that_prints_bytes_that_are_no_utf8(start, device):
    device.faults.print(b"value \xff\xfe\x80\n", verbs="get")
    app = start()
    app.button("Cancel").click()
    assert app.wait_exit() == 0


def test_bytes_that_are_no_utf8_in_a_gateway_survive_ok(start, device):
    """The entry keeps them and the lookup refuses them: nothing is written, nothing is lost."""
    device.registry.set("CurrentGateway", b"host\xff")
    app = start()
    app.button("OK").click()
    assert app.message().text == "Current gateway is not correct.."
    app.message().close()
    assert written(device) == []
    assert device.registry.get("CurrentGateway") == b"host\xff"


def test_a_client_that_prints_ten_megabytes(start, device):
    device.faults.print(b"value " + b"7" * 10_000_000 + b"\n", verbs="get", key="BackupGateway")
    app = start()
    assert app.entry("Backup Gateway").text == "7" * 50
    app.button("Cancel").click()
    assert app.wait_exit() == 0


def test_a_key_that_is_a_branch(start, device):
    device.registry.set("root/vexa/agent/BackupGateway/inner", b"x")
    device.registry.delete("BackupGateway")
    app = start()
    assert app.entry("Backup Gateway").text == "inner", "the first line of the answer counts"


@pytest.mark.parametrize("name", SETTINGS)
def test_each_value_may_be_missing_by_itself(start, device, name):
    device.registry.delete(name)
    app = start()
    app.button("Cancel").click()
    assert app.wait_exit() == 0


def start_with_tables(start, device, tables):
    for locale, content in tables.items():
        device.write_table(locale, content)
    return start()


MARKED, WRONG = b"[General]\nButton_OK=Marked\n", b"[General]\nButton_OK=Wrong\n"


def test_a_table_for_the_locale(start, device):
    app = start_with_tables(start, device, {"C.UTF-8": MARKED})
    assert app.button("Marked").showing and app.button("Cancel").showing


@pytest.mark.parametrize("content", [
    b"", b"\x00\xff\xfe[General]\x00\n" * 50, b"Button_OK=Marked\n", b"[general]\nButton_OK=Marked\n",
    b"[General\nButton_OK=Marked\n", b"\n\xef\xbb\xbf[General]\nButton_OK=Marked\n",
])
def test_a_useless_table_leaves_the_english_texts(start, device, content):
    app = start_with_tables(start, device, {"C.UTF-8": content})
    assert app.button("OK").showing and app.button("Cancel").showing


@pytest.mark.parametrize("content", [
    MARKED.rstrip(b"\n"), b"\xef\xbb\xbf" + MARKED, MARKED.replace(b"\n", b"\r\n"),
    b"#" * 1020 + b"\n" + MARKED, b"#" * 1021 + b"\n" + MARKED, b"#" * 1022 + b"\n" + MARKED,
])
def test_an_unusual_table_is_read(start, device, content):
    assert start_with_tables(start, device, {"C.UTF-8": content}).button("Marked").showing


def test_a_table_that_is_a_directory(start, device):
    device.mkdir(TABLE)
    assert start().button("OK").showing


def test_a_table_that_cannot_be_read_falls_back(start, device):
    """A link to itself: not even root can open it."""
    device.host_path(TABLE).symlink_to("C.UTF-8.prop")
    assert start_with_tables(start, device, {"en_US": MARKED}).button("Marked").showing


def test_a_utf8_locale_without_a_table_takes_en_us(start, device):
    app = start_with_tables(start, device, {"en_US": MARKED, "C": WRONG})
    assert app.button("Marked").showing


def test_lc_ctype_set_by_itself_leaves_only_the_fallback(start, device):
    """The locale tool prints no quotes then, and such a name opens no file."""
    device.write_table("C.UTF-8", WRONG)
    device.write_table("en_US", MARKED)
    app = start(env={"LC_ALL": None, "LC_CTYPE": "C.UTF-8"})
    assert app.button("Marked").showing


def test_no_locale_tool(start, device):
    device.write_table("en_US", MARKED)
    device.write(device.bin / "locale", "#!/bin/sh\nexit 127\n", 0o755)
    assert start().button("Marked").showing


def test_a_locale_that_is_not_installed(start, device):
    app = start(locale="xx_XX.UTF-8", fatal_warnings=False)  # GTK warns
    assert app.button("OK").showing
    app.button("Cancel").click()
    assert app.wait_exit() == 0


def test_a_text_that_is_not_of_the_charset_is_english(start, device):
    device.write_table("C.UTF-8", b"[General]\nButton_Cancel=\xff\n"
                                  b"[Page_General]\nLogLevel_Store_Item1=\xff\n")
    app = start()
    assert app.button("Cancel").showing
    assert app.combo("Log Level").shown == "Error(recommended)"


def test_a_percent_sign_in_a_message_is_taken_as_a_format(start, device):
    device.write_table("C.UTF-8", b"[Message]\nMsg_Backup_Gateway_Err=100%%x\n")
    app = start()
    app.entry("Backup Gateway").fill("255.255.255.255")
    app.button("OK").click()
    assert app.message().text == "100%x"
