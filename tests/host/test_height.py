"""`orvikdtm height`."""

import json
import subprocess
import unittest

from orvikdtm import FAILED, PROGRAM, TILTED, HostTest, json_of

# place, line of the file of points; the height follows from the slope of 1 in 5
PLACES = "1050,2025\nN1,1000,2000\nN2,GR, 1100 ,\t2050\nN3,GR,1010.5,2010,99\n"


class Height(HostTest):
    def setUp(self):
        super().setUp()
        self.write("tilted.csv", TILTED)

    def test_text(self):
        run = self.run_host("height", "tilted.csv", "--at", "1050,2025.5")
        self.assert_done(run)
        self.assertEqual(run.stdout, "Surface               tilted\n"
                                     "Easting               1050.000\n"
                                     "Northing              2025.500\n"
                                     "Height                15.1000\n")

    def test_json(self):
        run = self.run_host("height", "tilted.csv", "--at", "1000,2000", "--json")
        self.assert_done(run)
        self.assertEqual(json_of(run), {"surface": "tilted", "easting": 1000, "northing": 2000, "height": 10})

    def test_outside_is_refused(self):
        run = self.run_host("height", "tilted.csv", "--at", "900,2025")
        self.assert_refused(run, FAILED, "tilted.csv: easting 900.000, northing 2025.000 lies outside the surface")

    def test_negative_coordinates(self):
        self.write("origin.csv", "A,,-10,-10,1\nB,,10,-10,1\nC,,0,10,1\n")
        self.assert_done(self.run_host("height", "origin.csv", "--at", "-5,-5"))
        self.assert_done(self.run_host("height", "origin.csv", "--at=-5,-5"))

    def test_a_file_of_points(self):
        self.write("places.csv", PLACES)
        run = self.run_host("height", "tilted.csv", "--points", "places.csv")
        self.assert_done(run)
        self.assertEqual(run.stdout, ",,1050,2025,15.0000\nN1,,1000,2000,10.0000\nN2,GR,1100,2050,20.0000\n"
                                     "N3,GR,1010.5,2010,12.0000\n")
        written = self.run_host("height", "tilted.csv", "--points", "places.csv", "--out", "heights.csv")
        self.assert_done(written)
        self.assertEqual(written.stdout, "")
        self.assertEqual((self.folder / "heights.csv").read_text(encoding="ascii"), run.stdout)

    def test_what_was_looked_up_is_a_point_file(self):
        self.write("places.csv", PLACES)
        self.assert_done(self.run_host("height", "tilted.csv", "--points", "places.csv", "--out", "heights.csv"))
        self.assert_done(self.run_host("info", "heights.csv"))

    def test_json_is_utf8_whatever_the_names_are(self):
        names = b"\xc4\xe3,\xe7\x82,\xed\xa0\x80,\xf0\x9f\x8c\x8d\xff,\xe7\x82\xb9".split(b",")
        self.write("places.csv", b"".join(name + b",1050,2025\n" for name in names))
        command = [PROGRAM, "height", "tilted.csv", "--points", "places.csv", "--json"]
        printed = subprocess.run(command, cwd=self.folder, stdout=subprocess.PIPE, timeout=60, check=True).stdout
        found = [point["name"] for point in json.loads(printed.decode("utf-8"))["points"]]
        self.assertEqual(found, ["\ufffd" * 2, "\ufffd" * 2, "\ufffd" * 3, "\U0001f30d\ufffd", "\u70b9"])

    def test_a_file_of_points_as_json(self):
        self.write("places.csv", "N1,1050,2025\nN2,1,1\n")
        run = self.run_host("height", "tilted.csv", "--points", "places.csv", "--json")
        self.assert_done(run, warning="places.csv: 1 of 2 points outside the surface")
        self.assertEqual(json_of(run), {"surface": "tilted", "points": [
            {"name": "N1", "easting": 1050, "northing": 2025, "height": 15},
            {"name": "N2", "easting": 1, "northing": 1, "height": None}]})

    def test_points_outside_have_no_height(self):
        self.write("places.csv", "N1,1050,2025\nN2,1,1\n")
        run = self.run_host("height", "tilted.csv", "--points", "places.csv")
        self.assert_done(run, warning="places.csv: 1 of 2 points outside the surface")
        self.assertEqual(run.stdout, "N1,,1050,2025,15.0000\nN2,,1,1,\n")

    def test_bad_files_of_points(self):
        for name, contents, says in (("absent.csv", None, "absent.csv: no such file"),
                                     ("empty.csv", "", "empty.csv: holds no points"),
                                     ("words.csv", "1,2\nN1,east,2\n", "words.csv:2: the easting 'east' is not a number"),
                                     ("huge.csv", "1,1e13\n", "huge.csv:1: the northing '1e13' is too large")):
            with self.subTest(name=name):
                if contents is not None:
                    self.write(name, contents)
                run = self.run_host("height", "tilted.csv", "--points", name, "--out", "out.csv")
                self.assert_refused(run, FAILED, says)
                self.assertFalse((self.folder / "out.csv").exists())

    def test_lines_without_a_place_are_counted(self):
        self.write("places.csv", "note\n1050,2025\n")
        run = self.run_host("height", "tilted.csv", "--points", "places.csv")
        self.assert_done(run, warning="places.csv: 1 line skipped")


if __name__ == "__main__":
    unittest.main()
