"""The package that script/package has left in the build tree."""
import configparser
import io
import os
import pathlib
import subprocess
import tarfile

BUILD = pathlib.Path(os.environ["KORV_BUILD_DIR"])
NAME = "korv-agent-mgr"
ID = "org.example.korv_agent_mgr"
DESKTOP_ENTRY = f"usr/share/applications/{ID}.desktop"


def path():
    package, = BUILD.glob(f"package/{NAME}_{os.environ['KORV_VERSION']}_*.deb")
    return package


def ask(*query):
    """What dpkg-deb says of the package."""
    command, *arguments = query
    return subprocess.run(["dpkg-deb", f"--{command}", path(), *arguments], check=True,
                          stdout=subprocess.PIPE).stdout


def files():
    """What the package installs, by path without the leading slash: links, files, directories."""
    with tarfile.open(fileobj=io.BytesIO(ask("fsys-tarfile"))) as archive:
        return {member.name.removeprefix("./"): member for member in archive}


def read(name):
    """The content of an installed file; a link's is that of its target."""
    with tarfile.open(fileobj=io.BytesIO(ask("fsys-tarfile"))) as archive:
        return archive.extractfile(f"./{name}").read()


def menu_entry():
    parser = configparser.ConfigParser(interpolation=None, delimiters=["="])
    parser.optionxform = str
    parser.read_string(read(DESKTOP_ENTRY).decode())
    return parser["Desktop Entry"]
