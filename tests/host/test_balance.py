"""`orvikdtm balance`, held against rationals worked out here from the points alone."""

import random
import unittest
from fractions import Fraction

from orvikdtm import FAILED, SITE, TILTED, HostTest, json_of


def fill_of(triangle, level):
    """The volume between a level and the part of a triangle (rational corners) below it."""
    (ax, ay, _), (bx, by, _), (cx, cy, _) = triangle
    area = abs((bx - ax) * (cy - ay) - (cx - ax) * (by - ay)) / 2
    low, middle, high = sorted(z for _, _, z in triangle)
    if level <= low:
        return Fraction(0)
    if level >= high:
        return area * (level - (low + middle + high) / 3)
    if level <= middle:
        return area * (level - low) ** 3 / (3 * (middle - low) * (high - low))
    return area * (level - (low + middle + high) / 3) + area * (high - level) ** 3 / (3 * (high - middle) * (high - low))


def fan(heights):
    """A point in the middle of a square, and its corners: the only Delaunay triangulation is the fan."""
    corners = [(0, 0), (80, 0), (80, 80), (0, 80)]
    points = [(Fraction(x), Fraction(y), Fraction(z)) for (x, y), z in zip(corners, heights)]
    middle = (Fraction(40), Fraction(40), Fraction(heights[4]))
    return [(points[i], points[(i + 1) % 4], middle) for i in range(4)]


class Balance(HostTest):
    def write_fan(self, heights):
        places = [(0, 0), (80, 0), (80, 80), (0, 80), (40, 40)]
        self.write("fan.csv", "".join(f"P,,{x},{y},{z}\n" for (x, y), z in zip(places, heights)))

    def test_text(self):
        self.write("tilted.csv", TILTED)
        run = self.run_host("balance", "tilted.csv", "--step", "5")
        self.assert_done(run)
        self.assertEqual(run.stdout, """\
Surface               tilted
Balance level         15.000000
Factor                1.000
Cut volume            6250.000
Fill volume           6250.000
Covered plan area     5000.000

Levels
             Level               Cut              Fill     Cut less fill
            10.000         25000.000             0.000         25000.000
            15.000          6250.000          6250.000             0.000
            20.000             0.000         25000.000        -25000.000
""")

    def test_json(self):
        self.write("tilted.csv", TILTED)
        run = self.run_host("balance", "tilted.csv", "--from", "12", "--to", "18", "--step", "6", "--json")
        self.assert_done(run)
        found = json_of(run)
        self.assertEqual([row["level"] for row in found["levels"]], [12, 18])
        self.assertAlmostEqual(found["levels"][0]["cut"], 100 * 40 * 8 / 2, delta=1e-9)
        self.assertAlmostEqual(found["levels"][0]["cut_less_fill"], 15000, delta=1e-9)
        self.assertEqual(found["balance_level"], 15)

    def test_the_balance_is_exact(self):
        chance = random.Random(11)
        for factor in ("1", "1.15", "0.9"):
            for _ in range(6):
                heights = [chance.randint(-3000, 9000) / 100 for _ in range(5)]
                with self.subTest(factor=factor, heights=heights):
                    self.write_fan(heights)
                    triangles = fan([Fraction(str(z)) for z in heights])
                    run = self.run_host("balance", "fan.csv", "--factor", factor, "--json")
                    self.assert_done(run)
                    level = Fraction(json_of(run)["balance_level"])
                    self.assertTrue(self.is_root(triangles, Fraction(factor), level), float(level))

    def is_root(self, triangles, factor, level):
        """Whether the surplus of cut changes its sign within some units in the last place of the level."""
        def surplus(at):
            fill = sum(fill_of(t, at) for t in triangles)
            volume = sum(fill_of(t, Fraction(1000)) for t in triangles)
            cut = fill + 6400 * (1000 - at) - volume
            return factor * cut - fill

        near = Fraction(1, 2**42)  # of heights below 128: a hundred units in the last place
        return surplus(level - near) > 0 > surplus(level + near)

    def test_level_ground(self):
        self.write("flat.csv", TILTED.replace(",20\n", ",10\n"))
        run = self.run_host("balance", "flat.csv", "--json")
        self.assert_done(run)
        self.assertEqual(json_of(run)["balance_level"], 10)
        self.assertEqual(json_of(run)["levels"], [{"level": 10, "cut": 0, "fill": 0, "cut_less_fill": 0}])

    def test_within_a_boundary(self):
        self.write("tilted.csv", TILTED)
        self.write("south.waa", "0\n0\nB1,2000,1000\nB2,2000,1100\nB3,2025,1100\nB4,2025,1000\n")
        run = self.run_host("balance", "tilted.csv", "--range", "south.waa", "--json")
        self.assert_done(run)
        self.assertAlmostEqual(json_of(run)["balance_level"], 12.5, delta=1e-12)
        self.assertAlmostEqual(json_of(run)["covered_plan_area"], 2500, delta=1e-9)

    def test_a_boundary_beside_the_surface(self):
        self.write("tilted.csv", TILTED)
        self.write("far.waa", "0\n0\nB1,0,0\nB2,0,9\nB3,9,9\n")
        run = self.run_host("balance", "tilted.csv", "--range", "far.waa", "--quiet")
        self.assert_refused(run, FAILED, "far.waa: nothing of the surface lies within the boundary")

    def test_the_sample_site_balances_at_what_volume_finds_balanced(self):
        ground = str(SITE / "ground.csv")
        found = json_of(self.run_host("balance", ground, "--factor", "1.2", "--quiet", "--json"))
        self.assertAlmostEqual(1.2 * found["cut_volume"], found["fill_volume"], delta=1e-6)
        at = json_of(self.run_host("volume", ground, "--level", repr(found["balance_level"]), "--quiet", "--json"))
        self.assertAlmostEqual(at["cut_volume"], found["cut_volume"], delta=1e-6)


if __name__ == "__main__":
    unittest.main()
