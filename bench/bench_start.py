"""From the start of the monitor to its first painted window: time and resident memory; compared with a bare window of
the same size, built with the same flags. They run alternately on a screen of their own, and the medians are compared.

The moment is the first picture that is sent to the X server, reported by a small library that is preloaded into both.

usage: bench_start.py BUILD-FOLDER [--once]
"""

import os
import pathlib
import statistics
import subprocess
import sys
import tempfile
import time

sys.path.append(str(pathlib.Path(__file__).resolve().parent.parent / "tests" / "system"))
from desk import NO_PROXY_THERE, OFFLINE  # noqa: E402
from monitor import LATER_START  # noqa: E402

# With these hosts, no server has to be started first.
SETTINGS = LATER_START + "National=127.0.0.1:1\nMaker=127.0.0.1:1\n"


def start(program, library, environment):
    """Milliseconds to the first picture, milliseconds of processor time, and MB of memory."""
    environment = dict(environment, LD_PRELOAD=str(library))
    begin = time.monotonic_ns()
    output = subprocess.run([program], env=environment, check=True, timeout=30, capture_output=True,
                            text=True).stdout
    moment, processor_seconds, _, kilobytes, _ = output.split()
    return (int(moment) - begin) / 1e6, float(processor_seconds) * 1000, int(kilobytes) / 1024


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    rounds = 1 if "--once" in sys.argv else 26
    programs = {"bare window": build / "bench/bare_window", "borvane": build / "bin/borvane"}
    with tempfile.TemporaryDirectory() as folder:
        settings = pathlib.Path(folder) / "Nalvorin/Borvane.conf"
        settings.parent.mkdir()
        screen = subprocess.Popen(["Xvfb", "-displayfd", "1", "-screen", "0", "1280x1024x24", "-nolisten", "tcp"],
                                  stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        try:
            environment = dict(os.environ, DISPLAY=":" + screen.stdout.readline().strip(), QT_QPA_PLATFORM="xcb",
                               XDG_CONFIG_HOME=folder, BORVANE_MIRROR_CONFIG=str(OFFLINE), https_proxy=NO_PROXY_THERE)
            results = {name: [] for name in programs}
            for _ in range(rounds):
                for name, program in programs.items():
                    settings.write_text(SETTINGS)
                    results[name].append(start(program, build / "bench/libfirst_picture.so", environment))
        finally:
            screen.terminate()
            screen.wait()
    # The first start of each reads its libraries from the disk.
    medians = {name: [statistics.median(column) for column in zip(*(values[1:] or values))] for name, values in results.items()}
    medians["more"] = [ours - bare for ours, bare in zip(medians["borvane"], medians["bare window"])]
    for name, (elapsed, processor, memory) in medians.items():
        print(f"{name:12} {elapsed:6.1f} ms  ({processor:5.1f} ms of the processor)  {memory:5.1f} MB")


if __name__ == "__main__":
    main()
