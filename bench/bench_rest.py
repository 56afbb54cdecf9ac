"""What an idle monitor costs: as a window with the refresh off, and with an area watched at the default interval as each of its faces.

The short bar repaints at every tick, and the timer of the long bar runs, as it does once the pointer has been at its edge with "Ignore".
All rest for two periods of refreshing (980 s), at the same time and on one screen, and read the pages of a mirror of their own.
Processor time is the kernel's count for all their threads; a wake-up is one of the main thread, which had been asleep. The limit is
0.1 % of a core.

usage: bench_rest.py BUILD-FOLDER [--seconds N] [--once]
"""

import os
import pathlib
import subprocess
import sys
import tempfile
import time

sys.path.append(str(pathlib.Path(__file__).resolve().parent.parent / "tests" / "system"))
from desk import NO_PROXY_THERE, OFFLINE  # noqa: E402
from monitor import HOSTS, LATER_START  # noqa: E402

LIMIT = 0.1  # % of a core
TWO_PERIODS = 980  # seconds; a period is 700 ticks of 700 ms
BUTTON = ("33", "168")  # the middle of the switch, in the window
FACES = {"short bar": ("33", "285"), "long bar": ("33", "246")}  # the middle of the button that opens it
AT_THE_EDGE, AWAY = ("1270", "5"), ("1270", "1000")  # of the screen


def wait_for(what, condition):
    for _ in range(400):
        result = condition()
        if result:
            return result
        time.sleep(0.05)
    raise SystemExit(f"timed out waiting for {what}")


def first_line(program):
    return program.stdout.readline().strip()


def x(environment, *command):
    return subprocess.run(command, env=environment, capture_output=True, text=True, timeout=20).stdout.strip()


class Monitor:
    """A monitor with settings of its own, at rest with the refresh on or off, as its window or as a bar."""

    def __init__(self, program, port, environment, folder, refreshes, face=None):
        settings = folder / "Nalvorin/Borvane.conf"
        settings.parent.mkdir(parents=True)
        ignore = LATER_START.replace("[General]\n", "[General]\nEdgeDetect=2\n")
        settings.write_text(ignore + "".join(f"{name}={name.lower()}.localhost:{port}\n" for name in HOSTS))
        self.environment = dict(environment, XDG_CONFIG_HOME=str(folder))
        self.process = subprocess.Popen([program], env=self.environment, stderr=subprocess.DEVNULL)
        self.window = wait_for("the window", lambda: x(
            environment, "xdotool", "search", "--onlyvisible", "--all", "--pid", str(self.process.pid), "--name", "Last Events"))
        if refreshes:
            self.click(BUTTON)
            wait_for("the rows", lambda: x(environment, "xdotool", "getwindowname", self.window)[:1].isdigit())
        if face:
            # The button waits for the end of the first refresh.
            wait_for("the bar", lambda: self.click(FACES[face]) or self.window not in self.shown())
            x(environment, "xdotool", "mousemove", *AT_THE_EDGE, "mousemove", *AWAY)

    def click(self, place):
        x(self.environment, "xdotool", "mousemove", "--window", self.window, *place, "click", "1", "mousemove", *AWAY)

    def shown(self):
        return x(self.environment, "xdotool", "search", "--onlyvisible", "--pid", str(self.process.pid)).split()

    def cost(self):
        """Seconds on the processor so far, of all threads that there are or were, and wake-ups of the main thread."""
        threads_of_process = 2  # the kernel's number for the clock that counts what all threads of a process have run
        seconds = time.clock_gettime((~self.process.pid << 3) | threads_of_process)
        status = pathlib.Path(f"/proc/{self.process.pid}/status").read_text()
        return seconds, int(status.partition("\nvoluntary_ctxt_switches:")[2].split()[0])


def measure(monitors, seconds):
    """Share of a core in % and wake-ups a second, by name."""
    time.sleep(min(seconds, 15))  # until the watermark has gone and the start is over
    before = {name: monitor.cost() for name, monitor in monitors.items()}
    begin = time.monotonic()
    time.sleep(seconds)
    elapsed = time.monotonic() - begin
    results = {}
    for name, monitor in monitors.items():
        processor, wakeups = (late - early for late, early in zip(monitor.cost(), before[name]))
        results[name] = (100 * processor / elapsed, wakeups / elapsed)
    return results


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    seconds = 2 if "--once" in sys.argv else TWO_PERIODS
    if "--seconds" in sys.argv:
        seconds = float(sys.argv[sys.argv.index("--seconds") + 1])
    started = []
    with tempfile.TemporaryDirectory() as folder:
        try:
            screen = subprocess.Popen(["Xvfb", "-displayfd", "1", "-screen", "0", "1280x1024x24", "-nolisten", "tcp"],
                                      stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
            started.append(screen)
            environment = dict(os.environ, DISPLAY=":" + first_line(screen), QT_QPA_PLATFORM="xcb",
                               BORVANE_MIRROR_CONFIG=str(OFFLINE), https_proxy=NO_PROXY_THERE)
            mirror = subprocess.Popen([build / "bin/borvane-mirror", "--listen", "127.0.0.1:0"], stdout=subprocess.PIPE,
                                      stderr=subprocess.STDOUT, text=True, env=dict(environment, XDG_DATA_HOME=folder))
            started.append(mirror)
            port = first_line(mirror).rpartition(":")[2]
            monitors = {}
            for name in ("long bar", "short bar", "refresh on", "refresh off"):
                monitors[name] = Monitor(build / "bin/borvane", port, environment, pathlib.Path(folder) / name,
                                         refreshes=name != "refresh off", face=name if name in FACES else None)
                started.append(monitors[name].process)
            results = measure(monitors, seconds)
        finally:
            for process in reversed(started):
                process.terminate()
                process.wait()
    for name, (share, wakeups) in results.items():
        print(f"{name:12} {share:6.3f} % of a core  {wakeups:6.2f} wake-ups a second")
    if seconds == TWO_PERIODS and max(share for share, _ in results.values()) >= LIMIT:
        raise SystemExit(f"the limit is {LIMIT} % of a core")


if __name__ == "__main__":
    main()
