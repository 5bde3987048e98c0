"""The frames on the pages, as they are drawn."""
from harness.accessibility import Role


def frame(app, title):
    """The frame with the title on the page that is shown."""
    found, = (node for node in app.active.find(Role.PANEL) if node.name == title)
    return found


def margins(app, title):
    """How far the frame's line is from the left, the right and the lower edge of its place."""
    picture = app.picture(frame(app, title))
    width, height = picture.size

    def steps_to_line(x, y, dx, dy):
        steps = 0
        while picture.getpixel((x + steps * dx, y + steps * dy)) == picture.getpixel((x, y)):
            steps += 1
        return steps

    return (steps_to_line(0, height // 2, 1, 0), steps_to_line(width - 1, height // 2, -1, 0),
            steps_to_line(width // 2, height - 1, 0, -1))
