"""Waiting for conditions, never for time."""
import time

LIMIT = 30.0  # seconds; generous, because only a failing test ever waits that long
STEP = 0.005


def wait_for(condition, what, timeout=LIMIT):
    """Polls until condition() is true and returns its value; fails saying what was waited for."""
    deadline = time.monotonic() + timeout
    while True:
        value = condition()
        if value:
            return value
        assert time.monotonic() < deadline, f"waited {timeout:g} s for {what}"
        time.sleep(STEP)
