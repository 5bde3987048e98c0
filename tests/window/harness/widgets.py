"""What is in a window: entries, combo boxes, buttons, tables, by the names a user reads."""
from gi.repository import Atspi

from .accessibility import Node, Role, State
from .waiting import there, whole


class Entry(Node):
    """A text field."""

    @property
    def caret(self):
        """The caret's position in characters."""
        return Atspi.Text.get_caret_offset(self.accessible)

    @property
    @whole
    def selection(self):
        """(start, end) of the selected text in characters, None when nothing is selected."""
        if not Atspi.Text.get_n_selections(self.accessible):
            return None
        part = there(Atspi.Text.get_selection(self.accessible, 0))
        return (part.start_offset, part.end_offset)

    @whole
    def point(self, offset):
        """The middle of a character on the screen; after the end of the text, that of the last one."""
        box = there(Atspi.Text.get_character_extents(
            self.accessible, min(offset, len(self.text) - 1), Atspi.CoordType.SCREEN))
        return box.x + box.width // 2, box.y + box.height // 2

    def select_all(self):
        """Takes the focus and selects the whole text, without a key press. The selected text
        becomes the primary selection, as always."""
        self.take_focus()
        if self.selection:
            Atspi.Text.remove_selection(self.accessible, 0)
        length = len(self.text)
        if length:
            Atspi.Text.add_selection(self.accessible, 0, length)
            self.app.wait_for(lambda: self.selection == (0, length),
                              lambda: f"all of {self!r} selected")

    def fill(self, text):
        """Types the text in place of what is there."""
        self.select_all()
        if text:
            self.app.type(text)
        else:
            self.app.key("BackSpace")

    def paste(self, text):
        """Puts the text in place of what is there from the clipboard, with two key presses."""
        self.app.set_clipboard(text)
        self.take_focus()
        self.app.key("ctrl+a")
        self.app.key("ctrl+v")
        self.app.wait_for(lambda: self.text == text, f"{text!r} to be pasted")


class Button(Node):
    """A push button."""

    def press(self):
        """Presses the button with the keyboard."""
        self.take_focus()
        self.app.key("space")


class Radio(Button):
    """A radio button."""

    @property
    def active(self):
        return self.has(State.CHECKED)


class Combo(Node):
    """A combo box, with or without an entry."""

    @property
    def entry(self):
        return Entry(self.app, self.first(Role.TEXT).accessible)

    def _items(self):
        return self.find(Role.MENU_ITEM)

    @whole
    def rows(self):
        """The texts to choose from."""
        return [item.name for item in self._items()]

    @property
    @whole
    def active(self):
        """The index of the chosen row, -1 when none is (as after typing into the entry)."""
        if not Atspi.Selection.get_n_selected_children(self.accessible):
            return -1
        return there(Atspi.Selection.get_selected_child(self.accessible, 0)).get_index_in_parent()

    @property
    @whole
    def shown(self):
        """The text in the entry, or of the chosen row of a combo box without one ("" for none)."""
        if self.find(Role.TEXT):
            return self.entry.text
        return self.rows()[self.active] if self.active >= 0 else ""

    def take_focus(self):
        """Gives the focus to the entry, or to the button of a combo box without one (which takes it
        only by opening the list)."""
        if self.find(Role.TEXT):
            self.entry.take_focus()
        else:
            self.open()
            self.app.key("Escape")

    def open(self):
        """Opens the list with the mouse."""
        x, y, width, height = self.resting_box()
        self.app.click_at(x + width - 10, y + height // 2)
        assert self.is_open, f"the list of {self!r} did not open"

    @property
    def is_open(self):
        return self.first(Role.MENU).showing

    def pick_with_mouse(self, text):
        """Opens the list and clicks the row with the text."""
        row = self.rows().index(text)
        self.open()
        self._items()[row].click()
        assert not self.is_open, f"the list of {self!r} did not close"

    def pick_with_keys(self, text):
        """Opens the list from the keyboard and walks to the row with the text."""
        row = self.rows().index(text)
        self.take_focus()
        for key in ["alt+Down", "Home", *["Down"] * row, "Return"]:
            self.app.key(key)
        assert not self.is_open, f"the list of {self!r} did not close"


class Table(Node):
    """The list of groups."""

    @property
    @whole
    def columns(self):
        """The columns' titles."""
        count = Atspi.Table.get_n_columns(self.accessible)
        return [Node(self.app, Atspi.Table.get_column_header(self.accessible, column)).name
                for column in range(count)]

    @property
    @whole
    def rows(self):
        """A list of the cells' texts for each row."""
        columns = range(Atspi.Table.get_n_columns(self.accessible))
        return [[self.cell(row, column).name for column in columns]
                for row in range(Atspi.Table.get_n_rows(self.accessible))]

    @property
    def selected(self):
        """The indices of the selected rows."""
        return list(there(Atspi.Table.get_selected_rows(self.accessible)))

    @whole
    def cell(self, row, column):
        return Node(self.app, Atspi.Table.get_accessible_at(self.accessible, row, column))

    def select(self, row):
        """Clicks the row with the mouse, after scrolling to it."""
        self.scroll_to(row)
        self.cell(row, 0).click()
        self.app.wait_for(lambda: self.selected == [row], f"row {row} to be selected")

    def scroll_to(self, row):
        """Turns the wheel until the whole row is to be seen."""
        view = Node(self.app, self.accessible.get_parent())
        _, top, _, height = view.box
        for _ in range(len(self.rows)):  # a notch moves by more than a row
            _, y, _, row_height = self.cell(row, 0).box
            if top <= y and y + row_height <= top + height:
                return
            self.app.wheel(view, "up" if y < top else "down")
        raise AssertionError(f"row {row} is out of reach")
