"""Lays out, for script/lint, what clang-tidy reads: lint_units.py BUILD TREE OUT writes OUT's
compile_commands.json and prints lines "CHECKS FILE".

The analyzer gets what the compiler gets, a source or a file that includes all sources of a folder: it
takes a function for what its folder can do with it. It looks into sources that a file includes as it does
into the file itself only where the path of the file has the word UnifiedSource.

The other checks look at each function by itself and take most of their time for the libraries' headers:
they get all folders that see the toolkit in one file, all others in another. So in each of these a name
may stand for one thing only.
"""
import json
import os
import re
import shlex
import sys

build, tree, out = map(os.path.realpath, sys.argv[1:])
folders = re.compile(f"({re.escape(build)}|{re.escape(tree)})/(app|pages|settings|text|device)/")


def flags(command):
    """The words of a command but for its files; a word that goes with the next, together with it."""
    words = iter(shlex.split(command["command"]))
    pairs = [(word, next(words)) if word in ("-c", "-o", "-isystem") else (word,) for word in words]
    return [pair for pair in pairs if pair[0] not in ("-c", "-o")]


def unit(name, parts):
    """The command for a file of that name, which is written: all that these commands compile."""
    path = f"{out}/UnifiedSource.{name}.cpp"
    with open(path, "w", encoding="utf-8") as joined:
        for part in parts:
            with open(part["file"], encoding="utf-8") as source:
                joined.write(source.read())
    words = dict.fromkeys(pair for part in parts for pair in flags(part))
    return {"directory": build, "file": path,
            "arguments": [word for pair in words for word in pair] + ["-c", path]}


def kind(command):
    if "/device/" in command["file"]:
        return "the-device"
    return "with-toolkit" if "/gtk-2.0" in command["command"] else "without-toolkit"


def target(command):
    return os.path.basename(command["file"].split(".dir/")[0])


with open(f"{build}/compile_commands.json", encoding="utf-8") as file:
    ours = [command for command in json.load(file) if folders.match(command["file"])]
alone = [command for command in ours if not command["file"].startswith(build)]
joined = [command for command in ours if command["file"].startswith(build)]
analyzed = [unit(target(command), [command]) for command in joined]
checked = [unit(name, [command for command in joined if kind(command) == name])
           for name in sorted({kind(command) for command in joined})]
with open(f"{out}/compile_commands.json", "w", encoding="utf-8") as file:
    json.dump(alone + analyzed + checked, file)
for checks, commands in (("analyzer", alone + analyzed), ("others", alone + checked)):
    for command in commands:
        print(checks, command["file"])
