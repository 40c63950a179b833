"""`orvikdtm info`."""

import random
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
            "Points off the TIN": "0",
            "Triangles": "2",
            "Edges": "5",
            "Hull edges": "4",
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

    def test_points_of_six_decimals_are_on_the_tin(self):
        """Rounding to four decimals, then to three, is not rounding to three: 0.00045 becomes 0.001."""
        source = random.Random(15)
        fractions = ("000000", "000449", "000450", "000451", "000499", "000500", "123450", "123449", "999950", "999949")
        for east, north in ((0, 0), (500000, 4000000), (-100, -200), (38512000, 3400000)):
            with self.subTest(east=east):
                lines = []
                for i in range(2000):
                    x, y = (f"{base + source.randrange(99)}.{source.choice(fractions)}" for base in (east, north))
                    lines.append(f"P{i},,{x},{y},{i % 9}\n")
                self.write("six.csv", "".join(lines))
                run = self.run_host("info", "six.csv", "--quiet")
                self.assertEqual(run.returncode, 0, run.stderr)
                printed = values(run.stdout)
                self.assertEqual(printed["Points off the TIN"], "0")
                self.assertEqual(self.run_host("convert", "six.csv", "six.ttin", "--quiet").returncode, 0)
                saved = values(self.run_host("info", "six.ttin", "--quiet").stdout)
                for label in ("Survey points", "Repeated positions", "Points off the TIN"):
                    self.assertEqual(saved[label], printed[label])
                vertices = int(printed["Edges"]) - int(printed["Triangles"]) + 1
                self.assertEqual(int(printed["Survey points"]) - int(printed["Repeated positions"]), vertices)

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

    def test_a_backslash_separates_folders_unless_a_file_has_it_in_its_name(self):
        (self.folder / "sub").mkdir()
        self.write("sub/ground.csv", TILTED)
        run = self.run_host("info", "sub\\ground.csv")
        self.assert_done(run)
        self.assertEqual(values(run.stdout)["Surface"], "ground")
        self.write("sub\\ground.csv", TILTED + "E,,1050,2025,15\n")
        run = self.run_host("info", "sub\\ground.csv")
        self.assert_done(run)
        self.assertEqual(values(run.stdout)["Survey points"], "5")

    def test_numbers_among_tabs_and_blanks_and_very_small_ones(self):
        self.write("tabs.csv", "A,,\t1000 , 2000,\t10\nB,,+1100,2000\t,10\nC,,1100,2050,1e-400\nD,,1000,2050,"
                               + "0." + "0" * 400 + "1\n")
        run = self.run_host("info", "tabs.csv")
        self.assert_done(run)
        self.assertEqual(values(run.stdout)["Elevation"], "0.000 .. 10.000")

    def test_further_fields_are_ignored_with_a_warning(self):
        self.write("commas.csv", TILTED + "E,,1050,5,2025,5,15\n")
        run = self.run_host("info", "commas.csv")
        self.assert_done(run, warning="1 of 5 lines have more than five fields, the rest is ignored: are there decimal")

    def test_a_byte_order_mark_is_no_text(self):
        self.write("marked.csv", b"\xef\xbb\xbf" + TILTED.encode())
        self.assert_done(self.run_host("info", "marked.csv"))
        self.write("marked.csv", b"\xef\xbb\xbf\n" + TILTED.encode())
        self.assert_done(self.run_host("info", "marked.csv"))

    def test_lines_longer_than_what_is_read_at_once(self):
        self.write("long.csv", "A," + "c" * 700000 + TILTED[2:] + "x" * 300000 + ",,1050,2025,15")
        run = self.run_host("info", "long.csv")
        self.assert_done(run)
        self.assertEqual(values(run.stdout)["Survey points"], "5")

    def test_names_of_surfaces_are_printed_in_full_on_one_line(self):
        for name, printed in (("\u00e9" * 40, "\u00e9" * 40), ("two\nlines", "two?lines")):
            with self.subTest(name=name):
                self.write(name + ".csv", TILTED)
                run = self.run_host("info", name + ".csv")
                self.assert_done(run)
                self.assertEqual(values(run.stdout)["Surface"], printed)

    def test_coordinates_as_large_as_they_may_be_give_finite_results(self):
        self.write("vast.csv", "A,,-9.2e12,-9.2e12,-1e12\nB,,9.2e12,-9.2e12,1e12\nC,,9.2e12,9.2e12,-1e12\n")
        run = self.run_host("info", "vast.csv")
        self.assert_done(run)
        self.assertNotRegex(run.stdout.lower(), "nan|inf")

    def test_the_sample_site(self):
        run = self.run_host("info", str(SITE / "ground.csv"))
        self.assert_done(run)
        printed = values(run.stdout)
        self.assertEqual(printed["Survey points"], "3011")
        self.assertEqual(printed["Repeated positions"], "14")
        self.assertEqual(printed["Triangulation"], "valid")


if __name__ == "__main__":
    unittest.main()
