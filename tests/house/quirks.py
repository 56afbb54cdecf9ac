#!/usr/bin/env python3
"""Keeps the three places of a quirk in sync: the comment in the code, the property in its test, the row in docs/quirks.md. A quirk that
ends the program has a fourth: a line in the help's list of what does, which names its key.

usage: quirks.py ROOT
"""
import re
import sys
from pathlib import Path

COMMENT = re.compile(r"//+ ?Meant\b(?: \(([a-z0-9-]+)\): \S)?")
TEST = re.compile(r"^\s*(?:TYPED_)?TEST(?:_F|_P)?\(\s*(\w+),\s*(\w+)\s*\)", re.M)
PROPERTY = re.compile(r'RecordProperty\(\s*"quirk",\s*"([^"]*)"\s*\)')
ROW = re.compile(r"^\|\s*`?([a-z0-9-]+)`?\s*\|(.*)\|\s*`?([\w.]+)`?\s*\|\s*$")
COLUMNS = 5
ENDING = re.compile(r"-ends?-the-program$")
HELP_LINE = re.compile(r'<li data-quirks="([^"]*)">')


def sources(*folders):
    return [f for folder in folders for f in sorted(folder.rglob("*")) if f.suffix in (".h", ".cpp")]


def keys_in_code(root):
    """Key -> the places of its comments; a comment without a key is listed under None."""
    keys = {}
    for file in sources(root / "src", root / "mirror"):
        for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
            match = COMMENT.search(line)
            if match:
                keys.setdefault(match.group(1), []).append(f"{file.relative_to(root)}:{number}")
    return keys


def keys_in_tests(root):
    """Key -> the tests that record it, as Suite.Name."""
    keys = {}
    for file in sources(root / "tests"):
        text = file.read_text(encoding="utf-8")
        tests = list(TEST.finditer(text))
        for property_ in PROPERTY.finditer(text):
            inside = [t for t in tests if t.start() < property_.start()]
            name = f"{inside[-1].group(1)}.{inside[-1].group(2)}" if inside else f"{file.name} outside a test"
            keys.setdefault(property_.group(1), []).append(name)
    return keys


def rows_of_table(root):
    """Key -> (its test, whether all columns are filled) of every row."""
    rows = {}
    for line in (root / "docs/quirks.md").read_text(encoding="utf-8").splitlines():
        match = ROW.match(line)
        if match and match.group(1) != "key" and match.group(1).strip("-"):
            cells = [cell.strip() for cell in line.strip().strip("|").split(" | ")]
            rows.setdefault(match.group(1), []).append((match.group(3), len(cells) == COLUMNS and all(cells)))
    return rows


def keys_in_help(root):
    """The keys that the lines of the help's list of what ends the program name."""
    _, _, text = (root / "assets/help.html").read_text(encoding="utf-8").partition('id="ends"')
    return {key for keys in HELP_LINE.findall(text.partition("</ul>")[0]) for key in keys.split()}


def faults(root):
    code, tests, rows, in_help = keys_in_code(root), keys_in_tests(root), rows_of_table(root), keys_in_help(root)
    for place in code.pop(None, []):
        yield f"{place}: the comment of a quirk has the form // Meant (key-in-words): why"
    for key, places in code.items():
        if key not in tests:
            yield f"{places[0]}: no test records the quirk {key}"
        if key not in rows:
            yield f"{places[0]}: docs/quirks.md has no row for {key}"
        if ENDING.search(key) and key not in in_help:
            yield f"{places[0]}: assets/help.html has no line for {key} below id=\"ends\""
    for key in sorted(in_help - code.keys()):
        yield f"assets/help.html: {key} is nowhere in the code"
    for key, names in tests.items():
        if key not in code:
            yield f"{names[0]}: records the quirk {key}, which no comment in the code names"
    for key, entries in rows.items():
        if key not in code:
            yield f"docs/quirks.md: {key} is nowhere in the code"
        if len(entries) > 1:
            yield f"docs/quirks.md: {key} has {len(entries)} rows"
        test, is_whole = entries[0]
        if not is_whole:
            yield f"docs/quirks.md: the row of {key} needs {COLUMNS} filled columns"
        if test not in tests.get(key, []):
            yield f"docs/quirks.md: {test} is not a test that records {key}"


if __name__ == "__main__":
    found = list(faults(Path(sys.argv[1])))
    print("\n".join(found))
    sys.exit(1 if found else 0)
