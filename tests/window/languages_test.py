"""The shipped languages on the screen: every text, in UTF-8 and in the traditional charsets."""
import gettext

import pytest

from harness.accessibility import Role, State
from languages import language_of, start_in
from tests.translations.written_texts import read_texts

# In these everything is read ...
READ_IN = {"German in UTF-8": "de_DE.UTF-8", "German in ISO-8859-1": "de_DE.ISO-8859-1",
           "Spanish in UTF-8": "es_ES.UTF-8", "Spanish in ISO-8859-1": "es_ES.ISO-8859-1",
           "French in UTF-8": "fr_FR.UTF-8", "French in ISO-8859-1": "fr_FR.ISO-8859-1",
           "Japanese in UTF-8": "ja_JP.UTF-8", "Japanese in EUC-JP": "ja_JP.EUC-JP",
           "Chinese in UTF-8": "zh_CN.UTF-8", "Chinese in GB2312": "zh_CN.GB2312",
           "English": "en_US.UTF-8"}
# ... and in these, which find the same tables in another way, the two pages.
FURTHER = {"German, no charset named": "de_DE", "German in ISO-8859-15": "de_DE.ISO-8859-15",
           "German in utf8": "de_DE.utf8", "Chinese in GBK": "zh_CN.GBK",
           "Chinese in GB18030": "zh_CN.GB18030", "Chinese in utf8": "zh_CN.utf8",
           "English for want of a language": "C.UTF-8"}
GENERAL = ["Label_AgentVer", "Frame_Settings", "Label_CurrentGW", "Label_BackupGW",
           "Label_Interval", "Label_Log", "Label_Delay", "PullInterval_Store_Item5",
           "LogLevel_Store_Item1", "DelayScope_Store_Item3"]
GROUPS = ["Radio_DHCPGroups", "Radio_StaticGroups", "Frame_StaticGroups", "TreeView_Col1",
          "TreeView_Col2", "Button_Add", "Button_Edit", "Button_Delete"]
WINDOW = ["Title", "Page_General", "Page_Groups", "Button_OK", "Button_Cancel"]
DUPLICATE = 'The group has already existed(notes: "MG = Manual Group"),please retry!'
# What comes from the device, not from a table.
DATA = {"5.2.1\n", "192.168.10.5", "192.168.10.6", "Manual Group", "floor2", "P1", "lab", "SALES",
        "north"}


class Reader:
    """Someone who reads the program's windows in one language and meets no other."""

    def __init__(self, start, device, locale):
        self.app = start_in(locale, start, device)
        self.texts = self.app.written
        self.toolkit = gettext.translation("gtk20", "/usr/share/locale", [language_of(locale)],
                                           fallback=True)

    def __getitem__(self, key):
        return self.texts[key]

    def _stock(self):
        return {self.toolkit.pgettext("Stock label", text).replace("_", "")
                for text in ("_OK", "_Cancel", "_Close", "Error", "Information")}

    def rows(self, kind):
        """A choice list's rows."""
        return [text for key, text in self.texts.items() if key.startswith(f"{kind}_Store_Item")]

    def sees(self, *keys, data=()):
        """These texts can be read in the window in use, and nothing that is not in the language."""
        texts = self.app.active.texts()
        assert [key for key in keys if self[key] not in texts] == [], texts
        assert set(texts) - set(self.texts.values()) - self._stock() - DATA - set(data) == set()

    def is_told(self, key, secondary=None):
        """The message is open; closes it."""
        message = self.app.message()
        assert message.text == self[key]
        assert message.secondary == (self[secondary] if secondary else "")
        self.sees(key)
        message.close()

    def enters(self, label, text, told, key="Return"):
        """Types the text into the field, then the key, and is told what is wrong with it."""
        self.app.entry(self[label]).fill(text)
        self.app.key(key)
        self.is_told(told)

    def presses(self, button, told):
        self.app.button(self[button]).click()
        self.is_told(told)

    def turns_to(self, page):
        self.app.page(self[page])


class Dialog:
    """The group dialog, open."""

    def __init__(self, reader, title):
        self.reader = reader
        self.window = reader.app.dialog(reader[title])
        buttons = self.window.find(Role.PUSH_BUTTON, State.SHOWING)
        self.ok, self.cancel = sorted(buttons, key=lambda button: button.box)  # from left to right
        self.name = self.window.entry(reader["Label_GroupName"])
        self.value = self.window.entry(reader["Label_Value"])

    def refuses(self, name, value, told):
        self.name.fill(name)
        self.value.fill(value)
        self.ok.click()
        self.reader.is_told(told)
        self.reader.app.dialog(self.window.title)

    def is_full(self, field, length, told):
        field.paste("x" * length)
        self.reader.app.key("x")
        self.reader.is_told(told)
        self.reader.app.dialog(self.window.title)

    def close(self):
        self.cancel.click()
        self.reader.app.wait_gone(self.window)


def reading(locales):
    return pytest.mark.parametrize("locale", locales.values(), ids=locales.keys())


def read_both_pages(reader):
    reader.sees(*WINDOW, *GENERAL)
    assert reader.app.combo(reader["Label_Interval"]).rows() == reader.rows("PullInterval")
    assert reader.app.combo(reader["Label_Log"]).rows() == reader.rows("LogLevel")
    assert reader.app.combo(reader["Label_Delay"]).rows() == reader.rows("DelayScope")
    reader.turns_to("Page_Groups")
    reader.sees(*WINDOW, *GROUPS)
    reader.turns_to("Page_General")


