"""The whole program for someone who hears it, and for someone without a mouse."""
import pytest

from every_window import every_window
from groups import ADD, EDIT, GroupDialog, add, committed, edit, open_groups, rows
from harness.accessibility import Role, State
from harness.widgets import Entry
from languages import start_in

# What these are called is what they hold, which does not say what they are for.
HOLDERS = {Role.TEXT, Role.COMBO_BOX}


def all_below(node):
    yield node
    for child in node.children:
        if child.showing:
            yield from all_below(child)


def unnamed(window):
    """What can have the focus in the window without saying what it is: a field without a label, or
    anything else with neither label nor name. Combo boxes do not say that they can have it."""
    return [node for node in all_below(window)
            if (node.has(State.FOCUSABLE) or node.role == Role.COMBO_BOX)
            and not (node.label or (node.name and node.role not in HOLDERS))]


class Pretended:
    """A node of a window that the program does not have."""

    def __init__(self, role, *children, name="", label="", focusable=True, showing=True):
        self.role, self.children = role, children
        self.name, self.label = name, label
        self.showing = showing
        self.states = {State.FOCUSABLE} if focusable else set()

    def has(self, state):
        return state in self.states


PRETENDED = {
    "a button": (Pretended(Role.PUSH_BUTTON), True),
    "a named button": (Pretended(Role.PUSH_BUTTON, name="OK"), False),
    "a labelled button": (Pretended(Role.PUSH_BUTTON, label="Start"), False),
    "an entry": (Pretended(Role.TEXT), True),
    "a named entry": (Pretended(Role.TEXT, name="10.0.0.1"), True),
    "a labelled entry": (Pretended(Role.TEXT, label="Gateway"), False),
    "a combo box that shows its row": (Pretended(Role.COMBO_BOX, name="1 hour", focusable=False),
                                       True),
    "a labelled combo box": (Pretended(Role.COMBO_BOX, label="Delay", focusable=False), False),
    "a list": (Pretended(Role.TABLE), True),
    "tabs": (Pretended(Role.PAGE_TAB_LIST), True),
    "what cannot have the focus": (Pretended(Role.ICON, focusable=False), False),
    "what is on another page": (Pretended(Role.PUSH_BUTTON, showing=False), False)}


@pytest.mark.parametrize("node, is_unnamed", PRETENDED.values(), ids=PRETENDED)
def test_the_walk_finds_what_has_no_name(node, is_unnamed):
    window = Pretended(Role.FRAME, Pretended(Role.FILLER, node, focusable=False), name="Window")
    assert unnamed(window) == ([node] if is_unnamed else [])


def test_whatever_can_have_the_focus_says_what_it_is(start, device):
    app = start_in("en_US.UTF-8", start, device)
    found, shown = {}, []
    for what, window in every_window(app):
        shown.append(what)
        found[what] = [repr(node) for node in unnamed(window)]  # before it is closed
    assert {what: nodes for what, nodes in found.items() if nodes} == {}
    assert {"General page", "Groups page", "Add dialog", "Edit dialog"} < set(shown)
    messages = {key for key in app.written if key.startswith("Msg_")}
    assert messages - set(shown) == {"Msg_RESTART_HINTS"}, "stands below the warning"


def round_trip(app, key):
    """What gets the focus, one after another, as the key is pressed until it is back."""
    first = app.focused()
    reached = [first]
    app.key(key)
    while app.focused() != first:
        reached.append(app.focused())
        app.key(key)
    return reached


def expect_order(app, *order):
    """Tab goes once around the window in this order, shift and Tab the other way."""
    assert round_trip(app, "Tab") == list(order)
    assert round_trip(app, "shift+Tab") == [order[0], *order[:0:-1]]


def test_tab_goes_through_the_general_page_as_it_is_read(start):
    expect_order(start(), ("page", "General"), ("entry", "Current Gateway"),
                 ("entry", "Backup Gateway"), ("entry", "Pull Interval"),
                 ("combo", "Pull Interval"), ("combo", "Log Level"), ("entry", "Delay Scope"),
                 ("combo", "Delay Scope"), ("button", "OK"), ("button", "Cancel"))


