#!/usr/bin/env python3
"""Runs the two programs on a virtual screen until the first rows are in the window, and saves a picture of the screen and the rows.
Reports why when there are none.

usage: first_rows.py FOLDER-OF-THE-PROGRAMS FOLDER-FOR-THE-RESULTS
"""
import shutil
import sys
from pathlib import Path

from desk import Desk, wait_for
from monitor import NO_ALERT, Monitor, write_settings

AREA = "Los Angeles"
LOG_PREFIX = "borvane: "


def complaint_of(output):
    """Why the monitor has nothing to show, as it logged last; None when it has not complained, or its trouble is over."""
    lines = [line for line in output.splitlines() if line.startswith(LOG_PREFIX)]
    return lines[-1].removeprefix(LOG_PREFIX) if lines and "no data source" in lines[-1] else None


def first_rows(desk, programs):
    """The rows of the area, or the reason why there are none."""
    try:
        monitor = Monitor(desk, programs / "borvane")
        monitor.watch_area(AREA)
        wait_for("the magnitude in the title", lambda: complaint_of(desk.output_of(monitor.program)) or monitor.has_rows())
        return monitor.rows(), complaint_of(desk.output_of(monitor.program))
    except TimeoutError as timeout:
        output = desk.output_of(desk.programs[-1])
        return [], complaint_of(output) or f"{timeout}\n{output}"


def main(programs, results):
    shutil.rmtree(results, ignore_errors=True)
    results.mkdir(parents=True)
    with Desk(results) as desk:
        write_settings(desk.settings_file, "[General]\n" + NO_ALERT)
        rows, reason = first_rows(desk, programs)
        desk.screenshot(results / "screen.png")
    (results / "rows.txt").write_text("".join("\t".join(row) + "\n" for row in rows), encoding="utf-8")
    if not rows:
        print(f"No rows for {AREA}: {reason}\nThe screen is in {results / 'screen.png'}.", file=sys.stderr)
        return 1
    print(f"{len(rows)} rows of {AREA} in {results / 'rows.txt'}, the screen in {results / 'screen.png'}")
    return 0


if __name__ == "__main__":
    sys.exit(main(Path(sys.argv[1]), Path(sys.argv[2])))
