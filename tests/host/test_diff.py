"""`orvikdtm diff`."""

import unittest

from orvikdtm import TILTED, HostTest, json_of

AFTER = TILTED.replace("A,,1000,2000,10", "A,,990,2000,10").replace("C,,1100,2050,20", "C,,1100,2050,21") + "E,,1050,2025,14\n"


class Diff(HostTest):
    def setUp(self):
        super().setUp()
        self.write("before.csv", TILTED)
        self.write("after.csv", AFTER)

    def test_text(self):
        self.write("higher.csv", TILTED.replace(",10\n", ",12\n"))
        run = self.run_host("diff", "before.csv", "higher.csv")
        self.assert_done(run)
        self.assertEqual(run.stdout, """\
Before                before
After                 higher
Points unchanged      2
Points added          0
Points removed        0
Points moved          0
Longest move          0.000
Points raised         2
Largest rise          2.000
Points lowered        0
Largest fall          0.000
Filled volume         5000.000
Removed volume        0.000
Filled plan area      5000.000
Removed plan area     0.000
Common plan area      5000.000
""")

    def test_json_of_every_kind_of_change(self):
        run = self.run_host("diff", "before.csv", "after.csv", "--list", "changes.csv", "--json")
        self.assert_done(run)
        found = json_of(run)
        points = {key: value for key, value in found.items() if key.startswith(("points", "longest", "largest"))}
        self.assertEqual(points, {"points_unchanged": 2, "points_added": 1, "points_removed": 0, "points_moved": 1,
                                  "longest_move": 10, "points_raised": 1, "largest_rise": 1, "points_lowered": 0,
                                  "largest_fall": 0})
        self.assertEqual(found["list"], "changes.csv")
        self.assertEqual((self.folder / "changes.csv").read_text(encoding="ascii"), """\
change,name,easting,northing,elevation,new_easting,new_northing,new_elevation
raised,C,1100.0000,2050.0000,20.0000,1100.0000,2050.0000,21.0000
moved,A,1000.0000,2000.0000,10.0000,990.0000,2000.0000,10.0000
added,E,,,,1050.0000,2025.0000,14.0000
""")

    def test_the_other_way_round(self):
        forth = json_of(self.run_host("diff", "before.csv", "after.csv", "--json"))
        back = json_of(self.run_host("diff", "after.csv", "before.csv", "--json"))
        for one, other in (("points_added", "points_removed"), ("points_raised", "points_lowered"),
                           ("largest_rise", "largest_fall"), ("points_moved", "points_moved")):
            self.assertEqual((forth[one], forth[other]), (back[other], back[one]))
        self.assertAlmostEqual(forth["filled_volume"], back["removed_volume"], delta=1e-6)

    def test_names_that_are_there_twice_tell_nothing(self):
        self.write("a.csv", TILTED.replace("B,", "A,"))
        self.write("b.csv", TILTED.replace("B,,1100,2000", "A,,1101,2000").replace("A,,1000,2000", "A,,1000,1999"))
        found = json_of(self.run_host("diff", "a.csv", "b.csv", "--json"))
        self.assertEqual((found["points_moved"], found["points_added"], found["points_removed"]), (0, 2, 2))

    def test_nothing_changed(self):
        found = json_of(self.run_host("diff", "before.csv", "before.csv", "--json"))
        self.assertEqual((found["points_unchanged"], found["filled_volume"], found["removed_volume"]), (4, 0, 0))
        self.assertEqual(found["common_plan_area"], 5000)

    def test_repeats_find_the_partner_of_their_own_height(self):
        self.write("a.csv", TILTED + "X,,1050,2025,15\nY,,1050,2025,16\n")
        self.write("b.csv", TILTED + "Y,,1050,2025,16\nX,,1050,2025,15\n")
        found = json_of(self.run_host("diff", "a.csv", "b.csv", "--quiet", "--json"))
        self.assertEqual((found["points_unchanged"], found["points_raised"], found["points_lowered"]), (6, 0, 0))


if __name__ == "__main__":
    unittest.main()
