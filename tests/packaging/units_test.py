#!/usr/bin/env python3
"""The units of systemd for the mirror and their configuration: what systemd itself and the program say of them."""
import os
import re
import subprocess
import tempfile
import unittest
from pathlib import Path

EXPOSURE_LIMIT = 20  # tenths of the number that systemd-analyze gives: 0 for sealed off, 100 for open to all


def run(*command, **environment):
    return subprocess.run([str(word) for word in command], capture_output=True, text=True, timeout=60, env=dict(os.environ, **environment))


class Units(unittest.TestCase):
    """Needs in the environment BORVANE_UNITS, the folder of the configured units, and BORVANE_MIRROR, the program."""

    def setUp(self):
        self.units = Path(os.environ["BORVANE_UNITS"])
        self.mirror = Path(os.environ["BORVANE_MIRROR"])
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def write_unit(self, kind, *further_lines):
        """The unit as it would be installed, for the program of this build."""
        text = (self.units / kind / "borvane-mirror.service").read_text(encoding="utf-8")
        text, count = re.subn(r"^ExecStart=\S+", f'ExecStart="{self.mirror}"', text, flags=re.M)
        self.assertEqual(1, count)
        unit = self.folder / "borvane-mirror.service"
        unit.write_text(text.replace("\n[Install]", "\n".join(["", *further_lines, "[Install]"])), encoding="utf-8")
        return unit

    @staticmethod
    def complaints(kind, unit):
        """What systemd says of the lines of the unit; empty for nothing."""
        checked = run("systemd-analyze", f"--{kind}", "verify", "--man=no", "--recursive-errors=no", unit,
                      XDG_RUNTIME_DIR=str(unit.parent))
        return "\n".join(line for line in (checked.stdout + checked.stderr).splitlines() if "borvane-mirror" in line)

    def is_hardened(self, unit):
        judged = run("systemd-analyze", "security", "--offline=true", "--no-pager", f"--threshold={EXPOSURE_LIMIT - 1}", unit)
        self.assertRegex(judged.stdout, "Overall exposure level for borvane-mirror.service: [0-9.]+", judged.stderr)
        return judged.returncode == 0

    def test_names_nothing_that_systemd_does_not_know(self):
        for kind in ("system", "user"):
            self.assertEqual("", self.complaints(kind, self.write_unit(kind)))

    def test_hardens_the_systems_unit(self):
        self.assertTrue(self.is_hardened(self.write_unit("system")))

    def test_sees_a_fault(self):
        self.assertFalse(self.is_hardened(self.write_unit("user")), "a user's unit cannot be sealed off so far")
        self.assertIn("NoNewPrivilege", self.complaints("system", self.write_unit("system", "NoNewPrivilege=yes")))

    def test_has_a_configuration_in_order(self):
        configuration = self.units / "borvane-mirror.toml"
        checked = run(self.mirror, "--check-config", "--config", configuration)
        self.assertEqual((0, f"{configuration} is in order\n", ""), (checked.returncode, checked.stdout, checked.stderr))
        # What is commented out is in order, too.
        whole = self.folder / "mirror.toml"
        whole.write_text(re.sub("^#(?=[a-z[-]+)", "", configuration.read_text(encoding="utf-8"), flags=re.M), encoding="utf-8")
        self.assertIn("\noffline = true", whole.read_text(encoding="utf-8"))
        self.assertEqual(0, run(self.mirror, "--check-config", "--config", whole).returncode)

    def test_installs_nothing_outside_its_prefix(self):
        installed = run("cmake", "-DCMAKE_INSTALL_PREFIX=/prefix", "-P", self.units / "cmake_install.cmake", DESTDIR=str(self.folder))
        self.assertEqual(0, installed.returncode, installed.stderr)
        self.assertEqual([self.folder / "prefix"], list(self.folder.iterdir()))
        files = [file.name for file in self.folder.rglob("*") if file.is_file()]
        self.assertEqual(["borvane-mirror.1", "borvane-mirror.service", "borvane-mirror.service", "borvane-mirror.toml", "borvane.1",
                          "borvane.desktop", "borvane.svg", "copyright", "live.md", "service.md", "settings.md"], sorted(files))
        docs = list(self.folder.rglob("*.md"))
        self.assertIn("live.md", [document.name for document in docs])
        for document in docs:
            for link in re.findall(r"\]\((?!https?:|#)([^)#\s]+)", document.read_text(encoding="utf-8")):
                self.assertTrue((document.parent / link).exists(), f"{document.name} links to {link}")

    def test_has_a_password_from_the_file_that_the_docs_name(self):
        text = self.write_unit("system").read_text(encoding="utf-8")
        configuration = Path(re.search(r"^ExecStart=\S+ --config (\S+)$", text, re.M)[1])
        [file] = re.findall(r"^EnvironmentFile=-(\S+)$", text, re.M)
        self.assertEqual(configuration.with_name("borvane-mirror.env"), Path(file))
        docs = (Path(__file__).parents[2] / "docs/live.md").read_text(encoding="utf-8")
        self.assertIn("`borvane-mirror.env` beside the configuration has the line `PGPASSWORD=...`", " ".join(docs.split()))

    def test_comes_back_once_a_monitors_mirror_has_ended(self):
        for kind in ("system", "user"):
            text = self.write_unit(kind).read_text(encoding="utf-8")
            self.assertIn("\nRestart=always\n", text)
            self.assertIn("\nRestartPreventExitStatus=2\n", text)


if __name__ == "__main__":
    unittest.main()
