"""Ctrl-C in the middle of work, and the progress line of a terminal."""

import math
import os
import pty
import random
import re
import signal
import subprocess
import time
import unittest

from orvikdtm import PROGRAM, TILTED, HostTest

SIGNALS = (signal.SIGINT, signal.SIGTERM, signal.SIGHUP)

END = b"<end of the terminal's text>"

# Command line, and the files that it writes.
WRITING = [
    (("convert", "ground.csv", "out.ttin"), ("out.ttin",)),
    (("convert", "ground.csv", "out.sjw"), ("out.sjw",)),
    (("height", "ground.csv", "--points", "ground.csv", "--out", "out.csv"), ("out.csv",)),
    (("volume", "ground.csv", "--level", "60", "--report", "r.txt", "--map", "m.svg", "--html", "p.html"),
     ("r.txt", "m.svg", "p.html")),
    (("volume", "ground.csv", "--ref", "design.csv", "--report", "r.html"), ("r.html",)),
    (("contours", "ground.csv", "out.dxf", "--interval", "1"), ("out.dxf",)),
    (("contours", "ground.csv", "out.svg", "--interval", "1"), ("out.svg",)),
    (("preview", "ground.csv", "out.svg"), ("out.svg",)),
    (("range", "--hull", "ground.csv", "--out", "hull.waa"), ("hull.waa",)),
    (("range", "--points", "ring.csv", "--out", "ring.waa"), ("ring.waa",)),
    (("diff", "ground.csv", "design.csv", "--list", "list.csv"), ("list.csv",)),
]


def large_inputs(numbers):
    """Two surveys of the same hills, and a ring of points in order."""
    places = [(numbers.uniform(0, 900), numbers.uniform(0, 900)) for _ in range(15000)]

    def survey(lift):
        return "".join(f"P{i},,{x:.3f},{y:.3f},{50 + x / 40 + lift * math.sin(y / 70):.3f}\n" for i, (x, y) in enumerate(places))

    turns = (2 * math.pi * i / 5000 for i in range(5000))
    ring = "".join(f"R,,{9000 * math.cos(a):.3f},{9000 * math.sin(a):.3f},1\n" for a in turns)
    return {"ground.csv": survey(3), "design.csv": survey(-2), "ring.csv": ring}


def heed_signals():
    """Whoever runs the tests may ignore some, and what is ignored is inherited."""
    for one in SIGNALS:
        signal.signal(one, signal.SIG_DFL)


class Interruption(HostTest):
    def setUp(self):
        super().setUp()
        self.write("tilted.csv", TILTED)

    def start(self, *arguments, before=heed_signals):
        return subprocess.Popen([PROGRAM, *arguments], cwd=self.folder, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                text=True, preexec_fn=before)

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

    def test_every_command_that_writes_leaves_old_files_or_whole_ones(self):
        """Each is interrupted at some moments of the time that it takes; every file is then as before or complete."""
        moments = random.Random(7)
        interrupted = 0
        for name, contents in large_inputs(random.Random(8)).items():
            self.write(name, contents)
        inputs = {file.name for file in self.folder.iterdir()}
        for command, outputs in WRITING:
            with self.subTest(command=command):
                began = time.monotonic()
                self.start(*command).communicate(timeout=60)
                taken = time.monotonic() - began
                whole = {output: (self.folder / output).read_bytes() for output in outputs}
                for _ in range(6):
                    for output in outputs:
                        self.write(output, "old")
                    run = self.start(*command)
                    try:
                        run.communicate(timeout=moments.uniform(0.0, taken))
                    except subprocess.TimeoutExpired:
                        run.send_signal(signal.SIGINT)
                        run.communicate(timeout=60)
                    interrupted += run.returncode != 0
                    self.assertIn(run.returncode, (0, -signal.SIGINT))
                    for output in outputs:
                        self.assertIn((self.folder / output).read_bytes(), (b"old", whole[output]), output)
                    self.assertEqual({file.name for file in self.folder.iterdir()}, inputs | whole.keys())
                for output in outputs:
                    (self.folder / output).unlink()
        self.assertGreater(interrupted, 0)

    def test_a_program_that_was_told_to_ignore_a_signal_does(self):
        self.write("places.csv", "1050,2025\n" * 200000)
        run = self.start("height", "tilted.csv", "--points", "places.csv",
                         before=lambda: signal.signal(signal.SIGHUP, signal.SIG_IGN))
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
        os.write(terminal, END)  # what was written before has arrived when this has
        text = b""
        while not text.endswith(END):
            text += os.read(master, 4096)
        os.close(terminal)
        os.close(master)
        text = text[: -len(END)]
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
