"""A program's windows and what is found in them."""
from .accessibility import Node, Role, State
from .waiting import there, whole
from .widgets import Button, Combo, Entry, Radio, Table

# What takes the keyboard focus.
KINDS = {Role.TEXT: "entry", Role.COMBO_BOX: "combo", Role.PUSH_BUTTON: "button",
         Role.RADIO_BUTTON: "radio", Role.PAGE_TAB: "page", Role.TABLE: "table",
         Role.MENU: "list", Role.LABEL: "label", Role.SCROLL_PANE: "scroll pane"}


def label_of_field(node):
    """The label of a text field: its own, or that of the combo box it is in."""
    return node.label or Node(node.app, node.accessible.get_parent()).label


class Window(Node):
    """One window; what is looked for is waited for."""

    @property
    def title(self):
        return self.name

    @property
    def active(self):
        return self.has(State.ACTIVE)

    def _wait_first(self, kind, role, matches, what):
        def first():
            found = self.find(role, State.SHOWING)
            return next((kind(self.app, n.accessible) for n in found if matches(n)), None)
        return self.app.wait_for(first, what)

    def entry(self, label):
        """The text field with the label, one in a combo box included."""
        return self._wait_first(Entry, Role.TEXT, lambda n: label_of_field(n) == label,
                                f"an entry {label!r}")

    def combo(self, label):
        return self._wait_first(Combo, Role.COMBO_BOX, lambda n: n.label == label,
                                f"a combo box {label!r}")

    def button(self, name):
        return self._wait_first(Button, Role.PUSH_BUTTON, lambda n: n.name == name,
                                f"a button {name!r}")

    def radio(self, name):
        return self._wait_first(Radio, Role.RADIO_BUTTON, lambda n: n.name == name,
                                f"a radio button {name!r}")

    def label(self, text):
        """The label that shows exactly this text."""
        return self._wait_first(Node, Role.LABEL, lambda n: n.name == text, f"a label {text!r}")

    def table(self):
        return self._wait_first(Table, Role.TABLE, lambda _: True, "a table")

    @whole
    def pages(self):
        """The titles on the notebook's tabs."""
        return [tab.name for tab in self.find(Role.PAGE_TAB)]

    def page(self, title):
        """Switches to the page by clicking its tab."""
        tab = self._wait_first(Node, Role.PAGE_TAB, lambda n: n.name == title, f"a page {title!r}")
        tab.click()
        self.app.wait_for(lambda: any(child.showing for child in tab.children), f"the page {title!r} to be shown")

    @whole
    def focused(self):
        """What has the keyboard focus, as (kind, name): ("entry", "Pull Interval"); None: nothing."""
        found = self.find(list(KINDS), State.FOCUSED)
        if not found:
            return None
        node = found[-1]
        name = label_of_field(node) if node.role == Role.TEXT else node.label or node.name
        return (KINDS[node.role], name)


class Message(Window):
    """A message dialog."""

    @whole
    def _labels(self):
        return [node.name for node in self.find(Role.LABEL, State.SHOWING)]

    @property
    def text(self):
        return there(next(iter(self._labels()), None))

    @property
    def secondary(self):
        """The second text, "" when there is none."""
        return "".join(self._labels()[1:])

    @property
    def kind(self):
        """"error", "info", "warning" or "question", from the icon."""
        return self.app.message_kind(self.first(Role.ICON, State.SHOWING).name)

    def close(self):
        """Clicks its only button and waits until it is gone."""
        button, = self.find(Role.PUSH_BUTTON, State.SHOWING)
        button.click()
        self.app.wait_gone(self)
