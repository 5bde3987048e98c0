"""The packaged program, with its own icon and tables, on the simulated device.

The package is never installed on the machine: what the program reads goes where the device keeps
such files, and the program itself into the device's own directory on the search path.
"""
import io
import os
import pathlib

import debian_package
import pytest
from PIL import Image


def install(device):
    for name, file in debian_package.files().items():
        if name.startswith("usr/bin/"):
            device.write(device.bin / pathlib.Path(name).name, debian_package.read(name), file.mode)
        elif name.startswith(("etc/", "usr/share/pixmaps/")) and not file.isdir():
            device.write(f"/{name}", debian_package.read(name), file.mode)


@pytest.fixture
def device(device):
    install(device)
    device.program = debian_package.menu_entry()["Exec"]
    return device


def test_opens_from_the_menu_with_the_devices_settings(start):
    app = start()
    assert app.window().title == "Agent Configure Manager"
    assert app.entry("Current Gateway").text == "192.168.10.5"
    assert app.entry("Backup Gateway").text == "192.168.10.6"
    assert app.combo("Pull Interval").shown == "1 day(recommended)"
    assert "5.2.1\n" in app.texts()


def test_saves(start, device):
    app = start()
    app.entry("Backup Gateway").fill("10.0.0.1")
    app.button("OK").click()
    app.message().close()
    assert app.wait_exit() == 0
    assert device.registry.committed()["BackupGateway"] == b"10.0.0.1"


@pytest.mark.parametrize("locale", ["de_DE.UTF-8", "de_DE.UTF8", "de_DE.utf8", "de_DE.utf-8"])
def test_reads_its_own_string_tables_however_the_locale_is_spelled(start, locale):
    app = start(locale=locale, env={"LOCPATH": os.environ["KORV_LOCALES"]}, title="Agent-Konfiguration")
    assert app.button("Abbrechen").showing


def test_desktops_know_its_window_by_the_menu_entry(start):
    window_class = start().x_window("Agent Configure Manager").read("WM_CLASS").rstrip(b"\0")
    assert window_class.split(b"\0")[-1].decode() == debian_package.menu_entry()["StartupWMClass"]


def test_shows_its_own_icon(start):
    icon = Image.open(io.BytesIO(debian_package.read("usr/share/pixmaps/agent_48.png")))
    argb = [a << 24 | r << 16 | g << 8 | b for r, g, b, a in icon.getdata()]
    assert list(start().x_window().read("_NET_WM_ICON")) == [48, 48, *argb]
