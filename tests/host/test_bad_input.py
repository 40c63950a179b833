"""Files that cannot be worked on: each is refused with exit status 1 and one line that says why."""

import resource
import signal
import subprocess
import unittest

from orvikdtm import FAILED, PROGRAM, TILTED, HostTest

REFUSED = [
    # file name, its contents (None: no such file), what the message says
    ("absent.csv", None, "absent.csv: no such file"),
    ("nowhere/ground.csv", None, "nowhere/ground.csv: no such file"),
    ("ground.txt", TILTED, "ground.txt: not a point file"),
    ("ground", TILTED, "ground: not a point file"),
    (".", None, ".: not a point file"),
    ("empty.csv", "", "empty.csv: holds no survey points"),
    ("blank.csv", "\n\r\n\n", "blank.csv: holds no survey points"),
    ("one.csv", "A,,1,2,3\n", "one.csv: holds 1 survey point"),
    ("two.csv", "A,,1,2,3\nB,,4,5,6\n", "two.csv: holds 2 survey points"),
    ("line.csv", "A,,0,0,1\nB,,1,1,2\nC,,2,2,9\nD,,3,3,1\n", "line.csv: all its points lie on one line"),
    ("place.csv", "A,,7,8,1\n" * 5, "place.csv: all its points lie on one line or in one place"),
    ("letters.csv", TILTED + "E,,east,2000,1\n", "letters.csv:5: the easting 'east' is not a number"),
    ("header.csv", "name,code,E,N,Z\n" + TILTED, "header.csv:1: the easting 'E' is not a number"),
    ("unit.csv", TILTED + "\nE,,1050,2000m,1\n", "unit.csv:6: the northing '2000m' is not a number"),
    ("gap.csv", TILTED + "E,,1050,2000,\n", "gap.csv:5: the elevation '' is not a number"),
    ("nan.csv", TILTED + "E,,1050,2000,nan\n", "nan.csv:5: the elevation 'nan' is not a number"),
    ("huge.csv", TILTED + "E,,1e400,2000,5\n", "huge.csv:5: the easting '1e400' is not a number"),
    ("binary.csv", bytes(range(256)) * 4, "binary.csv: holds no survey points"),
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
                    if run.stderr.startswith("orvikdtm: warning: "):  # the lines skipped come first
                        run.stderr = run.stderr.split("\n", 1)[1]
                    self.assert_refused(run, FAILED, says)
                    self.assertFalse((self.folder / "r.txt").exists())

    def test_a_folder_is_not_a_point_file(self):
        (self.folder / "folder.csv").mkdir()
        self.assert_refused(self.run_host("info", "folder.csv"), FAILED, "folder.csv: is a folder")

    def test_reports_that_cannot_be_written(self):
        """The report's place is looked at before the points are: these points do not even exist."""
        (self.folder / "folder").mkdir()
        for report in ("folder", "nowhere/report.txt", ""):
            with self.subTest(report=report):
                run = self.run_host("volume", "absent.csv", "--level", "1", "--report", report)
                self.assert_refused(run, FAILED, "the report cannot be written")

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


if __name__ == "__main__":
    unittest.main()
