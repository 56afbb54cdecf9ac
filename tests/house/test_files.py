#!/usr/bin/env python3
"""Every test is where its source is: the folder exists in src/ or mirror/, the file has the name of a source file there.

usage: test_files.py ROOT
"""
import re
import sys
from pathlib import Path

# Folders without tests of single source files.
APART = {"support", "cases", "house", "breakages", "system", "fuzz"}

# Tests of a whole window or program, and why they have no source file of their own.
WHOLE = {
    "core/traps_test.cpp": "the traps of all procedures",
    "desktop/all_forms_test.cpp": "what must hold for every window",
    "scan/scanners_cases_test.cpp": "the page cases of all scanners",
}

FOLDER_ROW = re.compile(r"^\| ((?:`[\w/]+/` ?)+)\|", re.M)


def source_folder(root, folder):
    """The folder that the tests in tests/FOLDER are for."""
    return root / folder if folder.parts[0] in ("mirror", "common", "transfer") else root / "src" / folder


def fault_of_test(root, path):
    """Why the file must not be there, or None. The path starts in tests/."""
    folder = source_folder(root, path.parent)
    if not folder.is_dir():
        return f"{folder.relative_to(root)}/ does not exist"
    if not path.name.endswith("_test.cpp"):
        return "a test file ends in _test.cpp; code shared by several tests belongs in support/"
    if str(path) in WHOLE:
        return None
    name = path.name.removesuffix("_test.cpp")
    sources = {file.stem for file in folder.iterdir() if file.suffix in (".h", ".cpp")}
    if not any(name == source or name.startswith(source + "_") for source in sources):
        return f"no file of {folder.relative_to(root)}/ is called {name} or begins its name"
    return None


def faults(root):
    tests = root / "tests"
    files = [file.relative_to(tests) for file in sorted(tests.rglob("*")) if file.suffix in (".h", ".cpp")]
    files = [file for file in files if file.parts[0] not in APART]
    if not files:
        yield "there are no tests"
    for file in files:
        fault = fault_of_test(root, file)
        if fault:
            yield f"tests/{file}: {fault}"
    for whole in sorted(set(WHOLE) - {str(file) for file in files}):
        yield f"tests/{whole}: is in the table and does not exist"
    yield from faults_of_docs(root)


def faults_of_docs(root):
    """The table of test folders in docs/architecture.md names each folder of tests/ and no other."""
    section = (root / "docs/architecture.md").read_text(encoding="utf-8").partition("## Tests\n")[2].partition("\n## ")[0]
    named = {name for row in FOLDER_ROW.findall(section) for name in re.findall(r"`([\w/]+)/`", row)}
    there = {entry.name for entry in (root / "tests").iterdir() if entry.is_dir() and any(entry.iterdir())}
    for name in sorted(there - {name.partition("/")[0] for name in named}):
        yield f"docs/architecture.md: says nothing about tests/{name}/"
    for name in sorted(name for name in named if not (root / "tests" / name).is_dir()):
        yield f"docs/architecture.md: tests/{name}/ does not exist"


if __name__ == "__main__":
    found = list(faults(Path(sys.argv[1])))
    print("\n".join(found))
    sys.exit(1 if found else 0)
