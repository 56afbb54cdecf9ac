#!/usr/bin/env python3
"""Puts small faults into the code at random, one at a time, and reports those that no test notices.

usage: mutate.py [--count N] [--seed N] [--headers] [--jobs N] [--list] [FOLDER_OR_FILE...]

It works on a copy of the project in a temporary folder. Each fault (another operator, a number one higher or lower, a
negated condition, a dropped statement, swapped arguments, ...) is built and judged by the test programs of its layer, the
quickest first. The same seed gives the same faults for the same code. A fault that survives is either one that a test
should notice, or one that changes nothing; a person has to look at it. A fault that the compiler refuses, its warnings
included, is counted apart. Headers are left out unless they are asked for, since each takes the build of all that includes it.
"""
import argparse
import random
import re
import sys
import time
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

from clone import TIMED_OUT, Clone
from mutants import chosen, mutants_of

# Folder -> the programs that judge its code, in this order; the longest folder that fits counts.
JUDGES = {
    "src": ["test_program", "test_desktop"],
    "src/basic": ["test_basic", "test_program"],
    "src/controls": ["test_controls", "test_program", "test_desktop"],
    "src/desktop": ["test_desktop"],
    "common": ["test_common", "test_program", "test_mirror"],
    "transfer": ["test_transfer"],
    "mirror": ["test_mirror", "test_service"],
    "mirror/pages": ["test_mirror"],
    "mirror/catalogue": ["test_mirror"],
    "mirror/feeds": ["test_feeds", "test_mirror"],
    "mirror/live": ["test_live", "test_mirror"],
    "mirror/service": ["test_service"],
    "mirror/store": ["test_service"],
}

FAILED = re.compile(r"^\[  FAILED  \] ([\w./]+)", re.M)

# Starting a database server for each fault takes too long, and so does a month of feeds.
TEST_OPTIONS = ["--gtest_brief=1", "--gtest_fail_fast", "--gtest_filter=-*PostgreSQL*:LiveEventsMonth.*"]

PARTS = 4
BUILD_SECONDS = 900

CAUGHT, SURVIVED, REFUSED = "caught", "survived", "not built"


def judges_of(file):
    """The test programs for a file."""
    folders = [folder for folder in JUDGES if file.startswith(folder + "/")]
    return JUDGES[max(folders, key=len)]


def code_of(root, wanted, suffixes):
    """The C++ files that the wanted folders and files hold, by their paths from the root. Others than those that a program
    is made of have no judges."""
    files = set()
    for name in wanted:
        path = root / name
        files.update(path.rglob("*") if path.is_dir() else [path])
    names = {file.relative_to(root).as_posix() for file in files if file.suffix in suffixes}
    return sorted(name for name in names if name.partition("/")[0] in JUDGES)


def run_tests(clone, program, seconds):
    """The exit status of a test program, or TIMED_OUT, and its output. Its tests run in four parts at a time, since most of
    the slow ones wait."""
    executable = next(path for path in clone.build_folder.rglob(program) if path.is_file())

    def run_part(part):
        return clone.run([str(executable), *TEST_OPTIONS], seconds, GTEST_TOTAL_SHARDS=str(PARTS), GTEST_SHARD_INDEX=str(part))

    with ThreadPoolExecutor(PARTS) as pool:
        ends = list(pool.map(run_part, range(PARTS)))
    return next((outcome for outcome, _ in ends if outcome != 0), 0), "".join(output for _, output in ends)


def time_limits(clone, programs):
    """Builds the test programs of the unbroken code, and gives the seconds after which each counts as hanging."""
    outcome, output = clone.build(programs)
    if outcome != 0:
        raise SystemExit(f"The unbroken code cannot be built:\n{output}")
    limits = {}
    for program in programs:
        start = time.monotonic()
        outcome, output = run_tests(clone, program, BUILD_SECONDS)
        if outcome != 0:
            raise SystemExit(f"{program} fails on the unbroken code:\n{output}")
        limits[program] = 30 + 10 * (time.monotonic() - start)
    return limits


def noticed_by(program, outcome, output):
    """The test that failed, or the program when it crashed or hung."""
    failed = FAILED.search(output)
    return failed.group(1) if failed else f"{program}, which {'hangs' if outcome == TIMED_OUT else 'crashes'}"


def judged(clone, mutant, limits):
    """What became of the fault, and the test that noticed it, if one did."""
    text = clone.read(mutant.file)
    clone.write(mutant.file, mutant.applied_to(text))
    try:
        for program in judges_of(mutant.file):
            if clone.build([program], BUILD_SECONDS)[0] != 0:
                return REFUSED, ""
            outcome, output = run_tests(clone, program, limits[program])
            if outcome != 0:
                return CAUGHT, " by " + noticed_by(program, outcome, output)
        return SURVIVED, ""
    finally:
        clone.write(mutant.file, text)


def run(clone, mutants):
    """Judges all faults and prints what became of each. Gives how many ended in each way, by its name."""
    clone.configure()
    limits = time_limits(clone, sorted({program for mutant in mutants for program in judges_of(mutant.file)}))
    counts = {CAUGHT: 0, SURVIVED: 0, REFUSED: 0}
    for mutant in mutants:
        outcome, detail = judged(clone, mutant, limits)
        counts[outcome] += 1
        print(f"{outcome}{detail}: {mutant}", flush=True)
    return counts


def main(arguments):
    parser = argparse.ArgumentParser(description=__doc__.split("\n", 1)[0])
    parser.add_argument("--count", type=int, default=20, help="how many faults (20)")
    parser.add_argument("--seed", type=int, default=1, help="another seed gives other faults (1)")
    parser.add_argument("--headers", action="store_true", help="put faults into headers, too")
    parser.add_argument("--jobs", type=int, default=2, help="parallel jobs of the build (2)")
    parser.add_argument("--list", action="store_true", help="only list the faults")
    parser.add_argument("--root", type=Path, default=Path(__file__).parents[2], help=argparse.SUPPRESS)
    parser.add_argument("wanted", nargs="*", default=["src", "common", "transfer", "mirror"], metavar="FOLDER_OR_FILE")
    options = parser.parse_args(arguments)

    suffixes = (".cpp", ".h") if options.headers else (".cpp",)
    possible = [mutant for file in code_of(options.root, options.wanted, suffixes)
                for mutant in mutants_of(file, (options.root / file).read_text(encoding="utf-8"))]
    mutants = chosen(possible, options.count, random.Random(options.seed))
    if not mutants:
        parser.error("there is no code in " + " ".join(options.wanted))
    if options.list:
        print("\n".join(map(str, mutants)))
        return
    with Clone(options.root, options.jobs) as clone:
        counts = run(clone, mutants)
    built = counts[CAUGHT] + counts[SURVIVED]
    print(f"seed {options.seed}, {len(mutants)} of {len(possible)} possible faults: {counts[REFUSED]} not built, "
          f"{counts[CAUGHT]} of {built} caught, {counts[SURVIVED]} survived")


if __name__ == "__main__":
    main(sys.argv[1:])
