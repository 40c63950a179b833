"""`orvikdtm volume`."""

import unittest

from orvikdtm import FAILED, SITE, TILTED, HostTest, values


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
