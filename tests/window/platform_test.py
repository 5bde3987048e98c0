"""Which platform the program takes the device for: it tells by what it prints, and by the pid file.

Image ids are made of the product data that the program was built with: the tests name rows.
"""
import pathlib
import re
import signal

import pytest
from pellion import (GREETING, HANDED_OVER, IMAGE_ID, PELLION_5, SYSTEM_INFO, pid_file, run_to_end,
                     system_info)

NO_DISPLAY = {"DISPLAY": ":987"}


def image_id(device, family, model=None, number="01"):
    """An image id of a family's row, counted from 1, and a model's (None: of no model's)."""
    cache = (device.build_dir / "CMakeCache.txt").read_text()
    data = pathlib.Path(re.search("^PRODUCT_DATA:FILEPATH=(.*)$", cache, re.MULTILINE)[1]).read_text()
    letters, *models = re.findall(r'"(\w+)"', data)
    unknown = next(code for code in map("{:03}".format, range(19)) if code not in models)
    return f"{letters[family - 1]}--{models[model - 1] if model else unknown}{number}"


def counts_as_pellion_5(device):
    """Starts the program, which ends where the toolkit wants a display."""
    status, output, errors = run_to_end(device, NO_DISPLAY)
    assert status == 1 and b"cannot open display: :987" in errors
    assert (output, pid_file(device) is not None) in [(GREETING, True), (b"", False)]
    return output == GREETING


@pytest.mark.parametrize("information, expected", [
    (system_info(NAME="Pellion", CONFIG="ostrel", VERSION="5.1"), True),
    (system_info(NAME="pELLION", VERSION="5"), True),
    (system_info(NAME="Pellion", CONFIG="VASKIN", VERSION="5.0"), True),
    (system_info(NAME="Pellion", CONFIG="ostrel", VERSION="6.3"), False),
    (system_info(NAME="Pellion", CONFIG="vaskin", VERSION="4.0"), False),
])
def test_the_system_information_decides(device, information, expected):
    device.write(SYSTEM_INFO, information)
    # The image id would say the opposite.
    device.write(IMAGE_ID, image_id(device, family=3, model=17 if expected else None))
    assert counts_as_pellion_5(device) == expected


@pytest.mark.parametrize("information", [
    None,
    "",
    system_info(NAME="Aveline", CONFIG="ostrel", VERSION="5.1"),
    system_info(NAME="Pellion", CONFIG="other", VERSION="5.1"),
    system_info(NAME="Pellion", CONFIG="ostrel", VERSION="7.0"),
])
def test_the_image_id_decides_where_the_system_information_does_not(device, information):
    device.remove(SYSTEM_INFO)
    if information is not None:
        device.write(SYSTEM_INFO, information)
    device.write(IMAGE_ID, image_id(device, family=3))
    assert counts_as_pellion_5(device)


@pytest.mark.parametrize("parts, expected", [
    ({"family": 3}, True),
    ({"family": 3, "model": 17}, False),
    ({"family": 3, "model": 17, "number": "0x"}, True),
    ({"family": 4}, False),
    ({"family": 1}, False),
])
def test_the_image_id_is_looked_up(device, parts, expected):
    device.remove(SYSTEM_INFO)
    device.write(IMAGE_ID, image_id(device, **parts) + "\n")
    assert counts_as_pellion_5(device) == expected


def test_one_instance_runs_where_the_image_id_says_so(start, device, desktop):
    device.remove(SYSTEM_INFO)
    device.write(IMAGE_ID, image_id(device, family=3))
    start()
    assert run_to_end(device, desktop.environment) == HANDED_OVER


@pytest.mark.parametrize("content", [None, b"", b"1234567", b"1234567\0rest"])
def test_an_image_id_that_is_too_short_ends_the_start(device, content):
    """Abnormally, and before anything else is done: there is no display to open a window on."""
    device.write(SYSTEM_INFO, PELLION_5.replace("5.1", "7.0"))
    if content is not None:
        device.write(IMAGE_ID, content)
    status, output, errors = run_to_end(device, NO_DISPLAY)
    assert (status, output) == (-signal.SIGABRT, b"")
    assert b"Invalid Image ID" in errors and b"display" not in errors
    assert pid_file(device) is None
    assert device.journal() == [] and device.agent_runs() == []
