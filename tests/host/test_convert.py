"""`orvikdtm convert`, and that every format is read by every command."""

import unittest

from orvikdtm import FAILED, SITE, TILTED, HostTest, json_of, values

XML = """<?xml version="1.0"?>
<LandXML><Surfaces><Surface name="s"><Definition surfType="TIN">
 <Pnts>
  <P id="1">2000 1000 10</P><P id="2">2000 1100 10</P>
  <!-- <P id="9">not a point</P> -->
  <P id="3">2050 1100 20</P><P id="4">2050
    1000 20</P>
 </Pnts>
 <Faces><F>1 2 3</F><F>1 3 4</F></Faces>
</Definition></Surface></Surfaces></LandXML>
"""

SJW = "".join(f"{v}\n" for v in (1000, 2000, 10, 1100, 2000, 10, 1100, 2050, 20,
                                 1000, 2000, 10, 1100, 2050, 20, 1000, 2050, 20)) + "nil"

REFUSED = [
    # file name, its contents, what the message says
    ("letters.sjw", SJW.replace("1100", "east", 1), "letters.sjw:4: the easting 'east' is not a number"),
    ("short.sjw", "1\n2\n3\n4\nnil", "short.sjw:5: triangle 1 has fewer than nine numbers"),
    ("none.sjw", "nil", "none.sjw: holds no triangles"),
    ("empty.sjw", "", "empty.sjw: holds no triangles"),
    ("two.sjw", "1\n1\n0\n2\n2\n0\n", "two.sjw:6: triangle 1 has fewer than nine numbers"),
    ("line.sjw", "0\n0\n0\n1\n1\n1\n2\n2\n2\nnil", "line.sjw: "),
    ("letters.xml", XML.replace("1100 10", "east 10"), "letters.xml:4: the easting 'east' is not a number"),
    ("face.xml", XML.replace("1 2 3", "1 two 3"), "face.xml:9: the point number 'two' is not a number"),
    ("nowhere.xml", XML.replace("1 2 3", "1 2 7"), "nowhere.xml:9: there is no point 7 for the face"),
    ("skipped.xml", XML.replace("2050 1100 20<", "2050 1100<"), "skipped.xml:9: there is no point 3 for the face"),
    ("wrapped.xml", XML.replace("    1000 20", "    x 20"), "wrapped.xml:6: the easting 'x' is not a number"),
    ("none.xml", "<LandXML></LandXML>", "none.xml: holds no LandXML surface"),
    ("empty.xml", "", "empty.xml: holds no LandXML surface"),
    ("torn.xml", XML[:XML.index("</Definition>")], "torn.xml: "),
    ("empty.ttin", "", "empty.ttin: is not a surface file, or it is damaged"),
    ("text.ttin", TILTED, "text.ttin: is not a surface file, or it is damaged"),
]


