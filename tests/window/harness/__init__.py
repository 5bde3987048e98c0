"""Drives the real program on a simulated device, as a person with a screen reader would.

    def test_ok_saves_the_backup_gateway(start, device):
        device.registry.set("BackupGateway", "10.0.0.1")
        app = start()
        app.entry("Backup Gateway").fill("10.0.0.2")
        app.button("OK").click()
        message = app.message()
        assert (message.kind, message.text) == ("info", "Warning")
        message.close()
        assert app.wait_exit() == 0
        assert device.registry.committed()["BackupGateway"] == b"10.0.0.2"

Fixtures (../conftest.py):
  device        a fresh SimDevice of the build in KORV_BUILD_DIR (build/release)
  start(...)    starts the program on it and waits for its window; returns an App. Called twice, two
                programs share device and desktop. Arguments: locale="C.UTF-8"; env={...}, a value of
                None removes the variable; fatal_warnings=False lets the toolkit complain;
                wait=False waits for nothing, "mapped" not for the window to be active; title= of
                the window to wait for; desktop=; device=.
  desktop       the desktop of this run: 1024x768, openbox, DejaVu Sans 10
  desktop_with(manager=, size=, font=)
                another one, made once for each kind: manager "openbox", "metacity", "xfwm4", "icewm", "jwm"
                or None

A test fails when the toolkit prints a warning or a critical, when a sanitizer reports something, and
when a signal ends the program (wait_crash() is for one that is meant). A failed test tells what was
to be seen and what the program printed, and leaves a picture.

App finds things in the window in use (the active one): entry, combo, button, radio, label, page,
table, focused. A Window, Message or dialog has the same for itself: app.dialog("Edit Group")
.entry("Value"). Fields are known by their label: its relation to the field, or to the combo box that
the field is in; without the relation they are not found, as a screen reader would not find them.

Input goes through the X server: click, key, type, wheel, set_clipboard. It returns when the program
has dealt with it, drawing and focus included, so what is read next is true: no waiting in tests for
what a click does. What comes by itself or from elsewhere (the refresh, a paste, another window) is
to be waited for: app.wait_for(lambda: ..., "what"). Never sleep. While the program is in a command
that does not end, input with settle=False returns at once, and reading waits.

Two things to know. A selected text is the primary selection: set_clipboard() before select_all().
An App's input waits until its program has the keyboard; to turn to a window of another program, and
to look at windows as the window manager does, there is desktop: windows(pid=), stacking(),
active_window(), input_focus(), activate(), iconify(), shade(), go_to_workspace(), click_at().
"""
