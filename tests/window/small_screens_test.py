"""Every window of the program on a screen of 800 x 600 with large type, in each shipped language.

The frames keep their 400 pixels however large the type is, so at 18 points some texts in them are
cut; at 10 points none is. The list is left out: its columns are 135 pixels wide, and it scrolls.
"""
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


def seen_in(node):
    """Everything to be seen below the node, except what is in the list."""
    for child in node.children:
        if child.showing:
            yield child
            if child.role != Role.SCROLL_PANE:
                yield from seen_in(child)


def room_needed(text, font):
    """The width and height of the text as it is written, without further line breaks."""
    layout = Pango.Layout.new(PangoCairo.FontMap.get_default().create_context())
    layout.set_font_description(Pango.FontDescription(font))
    layout.set_text(text)
    return layout.get_pixel_size()


def text_of(node):
    """The node's text, "" for none, and the box in which it is laid out, cut off or not."""
    length = "Text" in node.accessible.get_interfaces() and \
        Atspi.Text.get_character_count(node.accessible)
    if not length:
        return "", node.box
    box = Atspi.Text.get_range_extents(node.accessible, 0, length, Atspi.CoordType.SCREEN)
    return Atspi.Text.get_text(node.accessible, 0, length), (box.x, box.y, box.width, box.height)


def is_cut(node, font):
    """Whether the node shows a part of its text only, or an ellipsis in its place."""
    text, box = text_of(node)
    if not text:
        return False
    width, height = room_needed(text, font)
    is_wrapped = box[3] > height
    is_short = box[2] + ROUNDING < width and not is_wrapped
    return is_short or not is_inside(box, shrunk(node.box, ENTRY_FRAME * (node.role == Role.TEXT)))


def outside(app, window):
    """What is not in the window, or not on the screen."""
    app.settled()
    found = [] if is_inside(window.box, (0, 0, *SCREEN)) else [f"{window} at {window.box}"]
    inner = app.desktop.active_window().box
    for node in seen_in(window):
        _, box = text_of(node)
        if not is_inside(node.box, inner) or not is_inside(box, inner):
            found.append(f"{node} at {node.box}, its text at {box}")
    return found


def overlapping(window):
    parts = [node for node in seen_in(window) if node.role in PARTS
             and node.accessible.get_parent().get_role() != Role.COMBO_BOX]
    boxes = [node.box for node in parts]
    return [f"{parts[one]} and {parts[other]}" for one in range(len(parts)) for other in range(one)
            if overlap(boxes[one], boxes[other])]


@in_each_language
def test_everything_is_on_the_screen_with_large_type(begin, language):
    app = begin(language, LARGE)
    found = {what: outside(app, window) for what, window in every_window(app)}
    assert {what: faults for what, faults in found.items() if faults} == {}


@in_each_language
def test_nothing_is_cut_with_small_type(begin, language):
    app = begin(language, SMALL)
    found = {what: outside(app, window) + overlapping(window)
             + [f"{node} is cut" for node in seen_in(window) if is_cut(node, SMALL)]
             for what, window in every_window(app)}
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
            assert not is_cut(combo.entry, SMALL), row
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
