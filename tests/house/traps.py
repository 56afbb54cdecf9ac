#!/usr/bin/env python3
"""A failure is swallowed only where it has to be: each catch below the desktop is in a procedure of one table, which also has to be in
the table of tests/core/traps_test.cpp, where each trap is given a failure and an exception that is none.

usage: traps.py ROOT
"""
import re
import sys
from pathlib import Path

# Procedure -> its file. Each swallows a failure of the program and nothing else.
TRAPS = {
    "QueryRegValueEx": "src/core/registry.cpp",
    "SendOnlineMark": "src/feed/presence.cpp",
    "GetUsersOnline": "src/feed/presence.cpp",
    "RefreshEvents": "src/feed/refresh.cpp",
    "RefreshWorld": "src/feed/refresh.cpp",
    "FetchDetailPage": "src/scan/detail_page.cpp",
    "CheckEventAlert": "src/alert/quake_alert.cpp",
    "WriteQuakeLog": "src/alert/quake_log.cpp",
    "UpdateLongBar": "src/bars/bar_content.cpp",
    "RecordsForm::Form_Resize": "src/records/frmRecords.cpp",
    "RecordsForm::CheckForUpdate": "src/records/frmRecords.cpp",
    "ReportForm::Submit": "src/reports/submission.cpp",
    "ShowReports": "src/reports/show_reports.cpp",
}

# The door through which every event enters. It swallows nothing: it reports the failure, or any other exception, and ends the program.
DOOR = ("Dispatch", "src/core/dispatch.cpp")
DOOR_CATCHES = {"const RuntimeError &error", "const std::exception &error"}

TEST = "tests/core/traps_test.cpp"

FAILURE = "const RuntimeError &"
CATCH = re.compile(r"\bcatch\s*\(([^()]*)\)")
OTHER_WAY = re.compile(r"\bstd::(current_exception|exception_ptr|set_terminate|uncaught_exceptions)\b|\bnoexcept\b(?! override)")
PROCEDURE = re.compile(r"(?![ \t}#/]|namespace\b|class\b|struct\b).*?((?:\w+::)*~?\w+)\(")
ROW = re.compile(r'\bTrap\{\s*"([\w:]+)"')


def catches(root):
    """Each catch: the file, the line's number, the procedure that it is in, what it catches."""
    for file in sorted((root / "src").rglob("*")):
        path = file.relative_to(root)
        if file.suffix not in (".h", ".cpp") or "desktop" in path.parts:
            continue
        procedure = ""
        for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
            begin = PROCEDURE.match(line)
            if begin:
                procedure = begin.group(1)
            elif line.startswith("}"):
                procedure = ""
            for caught in CATCH.findall(line):
                yield str(path), number, procedure, caught


def other_ways(root):
    """Each line with another way to see an exception, or to end with one: the file and the line's number."""
    for file in sorted((root / "src").rglob("*")):
        path = file.relative_to(root)
        if file.suffix in (".h", ".cpp") and "desktop" not in path.parts:
            for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
                if OTHER_WAY.search(line):
                    yield str(path), number


def faults(root, traps, door):
    found = set()
    for path, number, procedure, caught in catches(root):
        found.add((procedure, path))
        if (procedure, path) == door:
            if caught not in DOOR_CATCHES:
                yield f"{path}:{number}: {procedure} catches {caught}"
        elif traps.get(procedure) != path:
            yield f"{path}:{number}: {procedure} is no procedure with a trap"
        elif caught != FAILURE:
            yield f"{path}:{number}: a trap catches {FAILURE} alone, not {caught}"
    for procedure, path in sorted({*traps.items(), door} - found):
        yield f"{path}: {procedure} is in the table and catches nothing"
    for path, number in other_ways(root):
        yield f"{path}:{number}: failures are seen by a catch and in no other way"
    tested = ROW.findall((root / TEST).read_text(encoding="utf-8"))
    for procedure in sorted(set(traps) - set(tested)):
        yield f"{TEST}: has no row for {procedure}"
    for procedure in sorted(set(tested) - set(traps)):
        yield f"{TEST}: {procedure} is no procedure with a trap"


if __name__ == "__main__":
    found_faults = list(faults(Path(sys.argv[1]), TRAPS, DOOR))
    print("\n".join(found_faults))
    sys.exit(1 if found_faults else 0)
