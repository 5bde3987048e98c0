"""Waiting for conditions, never for time."""
import functools
import time

from Xlib.error import BadDrawable, BadWindow

try:
    from gi.repository.GLib import Error as BusError
except ImportError:  # the demo does without the accessibility bus
    class BusError(Exception):
        """None ever comes."""

LIMIT = 30.0  # seconds; generous, because only a failing test ever waits that long
SHORTEST, LONGEST = 0.002, 0.02  # seconds between two looks: what comes at once is seen at once


class Gone(Exception):
    """What was to be looked at is not there: not yet, or not any more."""


# How that is told: by the harness, by the accessibility bus, by the X server.
NOT_THERE = (Gone, BusError, BadWindow, BadDrawable)

_in_condition = False


def wait_for(condition, what, timeout=LIMIT):
    """Polls until condition() is true and returns its value; fails saying what was waited for, a text
    or, where that takes a look at a window, a function that gives one. That something goes while it
    is looked at counts as not yet, and is named as the cause when it was so to the end."""
    deadline = time.monotonic() + timeout
    step = SHORTEST
    while True:
        value, missing = _look(condition)
        if value:
            return value
        if time.monotonic() >= deadline:
            raise AssertionError(f"waited {timeout:g} s for {told(what)}") from missing
        time.sleep(step)
        step = min(step * 1.5, LONGEST)


def told(what):
    """The text for what was waited for."""
    return what() if callable(what) else what


def _look(condition):
    global _in_condition
    outer, _in_condition = _in_condition, True
    try:
        return condition(), None
    except NOT_THERE as missing:
        return None, missing
    finally:
        _in_condition = outer


def there(value):
    """The value, which is None when what it was asked of is not there."""
    if value is None:
        raise Gone()
    return value


def whole(look):
    """Makes of a method that looks at several things one that looks again when one of them goes
    meanwhile. Within a condition that is left to the condition, which may find others."""
    @functools.wraps(look)
    def repeated(*arguments):
        if _in_condition:
            return look(*arguments)
        return wait_for(lambda: [look(*arguments)], lambda: f"{look.__name__} of {arguments[0]}")[0]
    return repeated
