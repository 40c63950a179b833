"""What the host draws: cut/fill maps, TINs and contours as SVG, contours as DXF. Pictures are measured, not compared."""

import random
import unittest

from orvikdtm import FAILED, SITE, TILTED, WRONG_USAGE, HostTest, values
from pictures import Drawing, Picture

GROUND = str(SITE / "ground.csv")
DESIGN = str(SITE / "design.csv")
BOUNDARY = str(SITE / "boundary.waa")


def scattered(count):
    """Points of hilly ground, one a line."""
    numbers = random.Random(5)
    lines = []
    for i in range(count):
        x, y = numbers.uniform(0, 1000), numbers.uniform(0, 1000)
        lines.append(f"P{i},,{500000 + x:.3f},{3000000 + y:.3f},{50 + x / 40 + (y / 300) ** 2 + numbers.uniform(0, .5):.3f}\n")
    return "".join(lines)


class PictureTest(HostTest):
    def setUp(self):
        super().setUp()
        self.write("tilted.csv", TILTED)

    def done(self, *arguments):
        run = self.run_host(*arguments)
        self.assertEqual(run.returncode, 0, run.stderr)
        return values(run.stdout)

    def text(self, name):
        return (self.folder / name).read_text(encoding="utf-8")

    def map_of(self, *arguments):
        printed = self.done("volume", *arguments, "--map", "map.svg")
        self.assertEqual(printed["Map"], "map.svg")
        return Picture(self.text("map.svg")), printed


class Maps(PictureTest):
    def expect_areas(self, picture, printed, per_cent=0.05):
        whole = float(printed["Covered plan area"])
        for side in ("cut", "fill"):
            drawn = picture.area(side) + (picture.area("same") if side == "fill" else 0.0)
            self.assertAlmostEqual(drawn, float(printed[side.capitalize() + " plan area"]), delta=whole * per_cent / 100)

    def test_a_slope_is_cut_above_the_level_and_filled_below(self):
        picture, printed = self.map_of("tilted.csv", "--level", "15")
        self.expect_areas(picture, printed)
        for easting, northing in (p for line in picture.lines("cut") for p in line):
            self.assertGreaterEqual(northing, 2024.99)
            self.assertTrue(999.99 <= easting <= 1100.01)
        for _, northing in (p for line in picture.lines("fill") for p in line):
            self.assertLessEqual(northing, 2025.01)
        zero = picture.lines("zero")
        self.assertEqual(len(zero), 1)
        for _, northing in zero[0]:
            self.assertAlmostEqual(northing, 2025, delta=0.01)
        self.assertAlmostEqual(abs(zero[0][0][0] - zero[0][-1][0]), 100, delta=0.01)

    def test_north_is_up_and_east_is_right(self):
        self.map_of("tilted.csv", "--level", "15")
        picture = Picture(self.text("map.svg"))
        west, south = picture.survey([(picture.left, picture.top + 50 * picture.scale)])[0]
        self.assertAlmostEqual(west, 1000)
        self.assertAlmostEqual(south, 2000)

    def test_a_zero_line_along_edges_of_the_tin_is_drawn_whole(self):
        """A roof whose ridge is an edge between two slopes, one of which rises from the level and one falls."""
        self.write("fold.csv", "A,,0,0,8\nB,,100,0,8\nC,,0,40,10\nD,,100,40,10\nE,,0,90,15\nF,,100,90,15\n")
        picture, _ = self.map_of("fold.csv", "--level", "10")
        self.assertEqual(len(picture.lines("zero")), 1)
        line = picture.lines("zero")[0]
        self.assertAlmostEqual(abs(line[0][0] - line[-1][0]), 100, delta=0.02)
        for _, northing in line:
            self.assertAlmostEqual(northing, 40, delta=0.02)

    def test_ground_in_the_level_itself_is_neither_red_nor_blue(self):
        self.write("step.csv", "A,,0,0,10\nB,,100,0,10\nC,,0,40,10\nD,,100,40,10\nE,,0,90,15\nF,,100,90,15\n")
        picture, printed = self.map_of("step.csv", "--level", "10")
        self.assertAlmostEqual(picture.area("same"), 4000, delta=4)
        self.assertAlmostEqual(picture.area("cut"), 5000, delta=4)
        self.expect_areas(picture, printed)
        self.assertIn("No difference: 4000.000 m²", picture.texts())

    def test_the_sample_site_against_levels(self):
        for level in ("70", "78.5", "90"):
            with self.subTest(level=level):
                self.expect_areas(*self.map_of(GROUND, "--level", level))

    def test_the_zero_line_is_the_contour_of_the_level(self):
        picture, _ = self.map_of(GROUND, "--level", "78.5")
        zero = {(round(e, 1), round(n, 1)) for line in picture.lines("zero") for e, n in line}
        self.done("contours", GROUND, "c.dxf", "--interval", "1000", "--base", "78.5")
        contour = [p[:2] for line in Drawing(self.text("c.dxf")).polylines for p in line["points"]]
        near = {(round(e + i / 10, 1), round(n + j / 10, 1)) for e, n in contour for i in (-1, 0, 1) for j in (-1, 0, 1)}
        self.assertGreater(len(zero), 50)
        self.assertGreater(len(zero & near), 0.98 * len(zero))

    def test_the_sample_site_against_its_design_and_within_its_boundary(self):
        for arguments in ((GROUND, "--ref", DESIGN), (GROUND, "--level", "76", "--range", BOUNDARY),
                          (GROUND, "--ref", DESIGN, "--range", BOUNDARY), (DESIGN, "--ref", GROUND)):
            with self.subTest(arguments=arguments):
                picture, printed = self.map_of(*arguments)
                self.expect_areas(picture, printed)
                self.assertEqual(len(picture.paths("boundary")), int("--range" in arguments))

    def test_the_map_shows_the_numbers_that_are_printed(self):
        picture, printed = self.map_of(GROUND, "--level", "78.5")
        texts = picture.texts()
        for label, unit in (("Cut volume", "m³"), ("Fill volume", "m³"), ("Cut plan area", "m²"),
                            ("Fill plan area", "m²"), ("Cut surface area", "m²"), ("Fill surface area", "m²")):
            self.assertIn(f"{printed[label]} {unit}", texts)
        for text in ("Cut and fill", "ground", "against level 78.500 m", "Zero line", "N", "100 m"):
            self.assertIn(text, texts)

    def test_the_scale_bar_has_the_scale_of_the_map(self):
        picture, _ = self.map_of(GROUND, "--level", "78.5")
        bar = next(e for e in picture.root.iter() if e.get("class") == "scale-bar")
        drawn = sum(float(e.get("width")) for e in bar if e.tag.endswith("rect"))
        self.assertAlmostEqual(drawn / picture.scale, float(bar.get("data-length")), delta=0.001)

    def test_names_are_text_and_nothing_else(self):
        self.write("a<b>&\"c.csv", TILTED)
        picture, _ = self.map_of("a<b>&\"c.csv", "--level", "15")
        self.assertIn("a<b>&\"c", picture.texts())

    def test_surfaces_that_do_not_meet_leave_the_map_empty(self):
        self.write("far.csv", TILTED.replace("1000", "7000").replace("1100", "7100"))
        picture, _ = self.map_of("tilted.csv", "--ref", "far.csv")
        self.assertEqual(picture.paths("cut") + picture.paths("fill"), [])

    def test_a_large_survey_gives_a_picture_of_reasonable_size(self):
        self.write("large.csv", scattered(50000))
        picture, printed = self.map_of("large.csv", "--level", "65")
        self.expect_areas(picture, printed)
        self.assertLess(len(self.text("map.svg")), 1000000)
        self.done("preview", "large.csv", "tin.svg")
        self.assertLess(len(self.text("tin.svg")), 3000000)


