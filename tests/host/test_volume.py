"""`orvikdtm volume`."""

import random
import re
import unittest
from fractions import Fraction

from orvikdtm import FAILED, SITE, TILTED, HostTest, json_of, values

# Triangles of 10 km whose third corner lies some millimetres beside the longest side.
SLIVERS = 40


def slivers():
    """Corners as texts of decimals."""
    source = random.Random(14)
    triangles = []
    for i in range(SLIVERS):
        height = [f"{source.uniform(0, 20):.3f}" for _ in range(3)]
        middle = (f"{source.uniform(2000, 8000):.3f}", f"{i + source.choice((0.001, 0.002, 0.003)):.3f}")
        triangles.append([("0.000", f"{i}.000", height[0]), ("10000.000", f"{i}.000", height[1]), (*middle, height[2])])
    return triangles


def above_and_below(corners, level):
    """Plan area and volume of a triangle above a level, and those below it, in whole fractions."""
    def measure(polygon):
        area = volume = Fraction(0)
        for (x0, y0, d0), (x1, y1, d1), (x2, y2, d2) in ((polygon[0], *polygon[i:i + 2]) for i in range(1, len(polygon) - 1)):
            part = ((x1 - x0) * (y2 - y0) - (y1 - y0) * (x2 - x0)) / 2
            area += part
            volume += part * (d0 + d1 + d2) / 3
        return abs(area), abs(volume)

    def kept(polygon, sign):
        result = []
        for p, q in zip(polygon, polygon[1:] + polygon[:1]):
            if sign * p[2] >= 0:
                result.append(p)
            if p[2] * q[2] < 0:
                share = p[2] / (p[2] - q[2])
                result.append(tuple(a + share * (b - a) for a, b in zip(p, q)))
        return result

    polygon = [(Fraction(x), Fraction(y), Fraction(z) - level) for x, y, z in corners]
    return measure(kept(polygon, 1)), measure(kept(polygon, -1))


