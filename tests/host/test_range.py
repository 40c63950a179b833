"""`orvikdtm range`: checking boundary files, and making them."""

import random
import unittest
from fractions import Fraction

from orvikdtm import FAILED, FAULT, SITE, TILTED, HostTest, json_of, values

SQUARE = "1\n0\nB1,0,0,5\nB2,0,10\nB3,10,10\nB4,10,0\n"  # northing, easting

FAULTS = [
    # vertices (northing, easting), what is wrong
    ([(0, 0), (10, 10), (0, 10), (10, 0)], "crosses or touches itself: side 1-2 meets side 3-4 near easting 0.000"),
    ([(0, 0), (0, 10), (10, 10), (0, 5)], "crosses or touches itself: side 1-2 meets side 3-4"),
    ([(0, 0), (0, 10), (0, 5), (9, 5)], "crosses or touches itself: side 1-2 meets side 2-3"),
    ([(0, 0), (0, 10), (0, 10), (10, 10)], "vertex 3 is at the place of the one before it: easting 10.000"),
    ([(0, 0), (0, 10), (0, 20)], "encloses nothing: all its vertices lie on one line"),
    ([(1, 2), (1, 2), (0.5, 1), (3, 6)], "encloses nothing"),
    # The third vertex lies 1e-12 beyond the first side, or on it to the last bit.
    ([(0, 0), (3, 1), (1.5, 0.5), (0, 4)], "crosses or touches itself: side 1-2 meets side 2-3"),
]

REFUSED = [
    ("absent.waa", None, "absent.waa: no such file"),
    ("square.txt", SQUARE, "square.txt: not a boundary file: the name must end in .waa or .csv"),
    ("empty.waa", "", "empty.waa: the boundary has 0 vertices: a boundary needs at least three"),
    ("two.waa", "1\n0\nA,1,2\nB,3,4\n", "two.waa: the boundary has 2 vertices"),
    ("closed.waa", "1\n0\nA,1,2\nB,3,4\nA,1,2\n", "closed.waa: the boundary has 2 vertices"),
    ("letters.waa", SQUARE.replace("B3,10", "B3,north"), "letters.waa:5: the northing 'north' is not a number"),
    ("high.waa", SQUARE.replace(",5\n", ",up\n"), "high.waa:3: the elevation 'up' is not a number"),
    ("switches.waa", SQUARE[4:], "switches.waa:1: is 'B1,0,0,5', not a switch"),
]


def boundary(vertices):
    return "0\n0\n" + "".join(f"V,{n},{e}\n" for n, e in vertices)


