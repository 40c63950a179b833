"""`orvikdtm info`."""

import unittest

from orvikdtm import SITE, TILTED, HostTest, values


class Info(HostTest):
    def test_prints_every_statistic_of_a_tilted_rectangle(self):
        self.write("tilted.csv", TILTED)
        run = self.run_host("info", "tilted.csv")
        self.assert_done(run)
        self.assertEqual(values(run.stdout), {
            "Surface": "tilted",
            "Survey points": "4",
            "Repeated positions": "0",
            "Triangles": "2",
            "Plan area": "5000.000",
            "Surface area": "5099.020",  # 100 by the slope's length, sqrt(50^2 + 10^2)
            "Plan perimeter": "300.000",
            "Surface perimeter": "301.980",
            "Elevation": "10.000 .. 20.000",
            "Easting": "1000.000 .. 1100.000",
            "Northing": "2000.000 .. 2050.000",
            "Triangulation": "valid",
        })

    def test_repeated_positions_are_counted_wherever_the_site_lies(self):
        for offset in (0, 38512000):
            with self.subTest(offset=offset):
                corners = [(0, 0), (100, 0), (100, 50), (0, 50), (100, 50), (0, 0), (0, 0)]
                self.write("twice.csv", "".join(f"P,,{offset + x},{offset + y},1\n" for x, y in corners))
                run = self.run_host("info", "twice.csv")
                self.assert_done(run)
                self.assertEqual(values(run.stdout)["Repeated positions"], "3")
                self.assertEqual(values(run.stdout)["Triangulation"], "valid")

    def test_dat_files_any_case_and_carriage_returns_are_read(self):
        self.write("SITE.DAT", TILTED.replace("\n", "\r\n\r\n"))
        run = self.run_host("info", "SITE.DAT")
        self.assert_done(run)
        self.assertEqual(values(run.stdout)["Survey points"], "4")

    def test_the_surface_is_named_after_the_file(self):
        (self.folder / "north.part").mkdir()
        self.write("north.part/ground.v2.csv", TILTED)
        run = self.run_host("info", "north.part/ground.v2.csv")
        self.assert_done(run)
        self.assertEqual(values(run.stdout)["Surface"], "ground.v2")

    def test_lines_that_hold_no_point_are_counted_in_a_warning(self):
        self.write("ground.csv", TILTED + "\n# checked,by,rod\n\nE,,5,6\n")
        run = self.run_host("info", "ground.csv")
        self.assert_done(run, warning="ground.csv: 2 of 6 lines skipped")
        self.assertEqual(values(run.stdout)["Survey points"], "4")

    def test_the_sample_site(self):
        run = self.run_host("info", str(SITE / "ground.csv"))
        self.assert_done(run)
        printed = values(run.stdout)
        self.assertEqual(printed["Survey points"], "3011")
        self.assertEqual(printed["Repeated positions"], "14")
        self.assertEqual(printed["Triangulation"], "valid")


if __name__ == "__main__":
    unittest.main()
