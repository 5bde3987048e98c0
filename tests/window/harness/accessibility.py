"""The accessibility bus of this process and the nodes that programs show on it.

There is one bus for all desktops, because the client library holds on to the first one it meets.
The library caches nothing as long as nobody runs its event loop, so everything read is fresh.
"""
import os
import tempfile
import urllib.parse

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402

from .processes import end_helper, read_announced, start_helper  # noqa: E402
from .waiting import LIMIT, NOT_THERE, Gone, there, whole  # noqa: E402

CONFIGURATION = "/usr/share/defaults/at-spi2/accessibility.conf"
REGISTRY = "/usr/libexec/at-spi2-registryd"
Role = Atspi.Role
State = Atspi.StateType
# All that find() can be asked for but the parts of a table.
OUTSIDE_TABLES = [Role(number) for number in range(1, min(Role.LAST_DEFINED, 128))
                  if number not in (Role.TABLE_CELL, Role.TABLE_COLUMN_HEADER)]


def _escaped(path):
    """A path as it stands in a bus's address."""
    return urllib.parse.quote(path).replace("~", "%7E")


class Bus:
    """A private D-Bus that serves as session bus and accessibility bus, with its registry."""

    def __init__(self):
        self._directory = tempfile.TemporaryDirectory(prefix="korv-bus-")
        log = os.path.join(self._directory.name, "log")
        plain = {k: v for k, v in os.environ.items() if k != "DISPLAY"}
        self._daemon, address = read_announced(
            ["dbus-daemon", f"--config-file={CONFIGURATION}", "--nofork", "--nopidfile",
             f"--address=unix:dir={_escaped(self._directory.name)}"],
            lambda writer: [f"--print-address={writer}"], plain, log)
        # Programs open sockets of their own below the runtime directory.
        self.environment = {"DBUS_SESSION_BUS_ADDRESS": address, "AT_SPI_BUS_ADDRESS": address,
                            "XDG_RUNTIME_DIR": self._directory.name}
        # Started here: the bus would start it with a session manager to report to, and wait for it.
        self._registry = start_helper([REGISTRY], {**plain, **self.environment}, log)
        os.environ.update(self.environment)
        Atspi.init()
        # A program that waits for one of its commands answers late, but it does answer.
        Atspi.set_timeout(int(LIMIT * 1000), int(LIMIT * 1000))

    def close(self):
        end_helper(self._registry)
        end_helper(self._daemon)
        self._directory.cleanup()


def program(pid):
    """The root node of the process, None while there is none."""
    desktop = Atspi.get_desktop(0)
    for index in range(desktop.get_child_count()):
        root = desktop.get_child_at_index(index)
        if root and root.get_process_id() == pid:
            return root
    return None


class Node:
    """One element of a window; what is read of one that is not there is an error of NOT_THERE."""

    def __init__(self, app, accessible):
        self.app = app
        self.accessible = there(accessible)

    def __repr__(self):
        try:
            return f"<{type(self).__name__} {self.role.value_nick} {self.name!r}>"
        except NOT_THERE:
            return f"<{type(self).__name__} that has gone>"

    @property
    def role(self):
        return self.accessible.get_role()

    @property
    def name(self):
        name = self.accessible.get_name()
        return self._told(name, name)

    @property
    @whole
    def label(self):
        """The text of the label that names the node, "" when there is none."""
        for relation in there(self.accessible.get_relation_set()):
            if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY:
                return Node(self.app, relation.get_target(0)).name
        return ""

    def has(self, state):
        return there(self.accessible.get_state_set()).contains(state)

    @property
    def showing(self):
        return self.has(State.SHOWING)

    @property
    def sensitive(self):
        return self.has(State.SENSITIVE)

    @property
    def focused(self):
        return self.has(State.FOCUSED)

    @property
    def box(self):
        """(x, y, width, height) on the screen."""
        box = Atspi.Component.get_extents(self.accessible, Atspi.CoordType.SCREEN)
        return self._told((box.x, box.y, box.width, box.height), box.width > 0)

    def _told(self, value, is_more_than_nothing):
        """The value; nothing, an empty text say, is also what is told of a node that has gone."""
        if not is_more_than_nothing and self.has(State.DEFUNCT):
            raise Gone()
        return value

    @property
    @whole
    def children(self):
        return [Node(self.app, self.accessible.get_child_at_index(index))
                for index in range(self.accessible.get_child_count())]

    @whole
    def find(self, roles, *states):
        """The nodes below with that role (or one of several) and all the states, in their order.

        The program looks for them itself, which is quick, but it may crash when table cells are
        among them: it has forgotten those before it can name them. Ask a Table instead.
        """
        roles = roles if isinstance(roles, list) else [roles]
        assert Role.TABLE_CELL not in roles
        rule = Atspi.MatchRule.new(
            Atspi.StateSet.new(list(states)), Atspi.CollectionMatchType.ALL,
            {}, Atspi.CollectionMatchType.ALL, roles, Atspi.CollectionMatchType.ANY,
            [], Atspi.CollectionMatchType.ALL, False)
        matches = Atspi.Collection.get_matches(self.accessible, rule,
                                               Atspi.CollectionSortOrder.CANONICAL, 0, True)
        return [Node(self.app, match) for match in there(matches)]

    def first(self, roles, *states):
        """The first of those that find() finds."""
        return there(next(iter(self.find(roles, *states)), None))

    @property
    def text(self):
        """What stands in a text field."""
        text = Atspi.Text.get_text(self.accessible, 0, -1)
        return self._told(text, text)

    @whole
    def texts(self):
        """All texts that can be read in the node, in their order."""
        found = [self.name]
        for node in self.find(OUTSIDE_TABLES, State.SHOWING):
            found.append(node.name)
            if node.role == Role.TEXT:
                found.append(node.text)
            elif node.role == Role.TABLE:
                found += [part.name for part in node.children if part.showing]
        return [text for text in found if text]

    def click(self, button=1, settle=True):
        """Clicks the middle of the node with the mouse."""
        x, y, width, height = self.resting_box()
        self.app.click_at(x + width // 2, y + height // 2, button, settle)

    def resting_box(self):
        """The box when the window manager has put the window where it stays."""
        self.app.ready_for_input()

        def rests():
            box = self.box
            self.app.desktop.settle_manager()
            return box == self.box and box
        return self.app.wait_for(rests, lambda: f"{self!r} to stand still")

    def take_focus(self):
        """Gives the node the keyboard focus without passing through other fields."""
        self.app.ready_for_input()
        Atspi.Component.grab_focus(self.accessible)
        self.app.wait_for(lambda: self.focused, lambda: f"the focus on {self!r}")

    def activate(self):
        """Does what a press of the node does, as only an assistive tool can where another window
        keeps the mouse and the keyboard away from it. Returns when the program has dealt with it, which
        it does only after it has answered."""
        Atspi.Action.do_action(self.accessible, 0)
        self.app.settled()
