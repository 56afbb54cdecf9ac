#!/usr/bin/env python3
"""What the desktop and the reader of the manual get from an installation."""
import os
import re
import subprocess
import unittest
from pathlib import Path

OPTION = re.compile(r"--([a-z-]+)")


class Installation(unittest.TestCase):
    """Needs in the environment BORVANE_MANUAL, the folder of the configured manual pages, and BORVANE_MIRROR, the program."""

    def test_manual_has_the_options_that_the_mirror_prints(self):
        printed = subprocess.run([os.environ["BORVANE_MIRROR"], "--help"], capture_output=True, text=True, timeout=60, check=True).stdout
        manual = (Path(os.environ["BORVANE_MANUAL"]) / "borvane-mirror.1").read_text(encoding="utf-8").replace("\\-", "-")
        heads = re.findall(r"^\.TP\n\.B[I]? (--.*)$", manual, re.M)
        self.assertEqual(re.findall(r"^  --([a-z-]+)", printed, re.M), [OPTION.match(head)[1] for head in heads])

    def test_manual_has_no_place_left_to_fill_in(self):
        pages = sorted(Path(os.environ["BORVANE_MANUAL"]).iterdir())
        self.assertEqual(["borvane-mirror.1", "borvane.1"], [page.name for page in pages])
        for page in pages:
            text = page.read_text(encoding="utf-8")
            self.assertNotRegex(text, r"@\w+@")
            self.assertRegex(text, r"^\.TH [A-Z-]+ 1 \"\" \"Borvane \d+\.\d+\.\d+\"")

    def test_menu_entry_is_in_order(self):
        entry = Path(__file__).parents[2] / "packaging/borvane.desktop"
        checked = subprocess.run(["desktop-file-validate", "--warn-kde", entry], capture_output=True, text=True, timeout=60, check=False)
        self.assertEqual((0, "", ""), (checked.returncode, checked.stdout, checked.stderr))


if __name__ == "__main__":
    unittest.main()
