#!/usr/bin/env python3
"""Keeps the docs accurate: every folder has its line in docs/architecture.md, every file, preset and test that they name exists,
docs/settings.md has every stored value with its default, docs/live.md has every area of the mirror, and no procedure of the program is
still to come.

usage: docs.py ROOT
"""
import json
import re
import sys
from pathlib import Path

DOCUMENTS = ("README.md", "CONTRIBUTING.md", "CHANGELOG.md", "docs/*.md")

# Names in backticks that look like files of the project and are not: what a run creates or what is on a user's machine.
ELSEWHERE = re.compile(r"build/|~/|\$|quakes\.log$|Borvane\.conf$|/cgi-bin/|/borvane/|/recenteqs|[\w.]+\.localhost")

FILE_NAME = re.compile(r"(\./)?[\w.*-]+(/[\w.*-]+)*/?$")
HAS_SUFFIX = re.compile(r"\.(h|cpp|md|py|sh|txt|csv|json|cmake|case|html|png|svg)$")
INLINE_CODE = re.compile(r"(?<!`)`([^`\n]+)`(?!`)")
CODE_BLOCK = re.compile(r"^```\w*\n(.*?)^```", re.M | re.S)
LINK = re.compile(r"\]\((?!https?:|#)([^)#\s]+)")
EMPTY_PROCEDURE = re.compile(r"^(?!  )(?:void|bool|std::string|Integer) ((?:\w+::)?\w+)\([^()]*\) \{\s*\}$", re.M)
PRESET = re.compile(r"--preset[ =]([\w-]+)")
STORED_VALUE = re.compile(r'StoredSetting\{Setting::\w+, "(\w+)"(?:, "(\w+)")?\}')
SECTION_OF_VALUES = re.compile(r"^## Values$(.*?)(?=^## |\Z)", re.M | re.S)
VALUE_ROW = re.compile(r"^\| (`\w+`(?: `\w+`)*) \| (.+) \| (.+) \|$", re.M)
MIRROR_AREA = re.compile(r'^ *\{"([^"]+)", Endpoint::', re.M)

# A test as CTest names it, and where each kind of test has its name. A class of the system tests may be named as a whole.
TEST_NAME = re.compile(r"[A-Z]\w*\.[A-Z]\w*(?:\.\w+)?$")
TEST = re.compile(r"^\s*(?:TYPED_)?TEST(?:_F|_P)?\(\s*(\w+),\s*(\w+)\s*\)", re.M)
HOUSE_TEST = re.compile(r"^borvane_house_test\((\w+) ", re.M)
SYSTEM_TEST = re.compile(r"^class (\w+)|^    def test_(\w+)", re.M)


def is_file_name(text):
    return bool(FILE_NAME.match(text)) and ("/" in text or bool(HAS_SUFFIX.search(text))) and not ELSEWHERE.search(text)


def exists(root, paths, name):
    """Whether the name is a path from the root, or the end of one; with * as in a shell."""
    name = name.removeprefix("./").rstrip("/")
    pattern = re.compile("(?:.*/)?" + re.escape(name).replace(r"\*", "[^/]*") + "$")
    return (root / name).exists() or any(pattern.match(path) for path in paths)


def named_files(text):
    """What a document names: inline code, links, and the commands of its code blocks."""
    for code in INLINE_CODE.findall(text):
        yield from (word for word in code.split() if is_file_name(word))
    yield from LINK.findall(text)
    for block in CODE_BLOCK.findall(text):
        yield from (word for word in block.split() if word.startswith("./") and not ELSEWHERE.search(word))


def tests_of(root):
    """The names of all tests."""
    names = set()
    for file in (root / "tests").rglob("*.cpp"):
        names.update(f"{suite}.{name}" for suite, name in TEST.findall(file.read_text(encoding="utf-8")))
    for file in (root / "tests/house").glob("CMakeLists.txt"):
        names.update(f"House.{name}" for name in HOUSE_TEST.findall(file.read_text(encoding="utf-8")))
    for file in (root / "tests/system").glob("*_test.py"):
        suite = ""
        for class_name, method in SYSTEM_TEST.findall(file.read_text(encoding="utf-8")):
            suite = class_name or suite
            names.update({f"System.{suite}", f"System.{suite}.{method}"} if method else ())
    return names


