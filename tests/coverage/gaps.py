"""Names what the tests do not run, each with its reason.

usage: gaps.py COVERAGE.json REASONS

The first is gcovr's. The second has lines "FILE: SOURCE LINE", and below one or several of them,
indented, the reason. A source line names every gap in that file with this text, so that code may
move. Ends non-zero when a gap has no reason.
"""
import collections
import json
import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]


def read_gaps(coverage):
    """(file, line number, source text, what is missing) for each line or branch that never ran."""
    for file in coverage["files"]:
        source = (ROOT / file["file"]).read_text().splitlines()
        for line in file["lines"]:
            missing = missing_of(line)
            if missing:
                number = line["line_number"]
                yield file["file"], number, source[number - 1].strip(), missing


def missing_of(line):
    if line.get("gcovr/noncode") or line.get("gcovr/excluded"):
        return None
    if line["count"] == 0:
        return "not run"
    branches = [branch["count"] > 0 for branch in line["branches"] if not branch.get("throw")]
    return None if all(branches) else f"{branches.count(False)} of {len(branches)} branches"


def read_reasons(text):
    """{(file, source text): reason}"""
    reasons, lines, reason = {}, [], []

    def end_paragraph():
        reasons.update(dict.fromkeys(lines, " ".join(reason)))
        lines.clear()
        reason.clear()

    for line in text.splitlines():
        if line.startswith(" "):
            reason.append(line.strip())
        elif line and not line.startswith("#"):
            if reason:
                end_paragraph()
            file, _, source = line.partition(": ")
            lines.append((file, source.strip()))
    end_paragraph()
    return reasons


def main():
    coverage = json.loads(pathlib.Path(sys.argv[1]).read_text())
    reasons = read_reasons(pathlib.Path(sys.argv[2]).read_text())
    by_reason = collections.defaultdict(list)
    used = set()
    for file, number, source, missing in read_gaps(coverage):
        used.add((file, source))
        by_reason[reasons.get((file, source))].append(f"{file}:{number}: {source}  [{missing}]")
    unexplained = by_reason.pop(None, [])
    for reason, gaps in by_reason.items():
        print(*gaps, f"    {reason}", "", sep="\n")
    for file, source in reasons.keys() - used:
        print(f"Covered by now, no reason needed: {file}: {source}")
    if unexplained:
        print("WITHOUT A REASON:", *unexplained, sep="\n")
        sys.exit(1)


if __name__ == "__main__":
    main()