class Contours(PictureTest):
    def test_a_slope_has_straight_contours(self):
        printed = self.done("contours", "tilted.csv", "c.dxf", "--interval", "2", "--base", "1")
        self.assertEqual((printed["Contour levels"], printed["Contour lines"]), ("5", "5"))
        drawing = Drawing(self.text("c.dxf"))
        self.assertEqual(drawing.sections, ["HEADER", "TABLES", "ENTITIES"])
        self.assertEqual(drawing.layers, ["CONTOURS", "CONTOURS_INDEX"])
        self.assertEqual(drawing.pairs[-1], (0, "EOF"))
        self.assertEqual([line["level"] for line in drawing.polylines], [11, 13, 15, 17, 19])
        self.assertEqual([line["layer"] for line in drawing.polylines],
                         ["CONTOURS_INDEX"] + 4 * ["CONTOURS"])
        for line in drawing.polylines:
            self.assertFalse(line["closed"])
            self.assertEqual({p[2] for p in line["points"]}, {line["level"]})
            for _, northing, _ in line["points"]:
                self.assertAlmostEqual(northing, 2000 + 5 * (line["level"] - 10))
            self.assertEqual({line["points"][0][0], line["points"][-1][0]}, {1000, 1100})

    def test_a_hill_has_rings(self):
        self.write("hill.csv", "A,,0,0,0\nB,,10,0,0\nC,,10,10,0\nD,,0,10,0\nE,,5,5,4\n")
        self.done("contours", "hill.csv", "c.dxf", "--interval", "1")
        lines = Drawing(self.text("c.dxf")).polylines
        self.assertEqual([(line["level"], line["closed"], len(line["points"])) for line in lines],
                         [(level, True, 4) for level in (0, 1, 2, 3)])

    def test_every_vertex_lies_on_the_surface_at_its_level(self):
        self.done("contours", GROUND, "c.dxf", "--interval", "2.5")
        points = [p for line in Drawing(self.text("c.dxf")).polylines for p in line["points"]]
        self.write("at.csv", "".join(f"P,,{e},{n}\n" for e, n, _ in points))
        self.run_host("height", GROUND, "--points", "at.csv", "--out", "heights.csv")
        heights = [line.split(",")[4] for line in self.text("heights.csv").splitlines()]
        self.assertEqual(len(heights), len(points))
        checked = [(float(h), p[2]) for h, p in zip(heights, points) if h]  # ends may round to outside the hull
        self.assertGreater(len(checked), 0.95 * len(points))
        for height, level in checked:
            self.assertAlmostEqual(height, level, delta=0.002)  # coordinates are rounded to a tenth of a millimetre

    def test_a_picture_has_the_lines_of_the_drawing(self):
        self.done("contours", GROUND, "c.dxf", "--interval", "5")
        printed = self.done("contours", GROUND, "c.svg", "--interval", "5")
        picture, drawing = Picture(self.text("c.svg")), Drawing(self.text("c.dxf"))
        self.assertEqual([float(e.get("data-level")) for e in picture.paths("contour")],
                         sorted({line["level"] for line in drawing.polylines}))
        self.assertEqual(len(drawing.polylines), int(printed["Contour lines"]))
        self.assertEqual({float(e.get("data-level")) for e in picture.paths("index")},
                         {line["level"] for line in drawing.polylines if line["layer"] == "CONTOURS_INDEX"})

    def test_flat_ground_has_no_contours(self):
        self.write("flat.csv", "A,,0,0,5\nB,,10,0,5\nC,,0,10,5\n")
        self.assertEqual(self.done("contours", "flat.csv", "c.dxf", "--interval", "1")["Contour lines"], "0")
        self.assertEqual(Drawing(self.text("c.dxf")).polylines, [])

    def test_what_makes_no_sense_is_refused(self):
        for arguments, status, says in (
                (("tilted.csv", "c.dxf"), WRONG_USAGE, "--interval is required"),
                (("tilted.csv", "c.dxf", "--interval", "0"), WRONG_USAGE, "--interval '0' is too small"),
                (("tilted.csv", "c.dxf", "--interval", "-1"), WRONG_USAGE, "--interval '-1' is too small"),
                (("tilted.csv", "c.dxf", "--interval", "nan"), WRONG_USAGE, "'nan' is not a number"),
                (("tilted.csv", "c.dxf", "--interval", "1", "--base", "x"), WRONG_USAGE, "--base 'x' is not a number"),
                (("tilted.csv", "c.dxf", "--interval", "0.001"), WRONG_USAGE, "more than 5000 contour levels"),
                (("tilted.csv", "c.pdf", "--interval", "1"), WRONG_USAGE, "the name must end in .svg or .dxf"),
                (("absent.csv", "c.dxf", "--interval", "1"), FAILED, "absent.csv: no such file"),
                (("tilted.csv", "nowhere/c.dxf", "--interval", "1"), FAILED, "the drawing cannot be written")):
            with self.subTest(arguments=arguments):
                self.assert_refused(self.run_host("contours", *arguments), status, says)
        self.assertEqual([f.name for f in self.folder.iterdir()], ["tilted.csv"])


