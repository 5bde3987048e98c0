"""Includes run one way through the tree: app, then pages, then settings and text."""
import pathlib
import re

import pytest

ROOT = pathlib.Path(__file__).resolve().parents[1]
FOLDERS = ("app", "pages", "settings", "text")
# What a folder may include of the others; itself always.
BELOW = {
    "app": {"pages", "pages/general", "pages/groups", "settings", "settings/xml", "text"},
    "pages": {"settings", "text"},
    "pages/general": {"pages", "settings", "text"},
    "pages/groups": {"pages", "settings", "text"},
    "settings": {"text"},
    "settings/xml": set(),
    "text": set(),
}
# The files that may name the toolkit outside app/ and pages/.
TOOLKIT = re.compile(r"(?:gtk|gdk|glib|gio|pango|atk)\b.*\.h")
MAY_NAME_TOOLKIT = {"text/shown_text.cpp", "text/message_dialogs.cpp"}
INCLUDE = re.compile(r'^#include ["<]([^">]+)[">]', re.MULTILINE)


def includes():
    """What each file of the program includes, by the file's path."""
    files = [file for folder in FOLDERS for file in sorted((ROOT / folder).rglob("*.[ch]*"))]
    assert len(files) > 50
    return {str(file.relative_to(ROOT)): INCLUDE.findall(file.read_text(encoding="utf-8"))
            for file in files}


def folder(path):
    return str(pathlib.PurePath(path).parent)


def is_ours(path):
    return path.split("/")[0] in FOLDERS and "/" in path


def against_the_arrows(files):
    return [f"{file} includes {path}" for file, paths in files.items() for path in paths
            if is_ours(path) and folder(path) != folder(file)
            and folder(path) not in BELOW[folder(file)]]


def circles(files):
    """Chains of files that include each other; a header and its .cpp are one."""
    graph = {}
    for file, paths in files.items():
        unit = file.rsplit(".", 1)[0]
        graph.setdefault(unit, set()).update(path.rsplit(".", 1)[0] for path in paths
                                             if is_ours(path))
    found = []

    def walk(unit, above):
        if unit in above:
            found.append(" -> ".join([*above[above.index(unit):], unit]))
        elif unit not in done:
            for other in sorted(graph.get(unit, set()) - {unit}):
                walk(other, [*above, unit])
            done.add(unit)

    done = set()
    for unit in sorted(graph):
        walk(unit, [])
    return found


def toolkit_below(files):
    return [f"{file} includes {path}" for file, paths in files.items() for path in paths
            if folder(file).split("/")[0] in ("settings", "text")
            and file not in MAY_NAME_TOOLKIT and TOOLKIT.match(path)]


@pytest.mark.parametrize("faults", [against_the_arrows, circles, toolkit_below])
def test_includes_run_one_way(faults):
    assert faults(includes()) == []


@pytest.mark.parametrize("faults, files, found", [
    (against_the_arrows, {"text/a.cpp": ["app/agent_version.h"]},
     ["text/a.cpp includes app/agent_version.h"]),
    (against_the_arrows, {"pages/general/a.h": ["pages/groups/b.h"]},
     ["pages/general/a.h includes pages/groups/b.h"]),
    (circles, {"text/a.h": ["text/b.h"], "text/b.cpp": ["text/a.h"]},
     ["text/a -> text/b -> text/a"]),
    (toolkit_below, {"settings/a.cpp": ["gtk/gtk.h"]}, ["settings/a.cpp includes gtk/gtk.h"]),
    (toolkit_below, {"text/string_table.h": ["glib.h"]}, ["text/string_table.h includes glib.h"]),
])
def test_the_check_finds(faults, files, found):
    assert faults(files) == found


def test_every_file_says_what_it_is_for():
    """In its first line, or for a script in the first one after the interpreter's."""
    silent = [file for file in includes()
              if not (ROOT / file).read_text(encoding="utf-8").startswith("//")]
    assert silent == []
