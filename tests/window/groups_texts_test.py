"""Every text of the Groups page and its dialog is the table's, but one."""
import pytest

from groups import DUPLICATE, open_groups

KEYS = {
    "Page_Groups": ["Radio_DHCPGroups", "Radio_StaticGroups", "Frame_StaticGroups",
                    "TreeView_Col1", "TreeView_Col2", "Button_Add", "Button_Edit",
                    "Button_Delete"],
    "Dialog_Group": ["Title_Add", "Title_Edit", "Label_GroupName", "Label_Value"],
    "Message": ["Msg_DlgGroup_Err1", "Msg_DlgGroup_Err2", "Msg_DlgGroup_Err3",
                "Msg_DlgGroup_Err5", "Msg_DlgGroup_Err6", "Msg_DlgGroup_Err7",
                "Msg_DlgGroup_Err8", "Msg_PageGroups_Edit_Err", "Msg_PageGroups_Del_Err"],
}


def translated(section, key):
    return f"\u00fc {section} {key}".replace("_", " ")  # column titles take it for a mnemonic


@pytest.fixture
def app(start, device):
    table = "".join(f"[{section}]\n" + "".join(f"{key}={translated(section, key)}\n"
                                               for key in keys) for section, keys in KEYS.items())
    device.write("/etc/vexaagent/i18n/configui/C.UTF-8.prop", table)
    return open_groups(start, device, 'P1="lab"')


def button(app, key):
    return app.button(translated("Page_Groups", key))


def test_the_page_is_translated(app):
    for key in ("Radio_DHCPGroups", "Radio_StaticGroups"):
        assert app.radio(translated("Page_Groups", key)).showing
    for key in ("Button_Add", "Button_Edit", "Button_Delete"):
        assert button(app, key).showing
    assert app.label(translated("Page_Groups", "Frame_StaticGroups")).showing
    assert app.table().columns == [translated("Page_Groups", key)
                                   for key in ("TreeView_Col1", "TreeView_Col2")]


def test_the_dialog_is_translated(app):
    for key, title in (("Button_Add", "Title_Add"), ("Button_Edit", "Title_Edit")):
        if key == "Button_Edit":
            app.table().select(0)
        button(app, key).click()
        dialog = app.dialog(translated("Dialog_Group", title))
        for label in ("Label_GroupName", "Label_Value"):
            assert dialog.entry(translated("Dialog_Group", label)).showing
        dialog.button("Cancel").click()
        app.wait_gone(dialog)


@pytest.mark.parametrize("key, text", [
    ("Button_Edit", "Msg_PageGroups_Edit_Err"), ("Button_Delete", "Msg_PageGroups_Del_Err")])
def test_the_pages_messages_are_translated(app, key, text):
    button(app, key).click()
    assert app.message().text == translated("Message", text)


@pytest.mark.parametrize("name, value, text", [
    ("", "", "Msg_DlgGroup_Err2"), ("mg", "x:y", "Msg_DlgGroup_Err3"),
    ("a=b", "", "Msg_DlgGroup_Err6"), ("a", "", "Msg_DlgGroup_Err7"),
    ("a", "x/y", "Msg_DlgGroup_Err8"), ("p1", "x", None)])
def test_the_refusals_are_translated_but_for_the_duplicate(app, name, value, text):
    button(app, "Button_Add").click()
    dialog = app.dialog(translated("Dialog_Group", "Title_Add"))
    dialog.entry(translated("Dialog_Group", "Label_GroupName")).fill(name)
    dialog.entry(translated("Dialog_Group", "Label_Value")).fill(value)
    dialog.button("OK").click()
    assert app.message().text == (translated("Message", text) if text else DUPLICATE)


@pytest.mark.parametrize("label, length, text", [
    ("Label_GroupName", 50, "Msg_DlgGroup_Err1"), ("Label_Value", 255, "Msg_DlgGroup_Err5")])
def test_the_messages_of_full_fields_are_translated(app, label, length, text):
    button(app, "Button_Add").click()
    dialog = app.dialog(translated("Dialog_Group", "Title_Add"))
    entry = dialog.entry(translated("Dialog_Group", label))
    app.set_clipboard("x" * length)
    entry.take_focus()
    app.key("ctrl+v")
    app.wait_for(lambda: len(entry.text) == length, "the text to be pasted")
    app.key("x")
    assert app.message().text == translated("Message", text)
