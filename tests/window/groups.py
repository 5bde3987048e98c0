"""The Groups page and its dialog as a person uses them; bytes in the registry, texts on screen."""
import os

from harness.app import TITLE

DHCP = "Get Pre-Assign Groups from DHCP Tag"
STATIC = "Use Static Custom Groups"
ADD, EDIT = "Add New Group", "Edit Group"
DUPLICATE = 'The group has already existed(notes: "MG = Manual Group"),please retry!'
WELL_KNOWN = ["Manual Group", "P1", "P2", "P3", "P4", "P5", "P6"]


def open_groups(start, device, stored=None, **options):
    """Starts the program on a device with these static groups and turns to their page."""
    if stored is not None:
        device.registry.set("PreAssignGroups", stored)
    app = start(**options)
    app.page("Groups")
    return app


def rows(app):
    return [tuple(row) for row in app.window(TITLE).table().rows]


def committed(device, name="PreAssignGroups"):
    return os.fsdecode(device.registry.committed()[name])


def save(app):
    """OK, and the hint closed."""
    app.button("OK").click()
    app.message().close()
    assert app.wait_exit() == 0


def saved(app, device, name="PreAssignGroups"):
    save(app)
    return committed(device, name)


class GroupDialog:
    """The dialog, just opened."""

    def __init__(self, app, title):
        self.app = app
        self.window = app.dialog(title)
        self.name = self.window.combo("Group Name")
        self.value = self.window.entry("Value")

    @property
    def texts(self):
        return (self.name.entry.text, self.value.text)

    def fill(self, name=None, value=None):
        """Types into the fields that are given."""
        if name is not None:
            self.name.entry.fill(name)
        if value is not None:
            self.value.fill(value)
        return self

    def ok(self):
        self.window.button("OK").click()

    def accept(self):
        self.ok()
        self.app.wait_gone(self.window)

    def cancel(self):
        self.window.button("Cancel").click()
        self.app.wait_gone(self.window)

    def refused(self):
        """Presses OK; the text of the error message, after closing it."""
        self.ok()
        return self.close_message()

    def close_message(self):
        message = self.app.message()
        assert message.kind == "error"
        text = message.text
        message.close()
        self.app.dialog(self.window.title)
        return text


def add(app):
    app.button("Add...").click()
    return GroupDialog(app, ADD)


def edit(app, row):
    app.table().select(row)
    app.button("Edit...").click()
    return GroupDialog(app, EDIT)


def add_group(app, name, value):
    add(app).fill(name, value).accept()
