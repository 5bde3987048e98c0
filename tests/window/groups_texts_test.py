"""Every text of the Groups page and its dialog is the table's, but one."""
import pytest

from groups import DUPLICATE, open_groups
from languages import install_made_up, made_up

KEYS = {
    "Page_Groups": ["Radio_DHCPGroups", "Radio_StaticGroups", "Frame_StaticGroups",
                    "TreeView_Col1", "TreeView_Col2", "Button_Add", "Button_Edit",
                    "Button_Delete"],
    "Dialog_Group": ["Title_Add", "Title_Edit", "Label_GroupName", "Label_Value"],
    "Message": ["Msg_DlgGroup_Err1", "Msg_DlgGroup_Err2", "Msg_DlgGroup_Err3",
                "Msg_DlgGroup_Err5", "Msg_DlgGroup_Err6", "Msg_DlgGroup_Err7",
                "Msg_DlgGroup_Err8", "Msg_PageGroups_Edit_Err", "Msg_PageGroups_Del_Err"],
}


@pytest.fixture
def app(start, device):
    install_made_up(device, KEYS)
    return open_groups(start, device, 'P1="lab"')


def button(app, key):
    return app.button(made_up(key))


def test_the_page_is_translated(app):
    for key in ("Radio_DHCPGroups", "Radio_StaticGroups"):
        assert app.radio(made_up(key)).showing
    for key in ("Button_Add", "Button_Edit", "Button_Delete"):
        assert button(app, key).showing
    assert app.label(made_up("Frame_StaticGroups")).showing
    assert app.table().columns == [made_up("TreeView_Col1"), made_up("TreeView_Col2")]


def test_the_dialog_is_translated(app):
    for key, title in (("Button_Add", "Title_Add"), ("Button_Edit", "Title_Edit")):
        if key == "Button_Edit":
            app.table().select(0)
        button(app, key).click()
        dialog = app.dialog(made_up(title))
        for label in ("Label_GroupName", "Label_Value"):
            assert dialog.entry(made_up(label)).showing
        dialog.button("Cancel").click()
        app.wait_gone(dialog)


@pytest.mark.parametrize("key, text", [
    ("Button_Edit", "Msg_PageGroups_Edit_Err"), ("Button_Delete", "Msg_PageGroups_Del_Err")])
def test_the_pages_messages_are_translated(app, key, text):
    button(app, key).click()
    assert app.message().text == made_up(text)


@pytest.mark.parametrize("name, value, text", [
    ("", "", "Msg_DlgGroup_Err2"), ("mg", "x:y", "Msg_DlgGroup_Err3"),
    ("a=b", "", "Msg_DlgGroup_Err6"), ("a", "", "Msg_DlgGroup_Err7"),
    ("a", "x/y", "Msg_DlgGroup_Err8"), ("p1", "x", None)])
def test_the_refusals_are_translated_but_for_the_duplicate(app, name, value, text):
    button(app, "Button_Add").click()
    dialog = app.dialog(made_up("Title_Add"))
    dialog.entry(made_up("Label_GroupName")).fill(name)
    dialog.entry(made_up("Label_Value")).fill(value)
    dialog.button("OK").click()
    assert app.message().text == (made_up(text) if text else DUPLICATE)


@pytest.mark.parametrize("label, length, text", [
    ("Label_GroupName", 50, "Msg_DlgGroup_Err1"), ("Label_Value", 255, "Msg_DlgGroup_Err5")])
def test_the_messages_of_full_fields_are_translated(app, label, length, text):
    button(app, "Button_Add").click()
    dialog = app.dialog(made_up("Title_Add"))
    entry = dialog.entry(made_up(label))
    entry.paste("x" * length)
    app.key("x")
    assert app.message().text == made_up(text)