def test_tab_goes_through_the_groups_page_as_it_is_read(start, device):
    app = open_groups(start, device)
    expect_order(app, ("page", "Groups"), ("radio", "Use Static Custom Groups"),
                 ("table", "Static Custom Groups"), ("button", "Add..."), ("button", "Edit..."),
                 ("button", "Delete"), ("button", "OK"), ("button", "Cancel"))


def test_tab_leaves_out_what_cannot_be_used(start, device):
    device.registry.set("GetGroupsFromDHCP", "1")
    expect_order(open_groups(start, device), ("page", "Groups"),
                 ("radio", "Get Pre-Assign Groups from DHCP Tag"), ("button", "OK"),
                 ("button", "Cancel"))


def test_tab_goes_through_the_dialog_as_it_is_read(start, device):
    fields = [("entry", "Group Name"), ("combo", "Group Name")]
    rest = [("entry", "Value"), ("button", "OK"), ("button", "Cancel")]
    app = open_groups(start, device)
    dialog = add(app)
    expect_order(app, *fields, *rest)
    dialog.cancel()
    edit(app, 1)
    expect_order(app, *rest, *fields)


def test_the_list_can_be_read_cell_by_cell(start, device):
    app = open_groups(start, device, 'MG="floor2";P1="lab";SALES="north"')
    table = app.table()
    assert table.columns == ["Group Name", "Value"]
    assert rows(app) == [("Manual Group", "floor2"), ("P1", "lab"), ("SALES", "north")]
    cell = table.cell(1, 1)
    assert cell.role == Role.TABLE_CELL
    assert Entry(app, cell.accessible).text == "lab", "also letter by letter"


def test_the_list_tells_which_row_is_selected(start, device):
    app = open_groups(start, device, 'MG="floor2";P1="lab";SALES="north"')
    table = app.table()

    def selected_cells():
        return [table.cell(row, column).name for row in range(3) for column in range(2)
                if table.cell(row, column).has(State.SELECTED)]

    assert (table.selected, selected_cells()) == ([], [])
    table.select(2)
    assert (table.selected, selected_cells()) == ([2], ["SALES", "north"])
    app.key("Up")
    assert (table.selected, selected_cells()) == ([1], ["P1", "lab"])
    assert table.cell(1, 0).focused


def press_until(app, key, reached):
    for _ in range(20):
        if reached():
            return
        app.key(key)
    pytest.fail(f"{key} leads only to {app.focused()}")


def tab_to(app, *target):
    press_until(app, "Tab", lambda: app.focused() == target)


def tab_to_row(app, row):
    tab_to(app, "table", "Static Custom Groups")
    press_until(app, "Down", lambda: app.table().selected == [row])


def press(app, button):
    tab_to(app, "button", button)
    app.key("space")


def test_the_keyboard_alone_does_everything(start, device):
    device.registry.set("GetGroupsFromDHCP", "1")
    device.registry.set("PreAssignGroups", 'P1="lab";P2="hall"')
    app = start()
    tab_to(app, "entry", "Backup Gateway")
    app.type("10.0.0.1")
    tab_to(app, "combo", "Log Level")
    app.key("Down")

    tab_to(app, "page", "General")
    app.key("Right")
    tab_to(app, "radio", "Get Pre-Assign Groups from DHCP Tag")
    app.key("Down")
    assert app.focused() == ("radio", "Use Static Custom Groups")

    press(app, "Add...")
    dialog = GroupDialog(app, ADD)
    app.type("sales")
    tab_to(app, "entry", "Value")
    app.type("north")
    press(app, "OK")
    app.wait_gone(dialog.window)

    tab_to_row(app, 1)
    press(app, "Edit...")
    dialog = GroupDialog(app, EDIT)
    assert dialog.texts == ("P2", "hall")
    tab_to(app, "combo", "Group Name")
    app.key("Down")
    press(app, "OK")
    app.wait_gone(dialog.window)

    tab_to_row(app, 0)
    press(app, "Delete")
    assert rows(app) == [("P3", "hall"), ("SALES", "north")]

    press(app, "OK")
    app.message()
    app.key("space")
    assert app.wait_exit() == 0
    assert committed(device) == 'P3="hall";SALES="north"'
    assert committed(device, "BackupGateway") == "10.0.0.1"
    assert committed(device, "LogLevel") == "1"
    assert committed(device, "GetGroupsFromDHCP") == "0"