def read_the_general_pages_messages(reader):
    """The last of each field leaves what can be saved."""
    reader.enters("Label_Interval", "10081", "Msg_PageGeneral_Interval_Err2")
    reader.enters("Label_Interval", "x", "Msg_PageGeneral_Interval_Err3")
    reader.enters("Label_Interval", "1" * 50, "Msg_PageGeneral_Interval_Err4", key="Left")
    reader.enters("Label_Interval", "", "Msg_PageGeneral_Interval_Err1")
    reader.enters("Label_Delay", "61", "Msg_PageGeneral_Delay_Err3")
    reader.enters("Label_Delay", "x", "Msg_PageGeneral_Delay_Err4")
    reader.enters("Label_Delay", "1" * 50, "Msg_PageGeneral_Delay_Err1", key="Left")
    reader.enters("Label_Delay", "", "Msg_PageGeneral_Delay_Err2")
    for label, told in (("Label_CurrentGW", "Msg_Current_Gateway_Err"),
                        ("Label_BackupGW", "Msg_Backup_Gateway_Err")):
        reader.app.entry(reader[label]).fill("255.255.255.255")
        reader.presses("Button_OK", told)
        reader.app.entry(reader[label]).fill("10.0.0.1")


def read_the_group_dialog(reader):
    reader.turns_to("Page_Groups")
    reader.presses("Button_Edit", "Msg_PageGroups_Edit_Err")
    reader.presses("Button_Delete", "Msg_PageGroups_Del_Err")

    reader.app.button(reader["Button_Add"]).click()
    dialog = Dialog(reader, "Title_Add")
    reader.sees("Title_Add", "Label_GroupName", "Label_Value")
    dialog.refuses("", "", "Msg_DlgGroup_Err2")
    dialog.refuses("A^", "", "Msg_DlgGroup_Err6")
    dialog.refuses("A", "", "Msg_DlgGroup_Err7")
    dialog.refuses("A", "a/b", "Msg_DlgGroup_Err8")
    dialog.refuses("MG", "a:b", "Msg_DlgGroup_Err3")
    dialog.is_full(dialog.name, 50, "Msg_DlgGroup_Err1")
    dialog.is_full(dialog.value, 255, "Msg_DlgGroup_Err5")
    dialog.close()

    reader.app.table().select(1)
    reader.app.button(reader["Button_Edit"]).click()
    dialog = Dialog(reader, "Title_Edit")
    reader.sees("Title_Edit", "Label_GroupName", "Label_Value")
    dialog.close()


def read_the_restart_hint(reader):
    reader.app.button(reader["Button_OK"]).click()
    reader.is_told("Msg_WARNING", secondary="Msg_RESTART_HINTS")
    assert reader.app.wait_exit() == 0


@reading(READ_IN)
def test_everything_is_in_the_language(start, device, locale):
    reader = Reader(start, device, locale)
    read_both_pages(reader)
    read_the_general_pages_messages(reader)
    read_the_group_dialog(reader)
    read_the_restart_hint(reader)


@reading(FURTHER)
def test_both_pages_are_in_the_language(start, device, locale):
    read_both_pages(Reader(start, device, locale))


@reading(READ_IN)
def test_durations_are_in_the_language(start, device, locale):
    device.registry.set("Interval_min", "1501")
    device.registry.set("DelayScope_min", "5")
    reader = Reader(start, device, locale)
    minute, minutes, hour, hours, day, days = (
        reader[f"Time_{unit}"]
        for unit in ("Minute", "Minutes", "Hour", "Hours", "Day", "Days"))
    interval = reader.app.entry(reader["Label_Interval"])
    shown = [f"1 {day} 1 {hour} 1 {minute}", f"5 {minutes}"]
    assert [interval.text, reader.app.entry(reader["Label_Delay"]).text] == shown
    reader.sees(data=shown)
    interval.fill("3062")
    reader.app.key("Return")
    assert interval.text == f"2 {days} 3 {hours} 2 {minutes}"


def test_the_duplicates_message_is_the_same_in_every_language(start, device):
    reader = Reader(start, device, "de_DE.UTF-8")
    reader.turns_to("Page_Groups")
    reader.app.button(reader["Button_Add"]).click()
    dialog = Dialog(reader, "Title_Add")
    dialog.name.fill("P1")
    dialog.value.fill("x")
    dialog.ok.click()
    assert reader.app.message().text == DUPLICATE


@pytest.mark.parametrize("locale", ["ja_JP.UTF-8", "de_DE.UTF-8", "zh_CN", "fr_FR.ISO-8859-1"])
def test_a_locale_that_is_not_installed_is_readable(start, device, locale):
    """Its table is found, but what is not ASCII in it cannot be shown then: the English text takes the
    place of each such text. The toolkit warns of the locale."""
    device.install_languages()
    app = start(locale=locale, env={"LOCPATH": "/nowhere"}, fatal_warnings=False, wait=False)
    written, english = read_texts(language_of(locale)), read_texts("en_US")
    shown = {key: written[key] if written[key].isascii() else english[key] for key in english}
    app.wait_started(shown["Title"])
    read = app.texts()
    assert [key for key in WINDOW + GENERAL if shown[key] not in read] == []
    app.page(shown["Page_Groups"])
    read = app.texts()
    assert [key for key in GROUPS if shown[key] not in read] == []
    app.button(shown["Button_Edit"]).click()
    message = app.message()
    assert message.text == shown["Msg_PageGroups_Edit_Err"]
    message.close()
