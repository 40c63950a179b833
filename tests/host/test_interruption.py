"""Ctrl-C in the middle of work, and the progress line of a terminal."""

import os
import pty
import re
import signal
import subprocess
import unittest

from orvikdtm import PROGRAM, TILTED, HostTest

SIGNALS = (signal.SIGINT, signal.SIGTERM, signal.SIGHUP)


class Interruption(HostTest):
    def setUp(self):
        super().setUp()
        self.write("tilted.csv", TILTED)

    def start(self, *arguments, **more):
        return subprocess.Popen([PROGRAM, *arguments], cwd=self.folder, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                text=True, **more)

    def test_an_interruption_ends_the_program_as_the_signal_would(self):
        """Standard output is a full pipe, so the program waits in the middle of its results."""
        self.write("places.csv", "1050,2025\n" * 200000)
        for stop in SIGNALS:
            with self.subTest(signal=stop):
                run = self.start("height", "tilted.csv", "--points", "places.csv")
                run.stdout.read(10)
                run.send_signal(stop)
                _, error = run.communicate(timeout=60)
                self.assertEqual(run.returncode, -stop)
                self.assertIn("orvikdtm: interrupted", error)

    def test_an_interruption_while_a_file_is_written_leaves_the_old_one(self):
        """Tried at many moments of the run: whichever it meets, the file is the old one or the whole new one."""
        self.write("places.csv", "1050,2025\n" * 100000)
        whole = ",,1050,2025,15.0000\n" * 100000
        interrupted = 0
        for moment in range(40):
            self.write("out.csv", "old")
            run = self.start("height", "tilted.csv", "--points", "places.csv", "--out", "out.csv")
            try:
                run.communicate(timeout=0.004 * moment + 0.001)
            except subprocess.TimeoutExpired:
                run.send_signal(signal.SIGINT)
                run.communicate(timeout=60)
            interrupted += run.returncode != 0
            self.assertIn(run.returncode, (0, -signal.SIGINT))
            self.assertIn((self.folder / "out.csv").read_text(), ("old", whole))
            self.assertEqual(sorted(f.name for f in self.folder.iterdir()), ["out.csv", "places.csv", "tilted.csv"])
        self.assertGreater(interrupted, 0)

    def test_a_program_that_was_told_to_ignore_a_signal_does(self):
        self.write("places.csv", "1050,2025\n" * 200000)
        run = self.start("height", "tilted.csv", "--points", "places.csv",
                         preexec_fn=lambda: signal.signal(signal.SIGHUP, signal.SIG_IGN))
        run.stdout.read(10)
        run.send_signal(signal.SIGHUP)
        run.communicate(timeout=60)
        self.assertEqual(run.returncode, 0)


class Progress(HostTest):
    def on_terminal(self, *arguments):
        """What a run writes to standard error when that is a terminal."""
        master, terminal = pty.openpty()
        run = subprocess.run([PROGRAM, *arguments], cwd=self.folder, stdout=subprocess.PIPE, stderr=terminal,
                             timeout=60, check=False)
        os.close(terminal)
        text = b""
        try:
            while piece := os.read(master, 4096):
                text += piece
        except OSError:
            pass  # the terminal's other end is closed
        os.close(master)
        return run, text.decode()

    def setUp(self):
        super().setUp()
        self.write("tilted.csv", TILTED)

    def test_a_terminal_sees_stages_and_a_percentage_that_grows(self):
        for command in (("volume", "tilted.csv", "--ref", "tilted.csv"), ("balance", "tilted.csv"), ("info", "tilted.csv"),
                        ("convert", "tilted.csv", "t.ttin"), ("diff", "tilted.csv", "tilted.csv")):
            with self.subTest(command=command):
                run, text = self.on_terminal(*command)
                self.assertEqual(run.returncode, 0)
                shown = [int(percent) for percent in re.findall(r"  (\d+) %", text)]
                self.assertGreater(len(shown), 1)
                self.assertEqual(shown, sorted(shown))
                self.assertLessEqual(shown[-1], 100)
                self.assertTrue(text.endswith("\r\x1b[K"), repr(text))

    def test_a_warning_stands_on_a_line_of_its_own(self):
        self.write("twice.csv", TILTED + "E,,1000,2000,10\n")
        _, text = self.on_terminal("volume", "twice.csv", "--level", "10")
        self.assertIn("\r\x1b[Korvikdtm: warning: ", text)

    def test_nothing_is_shown_when_quiet(self):
        _, text = self.on_terminal("volume", "tilted.csv", "--level", "10", "--quiet")
        self.assertEqual(text, "")

    def test_nothing_is_shown_to_a_pipe(self):
        self.assert_done(self.run_host("volume", "tilted.csv", "--level", "10"))


if __name__ == "__main__":
    unittest.main()
