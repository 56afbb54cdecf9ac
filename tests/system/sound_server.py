"""A sound server of a test's own, PulseAudio's or PipeWire's: it plays into nothing, and what it plays is recorded. The user's own
server hears nothing of it."""
import os
import shutil
import subprocess
import tempfile
from array import array
from pathlib import Path

from desk import TIMEOUT, wait_for

RATE = 48000  # samples a second
SILENT = 300  # samples below it are silence
SINK = "tap"


class SoundServer:
    """Runs on a desk, which ends it. `address` is a value for PULSE_SERVER."""

    def __init__(self, desk):
        self.desk = desk
        self.folder = Path(tempfile.mkdtemp(dir=desk.sockets))
        self.address = f"unix:{self.folder}/pulse.sock"
        self.program = self._start_pulseaudio() if shutil.which("pulseaudio") else self._start_pipewire()
        wait_for("the sound server", lambda: SINK in self._pactl("list", "short", "sinks"))

    def _start_pulseaudio(self):
        return self.desk.start(
            "pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no", "--disable-shm=yes",
            "-L", f"module-null-sink sink_name={SINK} rate={RATE} channels=1",
            "-L", f"module-native-protocol-unix auth-anonymous=1 socket={self.folder}/pulse.sock")

    def _start_pipewire(self):
        environment = dict(os.environ, XDG_RUNTIME_DIR=str(self.folder), PIPEWIRE_RUNTIME_DIR=str(self.folder))
        for name in ("pipewire", "wireplumber", "pipewire-pulse"):
            server = self.desk.start(name, env=environment)
        self.address = f"unix:{self.folder}/pulse/native"
        wait_for("the sound server", lambda: self._pactl("info"))
        self._pactl("load-module", "module-null-sink", f"sink_name={SINK}", f"rate={RATE}", "channels=1")
        return server

    def _pactl(self, *command):
        return subprocess.run(["pactl", "-s", self.address, *command], capture_output=True, text=True, timeout=TIMEOUT).stdout

    def record(self):
        """Starts a recording and returns it when it grows."""
        recording = Recording(self.desk.start("parec", "-s", self.address, "-d", f"{SINK}.monitor", "--raw", "--format=s16le",
                                              f"--rate={RATE}", "--channels=1"))
        wait_for("a growing recording", recording.samples)
        return recording


class Recording:
    def __init__(self, program):
        self.program = program

    def samples(self):
        data = self.program.log.read_bytes()
        return array("h", data[:len(data) // 2 * 2])

    def wait_for_the_end(self):
        """Waits until something has sounded and then nothing for a second."""
        def is_over():
            samples = self.samples()
            return loud(samples) and not loud(samples[-RATE:])
        wait_for("the end of the sound", is_over, timeout=120)

    def sound(self):
        """The samples from the first to the last that is loud."""
        samples = self.samples()
        places = loud(samples)
        return samples[places[0]:places[-1] + 1]


def loud(samples):
    """The places of the samples that are not silence."""
    return [place for place, sample in enumerate(samples) if abs(sample) > SILENT]


def longest_gap(sound):
    """The longest silence inside, in samples."""
    places = loud(sound)
    return max((after - before for before, after in zip(places, places[1:])), default=0)


def frequency(samples):
    """The frequency of a tone, in hertz, by its rises through zero; 0 without two of them."""
    rises = [place - samples[place] / (samples[place] - samples[place - 1])
             for place in range(1, len(samples)) if samples[place - 1] < 0 <= samples[place]]
    return (len(rises) - 1) * RATE / (rises[-1] - rises[0]) if len(rises) > 1 else 0
