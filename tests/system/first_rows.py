#!/usr/bin/env python3
"""Works the two programs on a virtual screen until the first rows stand in the window, and leaves a picture of the screen and the rows.

usage: first_rows.py FOLDER-OF-THE-PROGRAMS FOLDER-FOR-THE-RESULTS
"""
import shutil
import sys
from pathlib import Path

from desk import Desk
from monitor import Monitor

AREA = "Los Angeles"


def main(programs, results):
    shutil.rmtree(results, ignore_errors=True)
    results.mkdir(parents=True)
    with Desk(results) as desk:
        try:
            monitor = Monitor(desk, programs / "borvane")
            monitor.watch_area(AREA)
            rows = monitor.wait_for_rows()
        except TimeoutError as timeout:
            program = desk.programs[-1]
            print(f"{timeout}; what there is on the screen:\n{desk.outline(program)}\n{desk.output_of(program)}")
            rows = []
        desk.screenshot(results / "screen.png")
    (results / "rows.txt").write_text("".join("\t".join(row) + "\n" for row in rows), encoding="utf-8")
    print(f"{len(rows)} rows of {AREA} in {results / 'rows.txt'}, the screen in {results / 'screen.png'}")
    return 0 if rows else 1


if __name__ == "__main__":
    sys.exit(main(Path(sys.argv[1]), Path(sys.argv[2])))
