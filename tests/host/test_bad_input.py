"""Files that cannot be worked on: each is refused with exit status 1 and one line that says why."""

import os
import resource
import signal
import subprocess
import unittest

from orvikdtm import FAILED, PROGRAM, TILTED, HostTest

REFUSED = [
    # file name, its contents (None: no such file), what the message says
    ("absent.csv", None, "absent.csv: no such file"),
    ("nowhere/ground.csv", None, "nowhere/ground.csv: no such file"),
    ("ground.txt", TILTED, "ground.txt: not a surface: the name must end in"),
    ("ground", TILTED, "ground: not a surface"),
    (".", None, ".: not a surface"),
    ("empty.csv", "", "empty.csv: holds no survey points"),
    ("blank.csv", "\n\r\n\n", "blank.csv: holds no survey points"),
    ("blanks.csv", " \n# none\n", "blanks.csv: holds no survey points"),
    ("semicolons.csv", "A;;1,5;2,5;3,5\n" * 3, "commas in place of semicolons"),
    ("one.csv", "A,,1,2,3\n", "one.csv: holds 1 survey point: add"),
    ("two.csv", "A,,1,2,3\nB,,4,5,6\n", "two.csv: holds 2 survey points"),
    ("line.csv", "A,,0,0,1\nB,,1,1,2\nC,,2,2,9\nD,,3,3,1\n", "line.csv: all its points lie on one line"),
    ("place.csv", "A,,7,8,1\n" * 5, "place.csv: all its points lie on one line or in one place"),
    ("letters.csv", TILTED + "E,,east,2000,1\n", "letters.csv:5: the easting 'east' is not a number"),
    ("header.csv", "name,code,E,N,Z\n" + TILTED, "header.csv:1: the easting 'E' is not a number: correct the line or take it out; "
     "if line 1 is a header, remove it"),
    ("unit.csv", TILTED + "\nE,,1050,2000m,1\n", "unit.csv:6: the northing '2000m' is not a number"),
    ("gap.csv", TILTED + "E,,1050,2000,\n", "gap.csv:5: the elevation '' is not a number"),
    ("nan.csv", TILTED + "E,,1050,2000,nan\n", "nan.csv:5: the elevation 'nan' is not a number"),
    ("huge.csv", TILTED + "E,,1e400,2000,5\n", "huge.csv:5: the easting '1e400' is not a number"),
    ("infinite.csv", TILTED + "E,,1050,2000,-inf\n", "infinite.csv:5: the elevation '-inf' is not a number"),
    ("far.csv", TILTED + "E,,9.3e12,2000,5\n", "far.csv:5: the easting '9.3e12' is too large"),
    ("far.dat", TILTED + "E,,1,-9.3e12,5\n", "far.dat:5: the northing '-9.3e12' is too large"),
    ("high.csv", TILTED + "E,,1050,2000,1.1e12\n", "high.csv:5: the elevation '1.1e12' is too large"),
    ("binary.csv", bytes(range(256)) * 4, "binary.csv: is not plain text: save it as text in UTF-8"),
    ("wide.csv", TILTED.encode("utf-16"), "wide.csv: is not plain text: save it as text in UTF-8"),
    ("returns.csv", TILTED.replace("\n", "\r"), "returns.csv:1: a carriage return alone ends no line"),
    ("escape.csv", TILTED + "E,,\x1b[2J\x07,2000,1\n", "escape.csv:5: the easting '?[2J?' is not a number"),
    ("long.csv", TILTED + "E,," + "7" * 39 + "\u00e9\u00e9,2000,1\n", "easting '" + "7" * 39 + "...' is not"),
    ("two\nlines.csv", "", "two?lines.csv: holds no survey points"),
    ("n" * 300 + ".csv", None, ": the name is too long: shorten it"),
]


def limit_file_size():
    signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
    resource.setrlimit(resource.RLIMIT_FSIZE, (100, 100))