class Convert(HostTest):
    def setUp(self):
        super().setUp()
        self.write("tilted.csv", TILTED)
        self.write("tilted.xml", XML)
        self.write("tilted.sjw", SJW)
        self.assert_done(self.run_host("convert", "tilted.csv", "tilted.ttin"))

    def test_text(self):
        run = self.run_host("convert", "tilted.csv", "out.sjw")
        self.assert_done(run)
        self.assertEqual(run.stdout, "Surface               tilted\n"
                                     "Survey points         4\n"
                                     "Triangles             2\n"
                                     "Output                out.sjw\n")
        lines = (self.folder / "out.sjw").read_text(encoding="ascii").split("\n")
        self.assertEqual((len(lines), lines[-1]), (19, "nil"))

    def test_json(self):
        run = self.run_host("convert", "tilted.csv", "out.ttin", "--json")
        self.assert_done(run)
        self.assertEqual(json_of(run), {"surface": "tilted", "survey_points": 4, "triangles": 2, "output": "out.ttin"})
        self.assertEqual((self.folder / "out.ttin").read_bytes()[:5], b"DTM\0\1")

    def test_every_command_reads_every_format(self):
        expected = {"info": "plan_area", "height": "height", "volume": "cut_volume", "balance": "balance_level"}
        for form in ("csv", "ttin", "sjw", "xml"):
            surface = "tilted." + form
            for command, more in (("info", ()), ("height", ("--at", "1050,2025")), ("volume", ("--level", "15")),
                                  ("balance", ())):
                with self.subTest(form=form, command=command):
                    run = self.run_host(command, surface, *more, "--json")
                    self.assert_done(run)
                    value = {"info": 5000, "height": 15, "volume": 6250, "balance": 15}[command]
                    self.assertAlmostEqual(json_of(run)[expected[command]], value, delta=1e-9)
            with self.subTest(form=form):
                self.assert_done(self.run_host("diff", surface, "tilted.csv"))
                self.assert_done(self.run_host("volume", "tilted.csv", "--ref", surface))
                self.assert_done(self.run_host("range", "--hull", surface, "--out", "hull.waa"))
                self.assert_done(self.run_host("convert", surface, "again.ttin"))
                self.assert_done(self.run_host("convert", surface, "again.sjw"))

    def test_there_and_back_keeps_the_surface(self):
        ground = str(SITE / "ground.csv")
        before = json_of(self.run_host("info", ground, "--json"))
        self.assertEqual(self.run_host("convert", ground, "site.ttin", "--quiet").returncode, 0)
        self.assertEqual(self.run_host("convert", "site.ttin", "site.sjw", "--quiet").returncode, 0)
        for name in ("site.ttin", "site.sjw"):
            after = json_of(self.run_host("info", name, "--json"))
            for key in ("triangles", "edges", "hull_edges", "triangulation"):
                self.assertEqual(after[key], before[key])
            for key in ("plan_area", "surface_area", "plan_perimeter"):
                self.assertAlmostEqual(after[key], before[key], delta=1e-3)
        self.assertEqual(json_of(self.run_host("info", "site.ttin", "--json"))["repeated_positions"], 14)

    def test_points_that_faces_of_landxml_name_are_found(self):
        points, faces = XML[XML.index(" <Pnts>"):XML.index(" <Faces>")], XML[XML.index(" <Faces>"):XML.index("</Def")]
        for name, contents in (
                ("behind.xml", XML.replace(points, "").replace(faces, faces + points)),
                ("quotes.xml", XML.replace('id="4"', "old-id='9'\n id = '4'")),
                ("gaps.xml", XML.replace('id="4"', 'id="+4000000000"').replace("3 4", "3 4000000000")),
                ("zero.xml", XML.replace(' id="4"', "").replace("3 4", "3 0")),
                ("invisible.xml", XML.replace("</Faces>", "<F i='1'>1 2 7</F></Faces>"))):
            self.write(name, contents)
            with self.subTest(name=name):
                run = self.run_host("info", name, "--json")
                self.assert_done(run)
                self.assertAlmostEqual(json_of(run)["plan_area"], 5000, delta=1e-9)

    def test_a_surface_file_that_lost_its_tin_is_warned_about(self):
        whole = (self.folder / "tilted.ttin").read_bytes()
        points = 85 + 4 * 48
        lost = "its TIN cannot be read, so its points are triangulated anew"
        for contents, warning in ((whole[:-1], lost), (whole[:points + 1], lost), (whole[:points + 11], lost),
                                  (whole[:3] + b"\0\2" + whole[5:], lost), (whole[:points], None), (whole + b"more", None)):
            self.write("some.ttin", contents)
            with self.subTest(size=len(contents)):
                run = self.run_host("info", "some.ttin", "--json")
                self.assert_done(run, warning=warning)
                self.assertAlmostEqual(json_of(run)["plan_area"], 5000, delta=1e-9)
        for size in (84, points - 1):
            self.write("some.ttin", whole[:size])
            self.assert_refused(self.run_host("info", "some.ttin"), FAILED, "some.ttin: is not a surface file")

    def test_damaged_files_are_refused_by_every_command(self):
        for name, contents, says in REFUSED:
            self.write(name, contents)
            for command in (("info", name), ("convert", name, "out.ttin"), ("height", name, "--at", "1,1"),
                            ("volume", name, "--level", "1"), ("balance", name), ("diff", name, "tilted.csv"),
                            ("diff", "tilted.csv", name), ("range", "--hull", name, "--out", "r.waa")):
                with self.subTest(command=command):
                    self.assert_refused(self.run_host(*command), FAILED, says)
                    self.assertFalse((self.folder / "out.ttin").exists())

    def test_a_surface_file_cut_short_is_refused_or_rebuilt(self):
        whole = (self.folder / "tilted.ttin").read_bytes()
        for length in range(len(whole)):
            self.write("cut.ttin", whole[:length])
            run = self.run_host("info", "cut.ttin", "--json")
            if length < 5 + 80 + 4 * 48:
                self.assert_refused(run, FAILED, "cut.ttin: is not a surface file, or it is damaged")
            else:  # the points are whole, the TIN is made again
                self.assertEqual((run.returncode, json_of(run)["triangles"]), (0, 2))

    def test_a_hole_is_no_fault_of_an_imported_surface(self):
        corners = [(0, 0), (90, 0), (90, 90), (0, 90), (30, 30), (60, 30), (60, 60), (30, 60)]
        faces = [(0, 1, 5), (0, 5, 4), (1, 2, 6), (1, 6, 5), (2, 3, 7), (2, 7, 6), (3, 0, 4), (3, 4, 7)]
        lines = [f"{v}\n" for f in faces for i in f for v in (*corners[i], 5)]
        self.write("ring.sjw", "".join(lines) + "nil")
        run = self.run_host("info", "ring.sjw")
        self.assert_done(run)
        self.assertEqual(values(run.stdout)["Triangulation"],
                         "valid, with holes or a concave outline: 900.000 of its hull not covered")
        self.assert_done(self.run_host("volume", "ring.sjw", "--level", "4"))
        run = self.run_host("range", "--hull", "ring.sjw", "--out", "r.waa")
        self.assert_done(run, warning="1 further ring of the outline left out")
        self.assertEqual(values(run.stdout)["Area"], "8100.000")

    def test_every_command_tells_of_a_tiny_overlap(self):
        triangles = [(0, 0, 10, 0, 0, 10), (10, 0, 10, 10, 0, 10), (5, 2, 5.002, 2, 5, 2.003)]
        text = "".join(f"{t[i]}\n{t[i + 1]}\n1\n" for t in triangles for i in (0, 2, 4)) + "nil"
        self.write("island.sjw", text)
        self.assertEqual(self.run_host("info", "island.sjw").returncode, 3)
        for command in (["volume", "island.sjw", "--level", "4"], ["convert", "island.sjw", "island.ttin"],
                        ["height", "island.sjw", "--at", "3,3"], ["volume", "island.ttin", "--level", "4"]):
            run = self.run_host(*command)
            self.assertEqual(run.returncode, 0, run.stderr)
            self.assertRegex(run.stderr, r"\Aorvikdtm: warning: [^\n]*: the TIN is not valid, so areas and volumes may be wrong: "
                                         r"triangle \d overlaps another one, near [^\n]*\n\Z")

    def test_an_overlap_is_a_fault_and_told_with_its_place(self):
        triangles = [(0, 0, 9, 0, 0, 9), (0, 0, 9, 0, 0, 8), (0, 0, 9, 0, 0, 7)]
        text = "".join(f"{t[i]}\n{t[i + 1]}\n1\n" for t in triangles for i in (0, 2, 4)) + "nil"
        self.write("overlap.sjw", text)
        run = self.run_host("info", "overlap.sjw")
        self.assertEqual(run.returncode, 3, run.stderr)
        self.assertRegex(run.stderr, r"\Aorvikdtm: overlap.sjw: the TIN is not valid: .*near easting \d+\.\d{3}, "
                                     r"northing \d+\.\d{3}\n\Z")
        self.assertNotIn("valid", values(run.stdout)["Triangulation"])
        self.assertIn("the TIN is not valid", self.run_host("volume", "overlap.sjw", "--level", "4").stderr)


if __name__ == "__main__":
    unittest.main()
