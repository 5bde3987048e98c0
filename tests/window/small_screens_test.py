"""Every window of the program on a screen of 800 x 600 with large type, in each shipped language.

The frames keep their 400 pixels however large the type is, so at 18 points some texts in them are
cut; at 10 points none is. The list is left out: its columns are 135 pixels wide, and it scrolls.
"""
import itertools

import gi
import pytest
from gi.repository import Atspi

gi.require_version("Pango", "1.0")
gi.require_version("PangoCairo", "1.0")
from gi.repository import Pango, PangoCairo  # noqa: E402

from every_window import every_window  # noqa: E402
from harness.accessibility import Role  # noqa: E402
from languages import start_in  # noqa: E402

SCREEN = (800, 600)
SMALL, LARGE = "DejaVu Sans 10", "DejaVu Sans 18"
ENTRY_FRAME, ROUNDING = 2, 1  # pixels
# The kinds of parts of a window that must not overlap.
PARTS = {Role.LABEL, Role.ICON, Role.TEXT, Role.COMBO_BOX, Role.PUSH_BUTTON, Role.RADIO_BUTTON,
         Role.PAGE_TAB, Role.SCROLL_PANE}
# Those that cannot have a text, only parts of which some do.
TEXTLESS = {Role.FILLER, Role.PANEL, Role.ICON, Role.COMBO_BOX, Role.PAGE_TAB_LIST, Role.SCROLL_PANE}

in_each_language = pytest.mark.parametrize(
    "language", ["en_US", "de_DE", "es_ES", "fr_FR", "ja_JP", "zh_CN"])


@pytest.fixture
def begin(start, device, desktop_with):
    def begin_in(language, font):
        return start_in(f"{language}.UTF-8", start, device,
                        desktop=desktop_with(size=SCREEN, font=font))
    return begin_in


def is_inside(box, outer):
    (x, y, width, height), (left, top, outer_width, outer_height) = box, outer
    return left <= x and x + width <= left + outer_width and \
        top <= y and y + height <= top + outer_height


def overlap(box, other):
    (x, y, width, height), (left, top, other_width, other_height) = box, other
    return x < left + other_width and left < x + width and \
        y < top + other_height and top < y + height


def shrunk(box, border):
    x, y, width, height = box
    return (x + border, y + border, width - 2 * border, height - 2 * border)


class Part:
    """Something to be seen: its role, and that of the node around it; its place; its text, "" for
    none, and the box in which that is laid out, cut off or not."""

    def __init__(self, node, parent_role):
        self.role, self.parent_role, self.box = node.role, parent_role, node.box
        self.text, self.text_box = text_of(node, self.role, self.box)

    def __repr__(self):
        return f"<{self.role.value_nick} {self.text!r} at {self.box}, its text at {self.text_box}>"


def seen_in(node, role):
    """Everything to be seen below the node of that role, except what is in the list."""
    for child in node.children:
        if child.showing:
            part = Part(child, role)
            yield part
            if part.role != Role.SCROLL_PANE:
                yield from seen_in(child, part.role)


def parts_of(window):
    window.app.settled()
    return list(seen_in(window, window.role))


def room_needed(text, font, language):
    """The width and height of the text as it is written, without further line breaks. The language
    decides which font shows what is not in the one that is named."""
    context = PangoCairo.FontMap.get_default().create_context()
    context.set_language(Pango.Language.from_string(language))
    layout = Pango.Layout.new(context)
    layout.set_font_description(Pango.FontDescription(font))
    layout.set_text(text)
    return layout.get_pixel_size()


def text_of(node, role, box):
    """The text of a node of this role in this box, and the box of the text."""
    length = role not in TEXTLESS and Atspi.Text.get_character_count(node.accessible)
    if not length:
        return "", box
    box = Atspi.Text.get_range_extents(node.accessible, 0, length, Atspi.CoordType.SCREEN)
    return Atspi.Text.get_text(node.accessible, 0, length), (box.x, box.y, box.width, box.height)


def is_cut(part, font, language):
    """Whether the part shows some of its text only, or an ellipsis in its place."""
    if not part.text:
        return False
    width, height = room_needed(part.text, font, language)
    is_wrapped = part.text_box[3] > height
    is_short = part.text_box[2] + ROUNDING < width and not is_wrapped
    room = shrunk(part.box, ENTRY_FRAME * (part.role == Role.TEXT))
    return is_short or not is_inside(part.text_box, room)


def outside(window, parts):
    """What is not in the window, or not on the screen."""
    found = [] if is_inside(window.box, (0, 0, *SCREEN)) else [f"{window} at {window.box}"]
    inner = window.app.desktop.active_window().box
    return found + [part for part in parts
                    if not is_inside(part.box, inner) or not is_inside(part.text_box, inner)]


def overlapping(parts):
    apart = [part for part in parts if part.role in PARTS and part.parent_role != Role.COMBO_BOX]
    return [(one, other) for one, other in itertools.combinations(apart, 2)
            if overlap(one.box, other.box)]


@in_each_language
def test_everything_is_on_the_screen_with_large_type(begin, language):
    app = begin(language, LARGE)
    found = {what: outside(window, parts_of(window)) for what, window in every_window(app)}
    assert {what: faults for what, faults in found.items() if faults} == {}


@in_each_language
def test_nothing_is_cut_with_small_type(begin, language):
    app = begin(language, SMALL)
    found = {}
    for what, window in every_window(app):
        parts = parts_of(window)
        found[what] = outside(window, parts) + overlapping(parts) + \
            [("cut", part) for part in parts if is_cut(part, SMALL, language)]
    assert {what: faults for what, faults in found.items() if faults} == {}


def is_closed_list_whole(picture):
    """Whether the text in the picture of a closed combo box touches neither its frame nor the line
    before the arrow."""
    width, height = picture.size
    background = picture.getpixel((2, 2))

    def colors(*box):
        return {color for _, color in picture.crop(box).getcolors()}

    line = next(x for x in range(2, width)
                if background not in colors(x, height // 4, x + 1, height * 3 // 4))
    edges = [(2, 2, line, 3), (2, height - 4, line, height - 3), (line - 1, 2, line, height - 3)]
    return all(colors(*edge) == {background} for edge in edges)


@in_each_language
def test_every_choice_fits_its_field_with_small_type(begin, language):
    app = begin(language, SMALL)
    for label in ("Label_Interval", "Label_Delay"):
        combo = app.combo(app.written[label])
        combo.entry.take_focus()
        for _ in combo.rows():
            app.key("Up")
        for row in combo.rows():
            assert combo.shown == row
            assert not is_cut(Part(combo.entry, combo.role), SMALL, language), row
            app.key("Down")
    level = app.combo(app.written["Label_Log"])
    for row in level.rows():
        level.pick_with_mouse(row)
        app.entry(app.written["Label_CurrentGW"]).take_focus()
        assert is_closed_list_whole(app.picture(level)), row


@in_each_language
def test_open_lists_are_on_the_screen_with_large_type(begin, language):
    app = begin(language, LARGE)

    def open_list(label):
        combo = app.combo(app.written[label])
        combo.open()
        assert is_inside(combo.find(Role.MENU)[0].box, (0, 0, *SCREEN)), label
        app.key("Escape")

    for label in ("Label_Interval", "Label_Log", "Label_Delay"):
        open_list(label)
    app.page(app.written["Page_Groups"])
    app.button(app.written["Button_Add"]).click()
    app.dialog(app.written["Title_Add"])
    open_list("Label_GroupName")
