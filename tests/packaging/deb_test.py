#!/usr/bin/env python3
"""The Debian package: what it needs, what it holds, and that its mirror starts.

usage: deb_test.py PACKAGE
"""
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

# What the programs load while they run, which no tool finds in them.
LOADED = {"libcurl4", "libqt6sql6-sqlite"}

FILES = """usr/bin/borvane usr/bin/borvane-mirror usr/lib/systemd/system/borvane-mirror.service
  usr/lib/systemd/user/borvane-mirror.service usr/share/applications/borvane.desktop usr/share/borvane/help.html
  usr/share/borvane/help/records.png usr/share/doc/borvane/borvane-mirror.toml usr/share/doc/borvane/copyright
  usr/share/doc/borvane/live.md usr/share/doc/borvane/settings.md usr/share/icons/hicolor/scalable/apps/borvane.svg
  usr/share/man/man1/borvane.1 usr/share/man/man1/borvane-mirror.1""".split()


def output_of(*command):
    return subprocess.run([str(word) for word in command], capture_output=True, text=True, timeout=60, check=True).stdout


class Deb(unittest.TestCase):
    package = None

    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.root = Path(folder.name)
        output_of("dpkg-deb", "--extract", cls.package, cls.root)

    def test_needs_the_libraries_that_are_linked_and_those_that_are_loaded(self):
        needed = {word.split()[0] for word in output_of("dpkg-deb", "--field", self.package, "Depends").split(",")}
        self.assertLessEqual(LOADED | {"libqt6widgets6", "libqt6sql6", "libsimdjson14", "libc6"}, needed)

    def test_holds_what_an_installation_needs(self):
        for file in FILES:
            self.assertTrue((self.root / file).is_file(), file)

    def test_holds_nothing_outside_usr(self):
        self.assertEqual(["usr"], [path.name for path in self.root.iterdir()])
        self.assertFalse((self.root / "usr/local").exists())

    def test_units_and_docs_name_the_programs_and_files_where_they_are(self):
        unit = (self.root / "usr/lib/systemd/system/borvane-mirror.service").read_text(encoding="utf-8")
        self.assertIn("\nExecStart=/usr/bin/borvane-mirror --config /etc/borvane-mirror.toml\n", unit)
        self.assertIn("\nDocumentation=file:/usr/share/doc/borvane/live.md\n", unit)

    def test_mirror_starts(self):
        version = output_of("dpkg-deb", "--field", self.package, "Version")
        self.assertEqual(f"borvane-mirror {version}", output_of(self.root / "usr/bin/borvane-mirror", "--version"))


if __name__ == "__main__":
    Deb.package = Path(sys.argv.pop())
    unittest.main()