class Previews(PictureTest):
    def test_a_square_has_its_edges_hull_and_contours(self):
        self.done("preview", "tilted.csv", "tin.svg", "--interval", "5")
        picture = Picture(self.text("tin.svg"))
        self.assertEqual(sum(len(line) - 1 for line in picture.lines("edges")), 5)
        hull = picture.lines("hull")
        self.assertEqual([len(line) for line in hull], [5])
        self.assertEqual({(round(e), round(n)) for e, n in hull[0]},
                         {(1000, 2000), (1100, 2000), (1100, 2050), (1000, 2050)})
        self.assertEqual([e.get("data-level") for e in picture.paths("contour")], ["10", "15", "20"])

    def test_the_sample_site_has_every_edge_once(self):
        printed = self.done("preview", GROUND, "tin.svg")
        picture = Picture(self.text("tin.svg"))
        edges = [frozenset((round(a[0], 2), round(a[1], 2)) for a in pair)
                 for line in picture.lines("edges") for pair in zip(line, line[1:])]
        self.assertEqual(len(edges), len(set(edges)))
        # Every triangle has three edges, every edge two triangles save those of the hull; edges too short to be seen
        # are left out.
        self.assertAlmostEqual(len(edges), 1.5 * int(printed["Triangles"]), delta=100)

    def test_what_makes_no_sense_is_refused(self):
        for arguments, says in ((("tilted.csv",), "OUTPUT is required"),
                                (("tilted.csv", "tin.png"), "the name must end in .svg"),
                                (("tilted.csv", "tin.svg", "--interval", "x"), "'x' is not a number")):
            with self.subTest(arguments=arguments):
                self.assert_refused(self.run_host("preview", *arguments), WRONG_USAGE, says)
        for option, name, ending in (("--map", "map.png", ".svg"), ("--html", "page.txt", ".html")):
            with self.subTest(option=option):
                run = self.run_host("volume", "tilted.csv", "--level", "15", option, name)
                self.assert_refused(run, WRONG_USAGE, "the name must end in " + ending)
        run = self.run_host("volume", "tilted.csv", "--level", "15", "--map", "tilted.csv")
        self.assertEqual(run.returncode, WRONG_USAGE)
        self.assertEqual(self.text("tilted.csv"), TILTED)


if __name__ == "__main__":
    unittest.main()
