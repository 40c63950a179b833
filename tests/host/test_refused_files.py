"""Files, and results on standard output, that the system refuses to take: the old file stays, and nothing is left over."""

import os
import resource
import subprocess
import unittest

from orvikdtm import DONE, FAILED, PROGRAM, TILTED, HostTest

# Command line, and the files that it writes.
WRITING = [
    (("convert", "ground.csv", "out.ttin"), ("out.ttin",)),
    (("convert", "ground.csv", "out.sjw"), ("out.sjw",)),
    (("height", "ground.csv", "--points", "ground.csv", "--out", "out.csv"), ("out.csv",)),
    (("volume", "ground.csv", "--level", "15", "--report", "r.txt"), ("r.txt",)),
    (("volume", "ground.csv", "--level", "15", "--report", "r.html"), ("r.html",)),
    (("volume", "ground.csv", "--ref", "design.csv", "--report", "r.txt"), ("r.txt",)),
    (("volume", "ground.csv", "--level", "15", "--map", "m.svg"), ("m.svg",)),
    (("volume", "ground.csv", "--level", "15", "--html", "p.html"), ("p.html",)),
    (("volume", "ground.csv", "--ref", "design.csv", "--report", "r.html", "--map", "m.svg", "--html", "p.html"),
     ("r.html", "m.svg", "p.html")),
    (("contours", "ground.csv", "out.dxf", "--interval", "1"), ("out.dxf",)),
    (("contours", "ground.csv", "out.svg", "--interval", "1"), ("out.svg",)),
    (("preview", "ground.csv", "out.svg"), ("out.svg",)),
    (("range", "--hull", "ground.csv", "--out", "hull.waa"), ("hull.waa",)),
    (("range", "--points", "ground.csv", "--out", "ring.waa"), ("ring.waa",)),
    (("diff", "ground.csv", "design.csv", "--list", "list.csv"), ("list.csv",)),
]

# Every command, with every form of its results.
PRINTING = [
    ("info", "ground.csv"),
    ("height", "ground.csv", "--at", "1050,2025"),
    ("height", "ground.csv", "--points", "ground.csv"),
    ("volume", "ground.csv", "--level", "15"),
    ("volume", "ground.csv", "--ref", "design.csv"),
    ("balance", "ground.csv"),
    ("range", "outline.waa"),
    ("diff", "ground.csv", "design.csv"),
    ("convert", "ground.csv", "out.ttin"),
    ("contours", "ground.csv", "out.dxf", "--interval", "1"),
    ("preview", "ground.csv", "out.svg"),
    ("range", "--hull", "ground.csv", "--out", "hull.waa"),
]

GENERATED = [("generate", form) for form in ("man", "bash", "zsh", "markdown")]

OUTLINE = "0\n0\nA,2000,1000\nB,2000,1100\nC,2050,1100\n"
BOW = "0\n0\nA,2000,1000\nB,2050,1100\nC,2000,1100\nD,2050,1000\n"  # crosses itself

OLD = b"old"


def limit(what, most):
    return lambda: resource.setrlimit(what, (most, most))


class Refused(HostTest):
    def setUp(self):
        super().setUp()
        self.write("ground.csv", TILTED)
        self.write("design.csv", TILTED.replace(",20\n", ",15\n"))
        self.write("outline.waa", OUTLINE)
        (self.folder / "temporary").mkdir()

    def start(self, *arguments, before=None, **streams):
        streams = {"stdout": subprocess.PIPE, "stderr": subprocess.PIPE, **streams}
        # A sanitizer looks for leaks with descriptors of its own, which there are none of here.
        sanitizer = os.environ.get("ASAN_OPTIONS", "") + ":detect_leaks=0"
        environment = {**os.environ, "TMPDIR": "temporary", "ASAN_OPTIONS": sanitizer}
        return subprocess.run([PROGRAM, *arguments], cwd=self.folder, text=True, timeout=60, check=False,
                              preexec_fn=before, env=environment, **streams)

    def names(self):
        return sorted(str(f.relative_to(self.folder)) for f in self.folder.rglob("*"))

    def assert_old_files(self, run, outputs, old):
        """The run has failed with one line that says so, and left the folder as it was."""
        self.assertEqual(run.returncode, FAILED, run)
        self.assertEqual(run.stdout, "")
        self.assertRegex(run.stderr, r"\Aorvikdtm: [^\n]+\n\Z")
        self.assertEqual(self.names(), old)
        for output in outputs:
            if (self.folder / output).exists():
                self.assertEqual((self.folder / output).read_bytes(), OLD)


