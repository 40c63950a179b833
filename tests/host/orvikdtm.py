"""Running the host in a folder of its own, and the promises that every run keeps."""

import json
import os
import re
import subprocess
import tempfile
import unittest
from pathlib import Path

PROGRAM = os.environ["ORVIKDTM"]
SITE = Path(os.environ["ORVIKDTM_SITE"])

DONE, FAILED, WRONG_USAGE, FAULT = 0, 1, 2, 3

# A tilted rectangle, 100 by 50: elevation 10 along its southern side, 20 along the northern one.
TILTED = "A,,1000,2000,10\nB,,1100,2000,10\nC,,1100,2050,20\nD,,1000,2050,20\n"


class HostTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def write(self, name, text):
        (self.folder / name).write_bytes(text.encode() if isinstance(text, str) else text)

    def run_host(self, *arguments, stdout=subprocess.PIPE):
        return subprocess.run([PROGRAM, *arguments], cwd=self.folder, text=True, stdout=stdout,
                              stderr=subprocess.PIPE, timeout=60, check=False)

    def assert_done(self, run, warning=None):
        """Success, with nothing on standard error but the warning that is expected."""
        self.assertEqual(run.returncode, DONE, run.stderr)
        if warning is None:
            self.assertEqual(run.stderr, "")
        else:
            self.assertRegex(run.stderr, r"\Aorvikdtm: warning: [^\n]+\n\Z")
            self.assertIn(warning, run.stderr)

    def assert_refused(self, run, status, says):
        """Nothing on standard output, and one line on standard error that says what is expected."""
        self.assertEqual(run.returncode, status, run.stderr)
        self.assertEqual(run.stdout or "", "")
        self.assertRegex(run.stderr, r"\Aorvikdtm: [^\n]+\n\Z")
        self.assertIn(says, run.stderr)


def values(text):
    """What a run printed, by label."""
    return dict(re.match(r"(.+?) {2,}(.*)", line).groups() for line in text.splitlines())


def json_of(run):
    """The JSON object that a run printed."""
    return json.loads(run.stdout)
