"""A copy of the project in a temporary folder, to be broken, built and tested there. The checkout is only read."""
import os
import shutil
import signal
import subprocess
import tempfile
from pathlib import Path

PRESET = "release"
CONFIGURE_SECONDS = 300
BUILD_SECONDS = 3600

# How a command ended whose time was over.
TIMED_OUT = "timed out"


class Clone:
    """The project's files as they are in the checkout, also what is not committed. Use it in a `with`."""

    def __init__(self, root, jobs):
        self._folder = tempfile.TemporaryDirectory(prefix="borvane-clone-")
        self.root = Path(self._folder.name) / "borvane"
        self.build_folder = self.root / "build" / PRESET
        self._jobs = jobs
        # The same objects as in any other checkout, for a ccache that several share.
        self._environment = {**os.environ, "CCACHE_BASEDIR": str(self.root), "CCACHE_NOHASHDIR": "1"}
        shutil.copytree(root, self.root, ignore=shutil.ignore_patterns("build", ".git", "__pycache__"))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._folder.cleanup()

    def read(self, file):
        return (self.root / file).read_text(encoding="utf-8")

    def write(self, file, text):
        (self.root / file).write_text(text, encoding="utf-8")

    def configure(self):
        """Ends the program when CMake fails. Each file is compiled by itself, so that a change to one compiles nothing else."""
        command = ["cmake", "--preset", PRESET, "-DCMAKE_UNITY_BUILD=OFF", "--log-level=WARNING"]
        outcome, output = self.run(command, CONFIGURE_SECONDS)
        if outcome != 0:
            raise SystemExit(f"The clone cannot be configured:\n{output}")

    def build(self, targets, seconds=BUILD_SECONDS):
        """The exit status of the build, or TIMED_OUT, and its output."""
        command = ["cmake", "--build", str(self.build_folder), "--parallel", str(self._jobs), "--target", *targets]
        return self.run(command, seconds)

    def run(self, command, seconds, **environment):
        """The exit status of a command in the clone, or TIMED_OUT, and its output. All that it started ends with it."""
        with tempfile.TemporaryFile() as output:
            # In a group of its own, but not as the head of a session: to that one a terminal that a test opens and closes
            # would belong, and its end would be a hang-up.
            process = subprocess.Popen(command, cwd=self.root, env={**self._environment, **environment}, stdin=subprocess.DEVNULL,
                                       stdout=output, stderr=subprocess.STDOUT, process_group=0)
            try:
                outcome = process.wait(seconds)
            except subprocess.TimeoutExpired:
                outcome = TIMED_OUT
            finally:
                end_group(process)
            output.seek(0)
            return outcome, output.read().decode(errors="replace")


def end_group(process):
    """Ends what is left of a process group and waits for its leader. A build tool needs a moment to end its own children."""
    for number, seconds in ((signal.SIGTERM, 10), (signal.SIGKILL, None)):
        try:
            os.killpg(process.pid, number)
        except ProcessLookupError:
            break
        try:
            process.wait(seconds)
        except subprocess.TimeoutExpired:
            pass
    process.wait()