class RefusedFiles(Refused):
    def each_refused(self, before, words):
        """Each command over old files and without them; what is limited stops all its writing."""
        for command, outputs in WRITING:
            for exist in (True, False):
                with self.subTest(command=command, exist=exist):
                    for output in outputs:
                        if exist:
                            self.write(output, OLD)
                        else:
                            (self.folder / output).unlink(missing_ok=True)
                    old = self.names()
                    run = self.start(*command, before=before)
                    self.assert_old_files(run, outputs, old)
                    self.assertIn(words, run.stderr)
            for output in outputs:
                (self.folder / output).unlink(missing_ok=True)

    def test_a_limit_on_the_size_of_files(self):
        """The signal that goes with it does not end the program."""
        self.each_refused(limit(resource.RLIMIT_FSIZE, 20), "could not be written in full")

    def test_a_file_with_two_names_is_not_emptied(self):
        for command, outputs in WRITING:
            with self.subTest(command=command):
                for output in outputs:
                    self.write(output, OLD)
                    os.link(self.folder / output, self.folder / ("second-" + output))
                old = self.names()
                run = self.start(*command, before=limit(resource.RLIMIT_FSIZE, 20))
                self.assert_old_files(run, outputs, old)
                self.assertEqual(self.start(*command).returncode, DONE)
                for output in outputs:
                    first, second = self.folder / output, self.folder / ("second-" + output)
                    self.assertTrue(first.samefile(second))
                    self.assertNotIn(first.read_bytes(), (OLD, b""))
                    first.unlink()
                    second.unlink()

    def test_a_file_with_two_names_is_written_to_its_new_end(self):
        """The old contents are longer than the new ones, or shorter."""
        self.start("range", "--hull", "ground.csv", "--out", "expected.waa")
        expected = (self.folder / "expected.waa").read_bytes()
        for old in (b"", b"1", b"x" * 100000):
            self.write("out.waa", old)
            if not (self.folder / "second").exists():
                os.link(self.folder / "out.waa", self.folder / "second")
            self.assert_done(self.start("range", "--hull", "ground.csv", "--out", "out.waa"))
            self.assertEqual((self.folder / "second").read_bytes(), expected)

    def test_a_device_that_is_full(self):
        for command, outputs in WRITING:
            for i, output in enumerate(outputs):
                with self.subTest(command=command, output=output):
                    (self.folder / output).symlink_to("/dev/full")
                    old = self.names()
                    run = self.start(*command)
                    self.assertEqual(run.returncode, FAILED, run)
                    self.assertRegex(run.stderr, r"\Aorvikdtm: [^\n]+ could not be written in full[^\n]*\n\Z")
                    self.assertEqual(self.names(), sorted([*old, *outputs[:i]]))
                    for written in outputs[:i + 1]:
                        (self.folder / written).unlink()

    def test_few_descriptors(self):
        """With so few that a program can still be started: it either does its work or leaves everything as it was."""
        for command, outputs in WRITING:
            for two_names in (False, True):
                for most in (4, 5):
                    with self.subTest(command=command, two_names=two_names, most=most):
                        for output in outputs:
                            self.write(output, OLD)
                            if two_names:
                                os.link(self.folder / output, self.folder / ("second-" + output))
                        old = self.names()
                        run = self.start(*command, before=limit(resource.RLIMIT_NOFILE, most))
                        self.assertEqual(self.names(), old)
                        contents = [(self.folder / output).read_bytes() for output in outputs]
                        if run.returncode == DONE:
                            self.assertEqual(run.stderr, "")
                            self.assertFalse({OLD, b""} & set(contents))
                        else:
                            self.assertEqual(run.returncode, FAILED, run)
                            self.assertRegex(run.stderr, r"\Aorvikdtm: [^\n]+\n\Z")
                            self.assertEqual(contents[-1], OLD)
                        for name in set(old) - {"ground.csv", "design.csv", "outline.waa", "temporary"}:
                            (self.folder / name).unlink()

    def test_no_descriptor(self):
        """Standard input is closed, so that its number serves to start the program, and is taken before it works."""
        def only_three():
            resource.setrlimit(resource.RLIMIT_NOFILE, (3, 3))
            os.close(0)
        self.write("out.ttin", OLD)
        old = self.names()
        for command in (*PRINTING, ("info", "out.ttin"), ("range", "--points", "ground.csv", "--out", "new.waa")):
            with self.subTest(command=command):
                self.assert_old_files(self.start(*command, before=only_three), ["out.ttin"], old)


class RefusedResults(Refused):
    def assert_not_printed(self, run):
        self.assertEqual(run.returncode, FAILED, run)
        self.assertRegex(run.stderr, r"\Aorvikdtm: [^\n]*standard output[^\n]*\n\Z")

    def test_standard_output_that_is_full(self):
        commands = [*PRINTING, *((*command, "--json") for command in PRINTING), *GENERATED, ("--help",), ("--version",),
                    *((command[0], "--help") for command in PRINTING)]
        for command in commands:
            with self.subTest(command=command), open("/dev/full", "w", encoding="ascii") as full:
                self.assert_not_printed(self.start(*command, stdout=full))

    def test_standard_output_beyond_the_limit_on_files(self):
        for command in (("info", "ground.csv"), ("balance", "ground.csv", "--json"), *GENERATED, ("volume", "--help")):
            with self.subTest(command=command), open(self.folder / "results", "w", encoding="ascii") as results:
                run = self.start(*command, stdout=results, before=limit(resource.RLIMIT_FSIZE, 20))
                self.assert_not_printed(run)

    def test_results_that_tell_of_a_fault(self):
        """A fault that could not be printed is a failure, not a fault that is known."""
        self.write("bow.waa", BOW)
        with open("/dev/full", "w", encoding="ascii") as full:
            self.assert_not_printed(self.start("range", "bow.waa", stdout=full))

    def test_standard_output_that_is_closed(self):
        """A file that is opened later would take its number, and be given the results."""
        for command in (*PRINTING, ("--version",)):
            with self.subTest(command=command):
                self.assert_not_printed(self.start(*command, before=lambda: os.close(1)))
                for file in self.folder.glob("*.*"):
                    self.assertNotIn(b"Surface  ", file.read_bytes())

    def test_all_streams_closed(self):
        def closed():
            for stream in (0, 1, 2):
                os.close(stream)
        for command, outputs in WRITING:
            with self.subTest(command=command):
                self.assert_done(self.start(*command))
                expected = [(self.folder / output).read_bytes() for output in outputs]
                prints = command[0] != "height"
                self.assertEqual(self.start(*command, before=closed).returncode, FAILED if prints else DONE)
                self.assertEqual([(self.folder / output).read_bytes() for output in outputs], expected)


if __name__ == "__main__":
    unittest.main()
