"""All that the program can show, one after another, in any language."""
from harness.accessibility import Role, State

DUPLICATE = 'The group has already existed(notes: "MG = Manual Group"),please retry!'


def every_window(app):
    """Yields (what, window) for each page, for the dialog in both its modes and, by its key, for
    each message, while it is open. Real input opens and closes them all; in the end the program
    has saved and ended. The App is one of languages.start_in."""
    yield "General page", app.active
    yield from _refused_durations(app, "Label_Interval", "Msg_PageGeneral_Interval_Err",
                                  {"10081": 2, "x": 3, "1" * 50: 4, "": 1})
    yield from _refused_durations(app, "Label_Delay", "Msg_PageGeneral_Delay_Err",
                                  {"61": 3, "x": 4, "1" * 50: 1, "": 2})
    yield from _refused_gateway(app, "Label_CurrentGW", "Msg_Current_Gateway_Err")
    yield from _refused_gateway(app, "Label_BackupGW", "Msg_Backup_Gateway_Err")
    app.page(app.written["Page_Groups"])
    yield "Groups page", app.active
    for button, told in (("Edit", "Msg_PageGroups_Edit_Err"), ("Delete", "Msg_PageGroups_Del_Err")):
        app.button(app.written[f"Button_{button}"]).click()
        yield from _message(app, told)
    yield from _adding(app)
    yield from _editing(app)
    app.button(app.written["Button_OK"]).click()
    yield from _message(app, "Msg_WARNING")
    assert app.wait_exit() == 0


def _message(app, key):
    message = app.message()
    assert message.text == app.written.get(key, key)
    yield key, message
    message.close()


def _refused_durations(app, label, message, refused):
    """The last one is refused with a row chosen in its place."""
    entry = app.entry(app.written[label])
    for text, number in refused.items():
        entry.fill("")  # a full field takes nothing else
        entry.fill(text)
        app.key("Left" if len(text) == 50 else "Return")
        yield from _message(app, f"{message}{number}")


def _refused_gateway(app, label, message):
    entry = app.entry(app.written[label])
    entry.fill("255.255.255.255")
    app.button(app.written["Button_OK"]).click()
    yield from _message(app, message)
    entry.fill("10.0.0.1")


def _open_dialog(app, button, title):
    app.button(app.written[button]).click()
    return app.dialog(app.written[title])


def _dialog_buttons(dialog):
    """OK and Cancel, whatever the toolkit calls them."""
    return sorted(dialog.find(Role.PUSH_BUTTON, State.SHOWING), key=lambda button: button.box)


def _adding(app):
    dialog = _open_dialog(app, "Button_Add", "Title_Add")
    yield "Add dialog", dialog
    name = dialog.entry(app.written["Label_GroupName"])
    value = dialog.entry(app.written["Label_Value"])
    ok, cancel = _dialog_buttons(dialog)
    for typed_name, typed_value, told in (
            ("", "", "Msg_DlgGroup_Err2"), ("A^", "", "Msg_DlgGroup_Err6"),
            ("A", "", "Msg_DlgGroup_Err7"), ("A", "a/b", "Msg_DlgGroup_Err8"),
            ("MG", "a:b", "Msg_DlgGroup_Err3"), ("P1", "x", DUPLICATE)):
        name.fill(typed_name)
        value.fill(typed_value)
        ok.click()
        yield from _message(app, told)
        app.dialog(dialog.title)
    for entry, length, told in ((name, 50, "Msg_DlgGroup_Err1"), (value, 255, "Msg_DlgGroup_Err5")):
        entry.paste("x" * length)
        app.key("x")
        yield from _message(app, told)
        app.dialog(dialog.title)
    cancel.click()
    app.wait_gone(dialog)


def _editing(app):
    app.table().select(0)
    dialog = _open_dialog(app, "Button_Edit", "Title_Edit")
    yield "Edit dialog", dialog
    _, cancel = _dialog_buttons(dialog)
    cancel.click()
    app.wait_gone(dialog)