class BadInput(HostTest):
    def test_bad_point_files_are_refused_by_every_command(self):
        for name, contents, says in REFUSED:
            if contents is not None:
                self.write(name, contents)
            for command in (("info", name), ("volume", name, "--level", "1", "--report", "r.txt")):
                with self.subTest(command=command):
                    run = self.run_host(*command)
                    self.assert_refused(run, FAILED, says)
                    self.assertFalse((self.folder / "r.txt").exists())

    def test_a_folder_is_not_a_point_file(self):
        (self.folder / "folder.csv").mkdir()
        self.assert_refused(self.run_host("info", "folder.csv"), FAILED, "folder.csv: is a folder")

    def test_two_points_among_lines_that_are_none(self):
        self.write("few.csv", "A,,1,2,3\n# a note\nB,,4,5,6\n")
        run = self.run_host("info", "few.csv")
        self.assertEqual(run.returncode, FAILED)
        self.assertRegex(run.stderr, r"\Aorvikdtm: warning: few.csv: 1 of 3 lines skipped[^\n]*\n"
                                     r"orvikdtm: few.csv: holds 2 survey points: [^\n]*\n\Z")

    def test_pipes_and_devices_are_not_waited_for(self):
        os.mkfifo(self.folder / "pipe.csv")
        (self.folder / "null.csv").symlink_to("/dev/null")
        for name in ("pipe.csv", "null.csv"):
            with self.subTest(name=name):
                self.assert_refused(self.run_host("info", name), FAILED, name + ": is not a regular file: copy it")

    def test_reports_that_cannot_be_written(self):
        """The report's place is looked at before the points are: these points do not even exist."""
        (self.folder / "folder").mkdir()
        os.mkfifo(self.folder / "pipe")
        (self.folder / "lost").symlink_to("nowhere/report.txt")
        (self.folder / "loop").symlink_to("loop")
        for report in ("folder", "folder/", "nowhere/report.txt", "new/", "pipe", "lost", "loop", "n" * 300):
            with self.subTest(report=report):
                run = self.run_host("volume", "absent.csv", "--level", "1", "--report", report)
                self.assert_refused(run, FAILED, "the report cannot be written")
                self.assertEqual(sorted(f.name for f in self.folder.iterdir()), ["folder", "loop", "lost", "pipe"])

    def test_work_that_fails_leaves_the_reports_place_as_it_was(self):
        (self.folder / "link").symlink_to("target.txt")
        self.write("old.txt", "old")
        for report in ("link", "target.txt", "old.txt"):
            with self.subTest(report=report):
                run = self.run_host("volume", "absent.csv", "--level", "1", "--report", report)
                self.assert_refused(run, FAILED, "absent.csv: no such file")
                self.assertEqual(sorted(f.name for f in self.folder.iterdir()), ["link", "old.txt"])
                self.assertTrue((self.folder / "link").is_symlink())
        self.assertEqual((self.folder / "old.txt").read_text(), "old")

    def test_a_device_that_is_full(self):
        self.write("tilted.csv", TILTED)
        run = self.run_host("volume", "tilted.csv", "--level", "1", "--report", "/dev/full")
        self.assert_refused(run, FAILED, "/dev/full: the report could not be written in full")

    def test_a_disk_that_fills_up(self):
        """Stood in for by a limit on the size of files: the report is cut short after 100 bytes."""
        self.write("tilted.csv", TILTED)
        run = subprocess.run([PROGRAM, "volume", "tilted.csv", "--level", "1", "--report", "r.txt"], cwd=self.folder,
                             text=True, capture_output=True, timeout=60, check=False, preexec_fn=limit_file_size)
        self.assert_refused(run, FAILED, "r.txt: the report could not be written in full")

    def test_standard_output_that_cannot_be_written(self):
        self.write("tilted.csv", TILTED)
        with open("/dev/full", "w", encoding="ascii") as full:
            run = self.run_host("info", "tilted.csv", stdout=full)
        self.assert_refused(run, FAILED, "standard output")

    def test_answers_about_the_program_that_cannot_be_written(self):
        for words in (("--help",), ("--version",), ("volume", "--help")):
            with self.subTest(words=words), open("/dev/full", "w", encoding="ascii") as full:
                self.assert_refused(self.run_host(*words, stdout=full), FAILED, "standard output")


if __name__ == "__main__":
    unittest.main()
