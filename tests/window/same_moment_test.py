"""Two programs started at the same moment; script/soak runs the long form, with KORV_ROUNDS."""
import os
import subprocess

from harness.app import TITLE
from harness.waiting import wait_for
from pellion import GREETING, HANDED_OVER, PELLION_5, SYSTEM_INFO

ROUNDS = int(os.environ.get("KORV_ROUNDS", "50"))


def test_leave_one_window(device, desktop_with):
    device.write(SYSTEM_INFO, PELLION_5)
    desktop = desktop_with(manager=None)
    for _ in range(ROUNDS):
        both = [device.start([device.program], desktop.environment, stdout=subprocess.PIPE)
                for _ in range(2)]
        wait_for(lambda: [one for one in both if one.poll() is not None], "one of them to end")
        second, = [one for one in both if one.poll() is not None]
        first, = [one for one in both if one is not second]
        assert second.program_status == 0
        # A fresh X server has never heard of a window's process: "failed" is said of that.
        assert second.communicate()[0].removesuffix(b"failed") == HANDED_OVER[1]
        wait_for(lambda: desktop.windows(pid=first.program_pid), "the window of the other")
        assert [window.pid for window in desktop.windows(title=TITLE)] == [first.program_pid]
        first.kill()
        assert first.communicate()[0] == GREETING
        wait_for(lambda: not desktop.windows(title=TITLE), "its window to be gone")
    print(f"{ROUNDS} pairs: one window each")