class Range(HostTest):
    def test_text(self):
        self.write("square.waa", SQUARE)
        run = self.run_host("range", "square.waa")
        self.assert_done(run)
        self.assertEqual(values(run.stdout), {
            "Boundary": "square.waa",
            "Vertices": "4",
            "Last repeats first": "no",
            "Orientation": "counter-clockwise",
            "Crosses itself": "no",
            "Area": "100.000",
            "Perimeter": "40.000",
            "Easting": "0.000 .. 10.000",
            "Northing": "0.000 .. 10.000",
            "First switch": "yes",
            "Second switch": "no",
            "Check": "valid",
        })

    def test_a_switch_that_is_none_is_warned_about(self):
        self.write("yes.waa", SQUARE.replace("1\n0", "1\nyes", 1))
        run = self.run_host("range", "yes.waa")
        self.assert_done(run, warning="yes.waa:2: is 'yes', not a switch: taken for 0")
        self.assertEqual(values(run.stdout)["Second switch"], "no")

    def test_json(self):
        self.write("closed.csv", "0\n1\nB1,0,0\nB2,10,0\nB3,10,20.5\nB1,0,0\n")
        run = self.run_host("range", "closed.csv", "--json")
        self.assert_done(run)
        found = json_of(run)
        self.assertEqual(found["perimeter"], 10 + 20.5 + (10**2 + 20.5**2) ** 0.5)
        del found["perimeter"]
        self.assertEqual(found, {
            "boundary": "closed.csv", "vertices": 3, "last_repeats_first": True, "orientation": "clockwise",
            "crosses_itself": False, "area": 102.5, "easting": [0, 20.5], "northing": [0, 10], "first_switch": False,
            "second_switch": True, "check": "valid"})

    def test_faults_are_told_with_their_place(self):
        for vertices, says in FAULTS:
            with self.subTest(vertices=vertices):
                self.write("b.waa", boundary(vertices))
                run = self.run_host("range", "b.waa")
                self.assertEqual(run.returncode, FAULT, run.stderr)
                self.assertRegex(run.stderr, r"\Aorvikdtm: b.waa: the boundary [^\n]+\n\Z")
                self.assertIn(says, run.stderr)
                self.assertIn(values(run.stdout)["Check"], run.stderr)

    def test_crossings_are_those_of_rational_arithmetic(self):
        """Small whole coordinates, far from the origin, so that touching sides are common."""
        chance = random.Random(3)
        for _ in range(60):
            vertices = [(2**30 + chance.randint(0, 4), 2**31 + chance.randint(0, 4)) for _ in range(chance.randint(3, 5))]
            if any(a == b for a, b in zip(vertices, vertices[1:] + vertices[:1])):
                continue
            with self.subTest(vertices=vertices):
                self.write("b.waa", boundary(vertices))
                found = json_of(self.run_host("range", "b.waa", "--json"))
                self.assertEqual(found["crosses_itself"], crosses(vertices))
                self.assertEqual(found["area"], abs(doubled_area(vertices)) / 2)

    def test_what_cannot_be_a_boundary_is_refused(self):
        for name, contents, says in REFUSED:
            with self.subTest(name=name):
                if contents is not None:
                    self.write(name, contents)
                self.assert_refused(self.run_host("range", name), FAILED, says)

    def test_lines_without_a_vertex_are_counted(self):
        self.write("notes.waa", SQUARE + "a note\n\n")
        self.assert_done(self.run_host("range", "notes.waa"), warning="notes.waa: 1 line skipped")

    def test_the_hull_of_a_surface(self):
        self.write("tilted.csv", TILTED + "E,,1050,2025,15\n")
        run = self.run_host("range", "--hull", "tilted.csv", "--out", "hull.waa")
        self.assert_done(run)
        self.assertEqual(values(run.stdout)["Area"], "5000.000")
        self.assertEqual((self.folder / "hull.waa").read_text(encoding="ascii"),
                         "0\n0\nB1,2000,1000,10\nB2,2000,1100,10\nB3,2050,1100,20\nB4,2050,1000,20\n")
        self.assert_done(self.run_host("range", "hull.waa"))

    def test_points_in_their_order_with_every_digit(self):
        self.write("corners.csv", "N1,,38512593.804,3414229.512,69.292\nN2,,38512646.083,3414247.315,68.76\n"
                                  "N3,,38512600,3414300.001,70\n")
        run = self.run_host("range", "--points", "corners.csv", "--out", "made.csv")
        self.assert_done(run)
        self.assertEqual((self.folder / "made.csv").read_text(encoding="ascii"),
                         "0\n0\nN1,3414229.512,38512593.804,69.292\nN2,3414247.315,38512646.083,68.76\n"
                         "N3,3414300.001,38512600,70\n")

    def test_points_that_go_to_and_fro_make_no_boundary(self):
        self.write("mixed.csv", "".join(f"P,,{x},{y},1\n" for x, y in ((0, 0), (10, 10), (10, 0), (0, 10))))
        run = self.run_host("range", "--points", "mixed.csv", "--out", "made.waa")
        self.assert_refused(run, FAILED, "list the points in order around the site")
        self.assertFalse((self.folder / "made.waa").exists())

    def test_the_hull_limits_nothing(self):
        ground = str(SITE / "ground.csv")
        self.assertEqual(self.run_host("range", "--hull", ground, "--out", "hull.waa", "--quiet").returncode, 0)
        whole = json_of(self.run_host("volume", ground, "--level", "78.5", "--json", "--quiet"))
        within = json_of(self.run_host("volume", ground, "--level", "78.5", "--range", "hull.waa", "--json", "--quiet"))
        for key in ("cut_volume", "fill_volume", "covered_plan_area"):
            self.assertAlmostEqual(whole[key], within[key], delta=1e-4)


def doubled_area(vertices):
    return sum(a[1] * b[0] - b[1] * a[0] for a, b in zip(vertices, vertices[1:] + vertices[:1]))


def crosses(vertices):
    """Every pair of sides: a common point, other than the vertex that neighbours share."""
    sides = list(zip(vertices, vertices[1:] + vertices[:1]))
    count = len(sides)
    for i in range(count):
        for j in range(i + 1, count):
            shared = common(sides[i], sides[j])
            if shared == "nothing":
                continue
            neighbours = j == i + 1 or (i == 0 and j == count - 1)
            if not neighbours or shared == "more":
                return True
    return False


def common(s, t):
    """What two segments of whole coordinates have in common: nothing, one point, or more."""
    (ax, ay), (bx, by) = s
    (cx, cy), (dx, dy) = t
    along, other = (bx - ax, by - ay), (dx - cx, dy - cy)
    determinant = along[0] * other[1] - along[1] * other[0]
    apart = (cx - ax, cy - ay)
    if determinant != 0:
        u = Fraction(apart[0] * other[1] - apart[1] * other[0], determinant)
        v = Fraction(apart[0] * along[1] - apart[1] * along[0], determinant)
        return "point" if 0 <= u <= 1 and 0 <= v <= 1 else "nothing"
    if along[0] * apart[1] - along[1] * apart[0] != 0:
        return "nothing"
    square = along[0] ** 2 + along[1] ** 2
    ends = sorted(Fraction((x - ax) * along[0] + (y - ay) * along[1], square) for x, y in t)
    low, high = max(ends[0], 0), min(ends[1], 1)
    return "nothing" if low > high else "point" if low == high else "more"


if __name__ == "__main__":
    unittest.main()