class Volume(HostTest):
    def setUp(self):
        super().setUp()
        self.write("tilted.csv", TILTED)

    def volume(self, level, *more, points="tilted.csv"):
        return self.run_host("volume", points, "--level", level, "--report", "report.txt", *more)

    def report(self):
        return (self.folder / "report.txt").read_text(encoding="ascii")

    def test_a_level_below_the_ground_is_all_cut(self):
        run = self.volume("10")
        self.assert_done(run)
        self.assertEqual(values(run.stdout), {
            "Surface": "tilted",
            "Level": "10.000",
            "Cut volume": "25000.000",  # a wedge: 100 by 50 by 10, halved
            "Fill volume": "0.000",
            "Cut plan area": "5000.000",
            "Cut surface area": "5099.020",
            "Fill plan area": "0.000",
            "Fill surface area": "0.000",
            "Covered plan area": "5000.000",
            "Report": "report.txt",
        })

    def test_a_level_through_the_ground_has_cut_and_fill(self):
        run = self.volume("15")
        self.assert_done(run)
        printed = values(run.stdout)
        self.assertEqual((printed["Cut volume"], printed["Fill volume"]), ("6250.000", "6250.000"))
        self.assertEqual((printed["Cut plan area"], printed["Fill plan area"]), ("2500.000", "2500.000"))

    def test_levels_may_be_negative_or_carry_a_plus(self):
        for level, cut in (("-5", "100000.000"), ("+10.0", "25000.000"), ("1e1", "25000.000")):
            with self.subTest(level=level):
                run = self.volume(level)
                self.assert_done(run)
                self.assertEqual(values(run.stdout)["Cut volume"], cut)

    def test_both_methods_agree_to_the_printed_accuracy(self):
        for points in ("tilted.csv", str(SITE / "ground.csv")):
            for level in ("12.5", "78.5"):
                with self.subTest(points=points, level=level):
                    default = self.volume(level, points=points)
                    report = self.report()
                    exact = self.volume(level, "--method", "exact", points=points)
                    self.assertEqual((exact.stdout, self.report()), (default.stdout, report))
                    sampled = self.volume(level, "--method", "sampled", points=points)
                    for run in (default, exact, sampled):
                        self.assertEqual(run.returncode, 0, run.stderr)
                    self.assertEqual(self.report().splitlines()[2], report.splitlines()[2])
                    exact_values, sampled_values = values(exact.stdout), values(sampled.stdout)
                    for label in ("Cut volume", "Fill volume", "Cut plan area", "Fill surface area"):
                        self.assertAlmostEqual(float(exact_values[label]), float(sampled_values[label]), delta=0.0015)

    def test_slivers_are_measured_exactly(self):
        """Whole and split by the level, in all that the program prints and writes."""
        triangles = slivers()
        self.write("slivers.sjw", "".join(f"{v}\n" for t in triangles for corner in t for v in corner) + "nil\n")
        for level in ("-1", "10", "21"):
            with self.subTest(level=level):
                parts = [above_and_below(corners, Fraction(level)) for corners in triangles]
                (cut_area, cut), (fill_area, fill) = ([float(sum(p[side][i] for p in parts)) for i in (0, 1)]
                                                      for side in (0, 1))
                run = self.volume(level, "--json", "--html", "page.html", points="slivers.sjw")
                self.assertEqual(run.returncode, 0, run.stderr)
                printed = json_of(run)
                for label, expected in (("cut_volume", cut), ("fill_volume", fill), ("cut_plan_area", cut_area),
                                        ("fill_plan_area", fill_area), ("covered_plan_area", cut_area + fill_area)):
                    self.assertAlmostEqual(printed[label], expected, delta=1e-7 * (cut + fill), msg=label)
                total = f"{cut_area + fill_area:.4f}"
                self.assertIn(f"{'Plan area':20}{total:20}", self.report())
                page = (self.folder / "page.html").read_text(encoding="utf-8")
                self.assertIsNotNone(re.search(r"Plan area</t[dh]>\s*<td[^>]*>" + re.escape(total), page), "the page")
        info = json_of(self.run_host("info", "slivers.sjw", "--json"))
        self.assertAlmostEqual(info["plan_area"], cut_area + fill_area, delta=1e-7)

    def test_the_report_is_in_english_by_default(self):
        self.assert_done(self.volume("10"))
        self.assertEqual(self.report().split("\n"), [
            "\t\tVolume report",
            "",
            f"{'Surface':20}{'tilted':20}",
            f"{'Level':20}{'10.0000':20}",
            "",
            f"{'Volumes':20}",
            f"{'Cut volume':20}{'25000.0000':20}",
            f"{'Fill volume':20}{'0.0000':20}",
            "",
            f"{'Surface:':20}",
            f"{'Plan area':20}{'5000.0000':20}",
            f"{'Surface area':20}{'5099.0195':20}",
            f"{'Plan perimeter':20}{'300.0000':20}",
            f"{'Surface perimeter':20}{'301.9804':20}",
            "",
            f"{'Cut areas':20}",
            f"{'Plan area':20}{'5000.0000':20}",
            f"{'Surface area':20}{'5099.0195':20}",
            "",
            f"{'Fill areas':20}",
            f"{'Plan area':20}{'0.0000':20}",
            f"{'Surface area':20}{'0.0000':20}",
            "",
        ])

    def test_the_report_takes_the_labels_that_it_is_given(self):
        self.assert_done(self.volume("10", "--labels", "Bericht,Modell,Horizont,D,Abtrag,F,G,H,I,J,K,L"))
        lines = self.report().split("\n")
        self.assertEqual(lines[0], "\t\tBericht")
        self.assertEqual(lines[3], f"{'Horizont':20}{'10.0000':20}")
        self.assertEqual(lines[9], f"{'Modell:':20}")

    def test_a_report_that_is_there_already_is_replaced(self):
        self.write("report.txt", "x" * 5000)
        self.assert_done(self.volume("10"))
        self.assertNotIn("x", self.report())

    def test_a_long_name_is_cut_between_two_characters_in_the_report(self):
        name = "x" + "\u00e9" * 20
        self.write(name + ".csv", TILTED)
        run = self.volume("10", points=name + ".csv")
        self.assert_done(run)
        self.assertEqual(values(run.stdout)["Surface"], name)
        report = (self.folder / "report.txt").read_text(encoding="utf-8")
        self.assertIn("x" + "\u00e9" * 11 + "\n", report.replace(" ", ""))

    def test_a_report_may_go_to_a_device_or_through_a_link(self):
        (self.folder / "link.txt").symlink_to("report.txt")
        for report in ("/dev/null", "link.txt", "sub\\report.txt"):
            with self.subTest(report=report):
                (self.folder / "sub").mkdir(exist_ok=True)
                self.assert_done(self.run_host("volume", "tilted.csv", "--level", "10", "--report", report))
        self.assertTrue((self.folder / "link.txt").is_symlink())
        self.assertEqual((self.folder / "sub/report.txt").read_text(), self.report())

    def test_the_report_cannot_share_a_file_with_the_results(self):
        for report in ("both.txt", "/dev/stdout"):
            with self.subTest(report=report), open(self.folder / "both.txt", "w", encoding="utf-8") as output:
                run = self.run_host("volume", "tilted.csv", "--level", "10", "--report", report, stdout=output)
                self.assert_refused(run, FAILED, "output goes there: name another file")
        self.assertEqual((self.folder / "both.txt").read_text(), "")

    def test_the_sample_site_adds_up(self):
        """Cut and fill areas make up the whole, and a level 1 m lower has one layer of the site more to cut."""
        def at(level):
            run = self.volume(level, points=str(SITE / "ground.csv"))
            self.assert_done(run, warning="ground.csv: 14 points at the position of another")
            return {label: float(text) for label, text in values(run.stdout).items() if " " in label}

        high, low = at("78.5"), at("77.5")
        area = high["Cut plan area"] + high["Fill plan area"]
        self.assertGreater(min(high.values()), 1000.0)
        self.assertAlmostEqual(low["Cut plan area"] + low["Fill plan area"], area, delta=0.01)
        balance = (low["Cut volume"] - low["Fill volume"]) - (high["Cut volume"] - high["Fill volume"])
        self.assertAlmostEqual(balance, area, delta=0.05)


if __name__ == "__main__":
    unittest.main()
