#!/usr/bin/env python3
"""Breaks the code on purpose, one way at a time, and checks that the named test notices.

usage: breakages.py [--list | --check] [--only NAME]... [--jobs N]

The breakages are in the .toml files beside this script, each with the file, the text to replace (it has to be there once),
the new text, the test that has to fail, the targets to build for it, and why the test matters. They are made in a copy of
the project in a temporary folder. The exit status is 0 only when each was noticed. --check looks only whether each still
applies to the code, which takes no build.
"""
import argparse
import re
import sys
import tomllib
from dataclasses import dataclass, fields
from pathlib import Path

from clone import Clone

TEST_SECONDS = 180
RUN_SECONDS = 1800

HEAD = re.compile(r"^TEST(?:_F|_P)?\(\s*(\w+),\s*(\w+)\s*\)|^class (\w+)|^    def test_(\w+)|^borvane_house_test\((\w+)|NAME (\w+)", re.M)


@dataclass(frozen=True)
class Breakage:
    name: str
    file: str
    old: str
    new: str
    test: str
    build: str
    why: str

    def applied_to(self, text):
        return text.replace(self.old, self.new)


def load(folder):
    """All breakages of the data files in a folder. Ends the program when one has a wrong key."""
    keys = {field.name for field in fields(Breakage)}
    breakages = []
    for file in sorted(folder.glob("*.toml")):
        for entry in tomllib.loads(file.read_text(encoding="utf-8")).get("breakage", []):
            if set(entry) != keys:
                raise SystemExit(f"{file.name}: {entry.get('name', entry)} has other keys than {', '.join(sorted(keys))}")
            breakages.append(Breakage(**entry))
    return breakages


def tests_in(root):
    """The names of all tests in the sources, as CTest has them, without the parts that a parameter adds."""
    found = set()
    for file in (root / "tests").rglob("*"):
        if file.suffix not in (".cpp", ".py") and file.name != "CMakeLists.txt":
            continue
        suite = ""
        for match in HEAD.finditer(file.read_text(encoding="utf-8")):
            gtest_suite, gtest, python_suite, python_test, house, plain = match.groups()
            suite = python_suite or suite
            if gtest:
                found.add(f"{gtest_suite}.{gtest}")
            elif python_test:
                found.add(f"System.{suite}.{python_test}")
            elif house or plain:
                found.add(f"House.{house}" if house else plain)
    return found


def source_name(test):
    """A test's name in its source: without what comes before the suite or after the test for a parameter."""
    return re.sub(r"^\w+/|/\w+$", "", test)


def fault_of(breakage, root, tests):
    """Why a breakage does not apply to the code, or None."""
    file = root / breakage.file
    if not file.is_file():
        return f"{breakage.file} does not exist"
    count = file.read_text(encoding="utf-8").count(breakage.old)
    if count != 1:
        return f"its text is in {breakage.file} {count} times, not once"
    if breakage.old == breakage.new:
        return "it changes nothing"
    if source_name(breakage.test) not in tests:
        return f"there is no test {breakage.test}"
    return None


def faults(breakages, root):
    """What is wrong with the breakages before any is tried."""
    tests = tests_in(root)
    names = [breakage.name for breakage in breakages]
    for name in sorted({name for name in names if names.count(name) > 1}):
        yield f"{name}: two breakages have this name"
    for breakage in breakages:
        fault = fault_of(breakage, root, tests)
        if fault:
            yield f"{breakage.name}: {fault}"


def run_tests(clone, tests):
    """Whether all these tests ran and passed, and the output."""
    # A parameter's value follows the name of its test.
    pattern = "^(" + "|".join(re.escape(test) for test in sorted(tests)) + ")( +#.*)?$"
    outcome, output = clone.run(["ctest", "--test-dir", str(clone.build_folder), "--no-tests=error", "--output-on-failure",
                                 "--timeout", str(TEST_SECONDS), "-R", pattern], RUN_SECONDS)
    missing = [test for test in sorted(tests) if f": {test} " not in output]
    if missing:
        raise SystemExit(f"CTest does not find {', '.join(missing)}:\n{output}")
    return outcome == 0, output


def prove_unbroken(clone, breakages):
    """Ends the program when the tests do not pass on the code as it is, since their failing would show nothing then."""
    clone.configure()
    outcome, output = clone.build(sorted({target for breakage in breakages for target in breakage.build.split()}))
    if outcome != 0:
        raise SystemExit(f"The unbroken code cannot be built:\n{output}")
    passed, output = run_tests(clone, {breakage.test for breakage in breakages})
    if not passed:
        raise SystemExit(f"A test fails on the unbroken code:\n{output}")


def verdict(clone, breakage):
    """None when the breakage was noticed, or what is wrong."""
    text = clone.read(breakage.file)
    clone.write(breakage.file, breakage.applied_to(text))
    try:
        outcome, output = clone.build(breakage.build.split())
        if outcome != 0:
            return "does not build:\n" + "\n".join(output.splitlines()[-20:])
        passed, _ = run_tests(clone, {breakage.test})
        return f"{breakage.test} does not notice it" if passed else None
    finally:
        clone.write(breakage.file, text)


def chosen(breakages, names):
    """The breakages of these names, all without any. Ends the program for a name that there is not."""
    unknown = set(names) - {breakage.name for breakage in breakages}
    if unknown:
        raise SystemExit("There is no breakage " + ", ".join(sorted(unknown)))
    return [breakage for breakage in breakages if not names or breakage.name in names]


def run(root, breakages, jobs):
    """Makes each breakage in a copy of the project and prints what became of it. Gives how many were not noticed."""
    survivors = 0
    with Clone(root, jobs) as clone:
        prove_unbroken(clone, breakages)
        for breakage in breakages:
            fault = verdict(clone, breakage)
            survivors += fault is not None
            print(f"{breakage.name}: {fault or 'noticed by ' + breakage.test}", flush=True)
    print(f"{len(breakages) - survivors} noticed, {survivors} not")
    return survivors


def main(arguments):
    parser = argparse.ArgumentParser(description=__doc__.split("\n", 1)[0])
    parser.add_argument("--list", action="store_true", help="only list the breakages")
    parser.add_argument("--check", action="store_true", help="only look whether each applies to the code")
    parser.add_argument("--only", action="append", default=[], metavar="NAME", help="this breakage alone; may be repeated")
    parser.add_argument("--jobs", type=int, default=2, help="parallel jobs of the build (2)")
    parser.add_argument("--root", type=Path, default=Path(__file__).parents[2], help=argparse.SUPPRESS)
    options = parser.parse_args(arguments)

    breakages = chosen(load(options.root / "tests" / "breakages"), options.only)
    if options.list:
        for breakage in breakages:
            print(f"{breakage.name} ({breakage.file}): {breakage.test}\n    {breakage.why}")
        return 0
    found = list(faults(breakages, options.root))
    for fault in found:
        print(fault)
    if found or options.check:
        return 1 if found else 0
    return 1 if run(options.root, breakages, options.jobs) else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
