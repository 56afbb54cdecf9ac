#!/usr/bin/env python3
"""What the alarm sounds like, recorded from a sound server, and what becomes of it without one."""
import os
import socket
import time
import unittest

from alerting import AlertingTest
from sound_server import RATE, SoundServer, frequency, longest_gap

FREQUENCIES = range(100, 1001, 10)


class Sound(AlertingTest):
    def use_sound(self, server):
        os.environ["PULSE_SERVER"] = server

    def recorded(self, tone, sweeps):
        """The sound of an alarm. On a busy machine a recording can have gaps or lose a piece, and is then taken again."""
        server = SoundServer(self.desk)
        self.use_sound(server.address)
        monitor = self.start_alerting(EnableAlarmSound=1, AlarmTone=tone, AlarmPeriod=sweeps)
        for _ in range(6):
            recording = server.record()
            self.raise_alert(monitor)
            recording.wait_for_the_end()
            self.desk.end(recording.program)
            sound = recording.sound()
            if longest_gap(sound) < RATE // 200 and self.is_as_long(sound, tone, sweeps):
                break
        return sound

    @staticmethod
    def is_as_long(sound, tone, sweeps):
        expected = tone * len(FREQUENCIES) * sweeps / 1000
        return abs(len(sound) / RATE - expected) <= max(0.02 * expected, 0.03)

    def test_every_tone_has_its_frequency(self):
        milliseconds = 100
        samples = RATE * milliseconds // 1000
        sound = self.recorded(milliseconds, 1)
        for number, expected in enumerate(FREQUENCIES):
            heard = frequency(sound[number * samples + samples // 10:(number + 1) * samples - samples // 10])
            self.assertLess(abs(heard - expected), max(0.02 * expected, 3), f"{heard} Hz where {expected} Hz should be")

    def test_the_alarm_of_the_design_is_as_long_as_its_tones(self):
        sound = self.recorded(10, 7)
        self.assertTrue(self.is_as_long(sound, 10, 7), f"{len(sound) / RATE} s")

    def test_the_library_is_loaded_at_the_first_tone(self):
        monitor = self.start_alerting(EnableAlarmSound=1, AlarmTone=1, AlarmPeriod=1)
        has_library = lambda: "libpulse-simple" in open(f"/proc/{monitor.program.pid}/maps", encoding="utf-8").read()
        self.assertFalse(has_library())
        self.raise_alert(monitor)
        self.wait_until("the library", has_library)

    def test_a_server_that_never_answers_delays_no_end(self):
        silent = self.enterContext(socket.socket(socket.AF_UNIX))
        silent.bind(f"{self.desk.sockets}/silent")
        silent.listen()
        silent.settimeout(60)
        self.use_sound(f"unix:{self.desk.sockets}/silent")
        monitor = self.start_alerting(EnableAlarmSound=1, AlarmTone=10, AlarmPeriod=1)
        self.raise_alert(monitor)
        connection, _ = silent.accept()
        self.addCleanup(connection.close)
        self.press_quit(monitor)
        self.wait_until("the end of the process", lambda: monitor.program.poll() is not None)
        self.assertEqual(0, monitor.program.returncode)

    def test_a_server_that_dies_leaves_the_monitor_alive(self):
        server = SoundServer(self.desk)
        self.use_sound(server.address)
        monitor = self.start_alerting(EnableAlarmSound=1, AlarmTone=20, AlarmPeriod=1)
        recording = server.record()
        self.raise_alert(monitor)
        self.wait_until("sound", lambda: any(recording.samples()))
        server.program.kill()
        self.wait_until("the end of the refresh", lambda: monitor.shows("Last Refresh"))
        time.sleep(1)
        self.raise_alert(monitor)
        self.assertIsNone(monitor.program.poll(), self.desk.output_of(monitor.program))


if __name__ == "__main__":
    unittest.main()
