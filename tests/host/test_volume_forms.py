"""`orvikdtm volume` against a surface, within a boundary, as JSON and as a page."""

import json
import os
import unittest
from pathlib import Path

from orvikdtm import FAILED, SITE, TILTED, WRONG_USAGE, HostTest, json_of, values

# The tilted rectangle raised by 2, and one that covers only its western half.
RAISED = TILTED.replace(",10\n", ",12\n").replace(",20\n", ",22\n")
WEST = "A,,1000,2000,12\nB,,1050,2000,12\nC,,1050,2050,22\nD,,1000,2050,22\n"

# The southern half, in a boundary file's order: northing, easting.
SOUTH = "0\n0\nB1,2000,1000\nB2,2000,1100\nB3,2025,1100\nB4,2025,1000\n"


class VolumeForms(HostTest):
    def setUp(self):
        super().setUp()
        self.write("tilted.csv", TILTED)
        self.write("raised.csv", RAISED)
        self.write("south.waa", SOUTH)

    def test_json_has_every_digit(self):
        run = self.run_host("volume", "tilted.csv", "--level", "15", "--json")
        self.assert_done(run)
        self.assertEqual(list(json_of(run)), ["surface", "level", "cut_volume", "fill_volume", "cut_plan_area",
                                              "cut_surface_area", "fill_plan_area", "fill_surface_area",
                                              "covered_plan_area"])
        self.assertAlmostEqual(json_of(run)["cut_volume"], 6250, delta=1e-11)
        self.assertAlmostEqual(json_of(run)["cut_surface_area"], 100 * (25**2 + 5**2) ** 0.5, delta=1e-9)
        self.assertEqual(json_of(run)["surface"], "tilted")

    def test_json_of_a_name_with_quotes_and_backslashes(self):
        self.write('a"b\\c.csv', TILTED)
        run = self.run_host("volume", 'a"b\\c.csv', "--level", "15", "--json")
        self.assert_done(run)
        self.assertEqual(json_of(run)["surface"], 'a"b\\c')

    def test_against_another_surface(self):
        for method in ("exact", "sampled"):
            with self.subTest(method=method):
                run = self.run_host("volume", "tilted.csv", "--ref", "raised.csv", "--method", method)
                self.assert_done(run)
                printed = values(run.stdout)
                self.assertEqual((printed["Cut volume"], printed["Fill volume"]), ("0.000", "10000.000"))
                self.assertEqual(printed["Reference"], "raised")
                self.assertEqual("Covered plan area" in printed, method == "exact")
        self.assertEqual(values(self.run_host("volume", "raised.csv", "--ref", "tilted.csv").stdout)["Cut volume"],
                         "10000.000")

    def test_only_what_both_surfaces_cover_is_measured(self):
        self.write("west.csv", WEST)
        run = self.run_host("volume", "tilted.csv", "--ref", "west.csv", "--json")
        self.assert_done(run)
        self.assertAlmostEqual(json_of(run)["covered_plan_area"], 2500, delta=1e-6)
        self.assertAlmostEqual(json_of(run)["fill_volume"], 5000, delta=1e-6)

    def test_surfaces_without_common_ground_are_warned_about(self):
        self.write("far.csv", TILTED.replace(",20", ",90"))
        run = self.run_host("volume", "tilted.csv", "--ref", "far.csv")
        self.assert_done(run, warning="the surfaces have no area in common, so all volumes are 0")

    def test_surfaces_that_only_touch_are_warned_about(self):
        self.write("east.csv", "A,,1100,1990,12\nB,,1150,2000,12\nC,,1150,2050,22\nD,,1100,2060,22\n")
        self.write("east.waa", "0\n0\nB1,1990,1100\nB2,2000,1200\nB3,2060,1100\n")
        for method in ("exact", "sampled"):
            for against, why in ((("--ref", "east.csv"), "the surfaces have no area in common"),
                                 (("--level", "1", "--range", "east.waa"), "nothing of the surface lies within the boundary"),
                                 (("--ref", "tilted.csv", "--range", "east.waa"), "nothing lies within both surfaces and the boundary")):
                with self.subTest(method=method, against=against):
                    run = self.run_host("volume", "tilted.csv", *against, "--method", method, "--quiet")
                    self.assertEqual(run.returncode, 0, run.stderr)
                    printed = values(run.stdout)
                    for label in ("Cut volume", "Fill volume", "Cut plan area", "Fill plan area", "Cut surface area"):
                        self.assertEqual(printed[label], "0.000")
                    run = self.run_host("volume", "tilted.csv", *against, "--method", method)
                    self.assertIn(why + ", so all volumes are 0", run.stderr)

    def test_within_a_boundary(self):
        run = self.run_host("volume", "tilted.csv", "--level", "10", "--range", "south.waa", "--json")
        self.assert_done(run)
        self.assertAlmostEqual(json_of(run)["cut_volume"], 2500 * 2.5, delta=1e-6)
        self.assertAlmostEqual(json_of(run)["covered_plan_area"], 2500, delta=1e-9)
        run = self.run_host("volume", "tilted.csv", "--ref", "raised.csv", "--range", "south.waa", "--json")
        self.assertAlmostEqual(json_of(run)["fill_volume"], 5000, delta=1e-6)

    def test_a_boundary_that_leaves_the_surface_is_warned_about(self):
        self.write("wide.waa", SOUTH.replace("2025", "2125"))
        run = self.run_host("volume", "tilted.csv", "--level", "10", "--range", "wide.waa")
        self.assert_done(run, warning="wide.waa: 2 of 4 vertices outside the surface")
        self.assertEqual(values(run.stdout)["Cut volume"], "25000.000")

    def test_a_boundary_that_crosses_itself_is_warned_about(self):
        self.write("bow.waa", "0\n0\nA,2000,1000\nB,2025,1100\nC,2000,1100\nD,2025,1000\n")
        run = self.run_host("volume", "tilted.csv", "--level", "10", "--range", "bow.waa")
        self.assert_done(run, warning="bow.waa: the boundary crosses or touches itself: side 1-2 meets side 3-4")

    def test_a_boundary_of_two_vertices_is_refused(self):
        self.write("two.waa", "0\n0\nA,2000,1000\nB,2025,1100\n")
        for command in (("volume", "tilted.csv", "--level", "10", "--range", "two.waa"),
                        ("balance", "tilted.csv", "--range", "two.waa")):
            self.assert_refused(self.run_host(*command), FAILED,
                                "two.waa: the boundary has 2 vertices: a boundary needs at least three")

    def test_a_boundary_is_refused_before_the_surface_is_read(self):
        self.write("twice.csv", TILTED + "E,,1000,2000,10\n")  # read, it would be warned about
        self.write("two.waa", "0\n0\nA,2000,1000\nB,2025,1100\n")
        for command in (("volume", "twice.csv", "--level", "10"), ("balance", "twice.csv")):
            for boundary, says in (("two.waa", "two.waa: the boundary has 2 vertices"), ("none.waa", "none.waa: no such file")):
                self.assert_refused(self.run_host(*command, "--range", boundary), FAILED, says)

    def test_no_output_is_written_over_another(self):
        (self.folder / "link.html").symlink_to("page.html")
        for report, option, path in (("page.html", "--html", "./page.html"), ("link.html", "--html", "page.html"),
                                     ("map.svg", "--map", str(self.folder / "map.svg"))):
            for there in (False, True):
                if there:
                    self.write(Path(path).name, "old")
                run = self.run_host("volume", "tilted.csv", "--level", "10", "--report", report, option, path)
                with self.subTest(report=report, there=there):
                    self.assert_refused(run, WRONG_USAGE, f"--report and {option} name the same file: name two")
            (self.folder / path).unlink()
        self.write("other.txt", "old")
        self.assert_done(self.run_host("volume", "tilted.csv", "--level", "10", "--report", "other.txt", "--map", "map.svg"))

    def test_repeated_points_are_counted_in_a_warning_that_quiet_silences(self):
        self.write("twice.csv", TILTED + "E,,1000,2000,10\n")
        run = self.run_host("volume", "twice.csv", "--level", "10")
        self.assert_done(run, warning="twice.csv: 1 point at the position of another")
        self.assert_done(self.run_host("volume", "twice.csv", "--level", "10", "--quiet"))

    def test_a_page_by_the_name_of_the_report(self):
        run = self.run_host("volume", "tilted.csv", "--ref", "raised.csv", "--report", "report.HTML")
        self.assert_done(run)
        page = (self.folder / "report.HTML").read_text(encoding="utf-8")
        self.assertTrue(page.rstrip().endswith("</html>"), page)
        for text in ("raised", "10000.0000", "Fill volume", "Reference"):
            self.assertIn(text, page)

    def test_the_text_report_names_the_reference(self):
        self.assert_done(self.run_host("volume", "tilted.csv", "--ref", "raised.csv", "--report", "report.txt"))
        lines = (self.folder / "report.txt").read_text(encoding="ascii").split("\n")
        self.assertEqual(lines[3], f"{'Reference':20}{'raised':20}")

    def test_a_report_keeps_the_permissions_of_the_file_it_replaces(self):
        self.write("report.txt", "old")
        os.chmod(self.folder / "report.txt", 0o640)
        self.assert_done(self.run_host("volume", "tilted.csv", "--level", "10", "--report", "report.txt"))
        self.assertEqual((self.folder / "report.txt").stat().st_mode & 0o777, 0o640)

    def test_a_second_name_of_the_report_shows_the_new_one(self):
        self.write("report.txt", "old")
        os.link(self.folder / "report.txt", self.folder / "second.txt")
        self.assert_done(self.run_host("volume", "tilted.csv", "--level", "10", "--report", "report.txt"))
        self.assertEqual((self.folder / "second.txt").read_text(), (self.folder / "report.txt").read_text())
        self.assertIn("Volume report", (self.folder / "second.txt").read_text())

    def test_no_output_overwrites_the_reference_or_the_boundary(self):
        for other in ("raised.csv", "south.waa"):
            run = self.run_host("volume", "tilted.csv", "--ref", "raised.csv", "--range", "south.waa", "--report", other)
            self.assert_refused(run, 2, "--report would overwrite the input in " + other)

    def test_the_sample_site_against_its_design(self):
        run = self.run_host("volume", str(SITE / "ground.csv"), "--ref", str(SITE / "design.csv"), "--quiet", "--json")
        self.assert_done(run)
        found = json.loads(run.stdout)
        self.assertAlmostEqual(found["cut_plan_area"] + found["fill_plan_area"], found["covered_plan_area"], delta=1e-6)
        back = json_of(self.run_host("volume", str(SITE / "design.csv"), "--ref", str(SITE / "ground.csv"), "--quiet",
                                     "--json"))
        self.assertAlmostEqual(found["cut_volume"], back["fill_volume"], delta=1e-6)
        self.assertAlmostEqual(found["fill_volume"], back["cut_volume"], delta=1e-6)


if __name__ == "__main__":
    unittest.main()