def paths_of(root):
    """All files and folders of the project, without what a build creates."""
    top = [entry for entry in root.iterdir() if entry.name not in ("build", ".git")]
    files = top + [path for entry in top if entry.is_dir() for path in entry.rglob("*")]
    return {str(path.relative_to(root)) for path in files}


def faults_of_empty_procedures(root):
    """Every procedure of the program does something."""
    for file in sorted((root / "src").rglob("*.cpp")):
        here = file.relative_to(root)
        if "desktop" not in here.parts:
            for name in EMPTY_PROCEDURE.findall(file.read_text(encoding="utf-8")):
                yield f"{here}: {name} does nothing"


def faults_of_values(root):
    """The table of docs/settings.md has every value of the program, and where the program's table has a default, that one."""
    values = dict(STORED_VALUE.findall((root / "src/settings/values.h").read_text(encoding="utf-8")))
    section = SECTION_OF_VALUES.search((root / "docs/settings.md").read_text(encoding="utf-8"))
    rows = {}
    for names, _, default in VALUE_ROW.findall(section[1] if section else ""):
        for name in INLINE_CODE.findall(names):
            if name in rows:
                yield f"docs/settings.md: {name} has two rows"
            rows[name] = default
    for name, default in values.items():
        if name not in rows:
            yield f"docs/settings.md: there is no row for {name}"
        elif default and rows[name] != f"`{default}`":
            yield f"docs/settings.md: without {name} it is `{default}`, not {rows[name]}"
    for name in rows.keys() - values.keys():
        yield f"docs/settings.md: src/settings/values.h has no {name}"


def faults_of_areas(root):
    text = " ".join((root / "docs/live.md").read_text(encoding="utf-8").split())
    areas = MIRROR_AREA.findall((root / "mirror/pages/areas.cpp").read_text(encoding="utf-8"))
    if not areas:
        yield "mirror/pages/areas.cpp: has no row of an area"
    for area in areas:
        if f'"{area}"' not in text:
            yield f'docs/live.md: says nothing about the area "{area}"'


def faults(root):
    paths = paths_of(root)
    presets = {preset["name"] for preset in json.loads((root / "CMakePresets.json").read_text())["configurePresets"]}
    tests = tests_of(root)
    for pattern in DOCUMENTS:
        documents = sorted(root.glob(pattern))
        if not documents:
            yield f"there is no {pattern}"
        for document in documents:
            text = document.read_text(encoding="utf-8")
            here = document.relative_to(root)
            for name in sorted(set(named_files(text))):
                if not exists(root, paths, name) and not (document.parent / name).exists():
                    yield f"{here}: {name} does not exist"
            for preset in sorted(set(PRESET.findall(text)) - presets):
                yield f"{here}: there is no preset {preset}"
            for test in sorted({code for code in INLINE_CODE.findall(text) if TEST_NAME.match(code)} - tests):
                yield f"{here}: there is no test {test}"
    architecture = (root / "docs/architecture.md").read_text(encoding="utf-8")
    yield from faults_of_empty_procedures(root)
    yield from faults_of_values(root)
    yield from faults_of_areas(root)
    for folder in ("common", "transfer"):
        if f"`{folder}/`" not in architecture:
            yield f"docs/architecture.md: says nothing about `{folder}/`"
    for top in ("src", "mirror"):
        for folder in sorted(path for path in (root / top).rglob("*") if path.is_dir() and any(path.iterdir())):
            if f"`{folder.relative_to(root / top)}/`" not in architecture:
                yield f"docs/architecture.md: says nothing about `{folder.relative_to(root / top)}/` of {top}"


if __name__ == "__main__":
    found = list(faults(Path(sys.argv[1])))
    print("\n".join(found))
    sys.exit(1 if found else 0)
