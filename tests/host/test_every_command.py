"""Every command by one table: what it prints as text and as JSON, the example of its help, and what each of its inputs
is refused for."""

import json
import re
import unittest
from dataclasses import dataclass

from orvikdtm import DONE, FAILED, FAULT, TILTED, HostTest

DESIGN = TILTED.replace(",10\n", ",12\n").replace(",20\n", ",12\n")
WEST = "1\n0\nB1,2000,1000\nB2,2000,1050\nB3,2050,1050\nB4,2050,1000\n"
FILES = {"tilted.csv": TILTED, "design.csv": DESIGN, "west.waa": WEST, "places.csv": "N1,1050,2025\nN2,1100,2050\n"}

NUMBER = re.compile(r"(?<=[ \[])-?\d+(?:\.\d+)?(?:e[+-]?\d+)?(?=[,\]}\n])")


@dataclass(frozen=True)
class Case:
    command: tuple  # the command line
    inputs: dict    # words of it that are input files, and the kind of each
    text: str       # what it prints
    json: str       # the same with --json: numbers to a millionth


# An input of each kind that cannot be used: name, contents (None: no such file), and what the message says of it.
BAD = {
    "surface": (
        ("absent.csv", None, "absent.csv: no such file"),
        ("empty.csv", "", "empty.csv: holds no survey points"),
        ("ground.txt", TILTED, "ground.txt: not a surface: the name must end in"),
        ("two.csv", "A,,1,2,3\nB,,4,5,6\n", "two.csv: holds 2 survey points"),
        ("line.csv", "A,,0,0,1\nB,,1,1,2\nC,,2,2,9\n", "line.csv: all its points lie on one line"),
        ("letters.csv", TILTED + "E,,1050,north,1\n", "letters.csv:5: the northing 'north' is not a number"),
    ),
    "boundary": (
        ("absent.waa", None, "absent.waa: no such file"),
        ("empty.waa", "", "empty.waa: the boundary has 0 vertices"),
        ("west.txt", WEST, "west.txt: not a boundary file: the name must end in"),
        ("two.waa", "1\n0\nA,2000,1000\nB,2050,1050\n", "two.waa: the boundary has 2 vertices"),
        ("line.waa", "1\n0\nA,0,0\nB,1,1\nC,2,2\n", "line.waa: the boundary encloses nothing: all its vertices lie on one line"),
        ("letters.waa", WEST.replace("B3,2050", "B3,north"), "letters.waa:5: the northing 'north' is not a number"),
    ),
    "corners": (
        ("absent.csv", None, "absent.csv: no such file"),
        ("empty.csv", "", "empty.csv: "),
        ("ground.txt", TILTED, "ground.txt: not a point file: the name must end in"),
        ("two.csv", "A,,1,2,3\nB,,4,5,6\n", "two.csv: "),
        ("line.csv", "A,,0,0,1\nB,,1,1,2\nC,,2,2,9\n", "line.csv: "),
        ("letters.csv", TILTED + "E,,1050,north,1\n", "letters.csv:5: the northing 'north' is not a number"),
    ),
    "places": (
        ("absent.csv", None, "absent.csv: no such file"),
        ("empty.csv", "", "empty.csv: holds no points"),
        ("letters.csv", "N1,1050,north\n", "letters.csv:1: the northing 'north' is not a number"),
    ),
}

TABLE = [
    Case(("info", "tilted.csv"),
         {"tilted.csv": "surface"},
         """\
Surface               tilted
Survey points         4
Repeated positions    0
Points off the TIN    0
Triangles             2
Edges                 5
Hull edges            4
Plan area             5000.000
Surface area          5099.020
Plan perimeter        300.000
Surface perimeter     301.980
Elevation             10.000 .. 20.000
Easting               1000.000 .. 1100.000
Northing              2000.000 .. 2050.000
Triangulation         valid
""", """\
{
  "surface": "tilted",
  "survey_points": 4,
  "repeated_positions": 0,
  "points_off_the_tin": 0,
  "triangles": 2,
  "edges": 5,
  "hull_edges": 4,
  "plan_area": 5000,
  "surface_area": 5099.019514,
  "plan_perimeter": 300,
  "surface_perimeter": 301.98039,
  "elevation": [10, 20],
  "easting": [1000, 1100],
  "northing": [2000, 2050],
  "triangulation": "valid"
}
"""),
    Case(("convert", "tilted.csv", "out.ttin"),
         {"tilted.csv": "surface"},
         """\
Surface               tilted
Survey points         4
Triangles             2
Output                out.ttin
""", """\
{
  "surface": "tilted",
  "survey_points": 4,
  "triangles": 2,
  "output": "out.ttin"
}
"""),
    Case(("height", "tilted.csv", "--at", "1050,2025"),
         {"tilted.csv": "surface"},
         """\
Surface               tilted
Easting               1050.000
Northing              2025.000
Height                15.0000
""", """\
{
  "surface": "tilted",
  "easting": 1050,
  "northing": 2025,
  "height": 15
}
"""),
    Case(("height", "tilted.csv", "--points", "places.csv"),
         {"tilted.csv": "surface", "places.csv": "places"},
         """\
N1,,1050,2025,15.0000
N2,,1100,2050,20.0000
""", """\
{
  "surface": "tilted",
  "points": [
    {"name": "N1", "easting": 1050, "northing": 2025, "height": 15},
    {"name": "N2", "easting": 1100, "northing": 2050, "height": 20}
  ]
}
"""),
    Case(("volume", "tilted.csv", "--level", "15", "--report", "out.html"),
         {"tilted.csv": "surface"},
         """\
Surface               tilted
Level                 15.000
Cut volume            6250.000
Fill volume           6250.000
Cut plan area         2500.000
Cut surface area      2549.510
Fill plan area        2500.000
Fill surface area     2549.510
Covered plan area     5000.000
Report                out.html
""", """\
{
  "surface": "tilted",
  "level": 15,
  "cut_volume": 6250,
  "fill_volume": 6250,
  "cut_plan_area": 2500,
  "cut_surface_area": 2549.509757,
  "fill_plan_area": 2500,
  "fill_surface_area": 2549.509757,
  "covered_plan_area": 5000,
  "report": "out.html"
}
"""),
    Case(("volume", "tilted.csv", "--ref", "design.csv", "--range", "west.waa", "--report", "out.txt", "--map", "out.svg", "--html", "page.html"),
         {"tilted.csv": "surface", "design.csv": "surface", "west.waa": "boundary"},
         """\
Surface               tilted
Reference             design
Cut volume            8000.000
Fill volume           500.000
Cut plan area         2000.000
Cut surface area      2039.608
Fill plan area        500.000
Fill surface area     509.902
Covered plan area     2500.000
Report                out.txt
Map                   out.svg
Page                  page.html
""", """\
{
  "surface": "tilted",
  "reference": "design",
  "cut_volume": 8000,
  "fill_volume": 500,
  "cut_plan_area": 2000,
  "cut_surface_area": 2039.607805,
  "fill_plan_area": 500,
  "fill_surface_area": 509.901951,
  "covered_plan_area": 2500,
  "report": "out.txt",
  "map": "out.svg",
  "page": "page.html"
}
"""),
    Case(("balance", "tilted.csv", "--step", "5", "--range", "west.waa"),
         {"tilted.csv": "surface", "west.waa": "boundary"},
         """\
Surface               tilted
Balance level         15.000000
Factor                1.000
Cut volume            3125.000
Fill volume           3125.000
Covered plan area     2500.000

Levels
             Level               Cut              Fill     Cut less fill
            10.000         12500.000             0.000         12500.000
            15.000          3125.000          3125.000             0.000
            20.000             0.000         12500.000        -12500.000
""", """\
{
  "surface": "tilted",
  "balance_level": 15,
  "factor": 1,
  "cut_volume": 3125,
  "fill_volume": 3125,
  "covered_plan_area": 2500,
  "levels": [
    {"level": 10, "cut": 12500, "fill": 0, "cut_less_fill": 12500},
    {"level": 15, "cut": 3125, "fill": 3125, "cut_less_fill": 0},
    {"level": 20, "cut": 0, "fill": 12500, "cut_less_fill": -12500}
  ]
}
"""),
    Case(("contours", "tilted.csv", "out.dxf", "--interval", "5"),
         {"tilted.csv": "surface"},
         """\
Surface               tilted
Contour levels        3
Contour lines         3
Output                out.dxf
""", """\
{
  "surface": "tilted",
  "contour_levels": 3,
  "contour_lines": 3,
  "output": "out.dxf"
}
"""),
    Case(("contours", "tilted.csv", "out.svg", "--interval", "2.5"),
         {"tilted.csv": "surface"},
         """\
Surface               tilted
Contour levels        5
Contour lines         5
Output                out.svg
""", """\
{
  "surface": "tilted",
  "contour_levels": 5,
  "contour_lines": 5,
  "output": "out.svg"
}
"""),
    Case(("preview", "tilted.csv", "out.svg"),
         {"tilted.csv": "surface"},
         """\
Surface               tilted
Triangles             2
Contour interval      0.500
Output                out.svg
""", """\
{
  "surface": "tilted",
  "triangles": 2,
  "contour_interval": 0.5,
  "output": "out.svg"
}
"""),
    Case(("range", "west.waa"),
         {"west.waa": "boundary"},
         """\
Boundary              west.waa
Vertices              4
Last repeats first    no
Orientation           counter-clockwise
Crosses itself        no
Area                  2500.000
Perimeter             200.000
Easting               1000.000 .. 1050.000
Northing              2000.000 .. 2050.000
First switch          yes
Second switch         no
Check                 valid
""", """\
{
  "boundary": "west.waa",
  "vertices": 4,
  "last_repeats_first": false,
  "orientation": "counter-clockwise",
  "crosses_itself": false,
  "area": 2500,
  "perimeter": 200,
  "easting": [1000, 1050],
  "northing": [2000, 2050],
  "first_switch": true,
  "second_switch": false,
  "check": "valid"
}
"""),
    Case(("range", "--hull", "tilted.csv", "--out", "out.waa"),
         {"tilted.csv": "surface"},
         """\
Boundary              out.waa
Vertices              4
Last repeats first    no
Orientation           counter-clockwise
Crosses itself        no
Area                  5000.000
Perimeter             300.000
Easting               1000.000 .. 1100.000
Northing              2000.000 .. 2050.000
First switch          no
Second switch         no
Check                 valid
""", """\
{
  "boundary": "out.waa",
  "vertices": 4,
  "last_repeats_first": false,
  "orientation": "counter-clockwise",
  "crosses_itself": false,
  "area": 5000,
  "perimeter": 300,
  "easting": [1000, 1100],
  "northing": [2000, 2050],
  "first_switch": false,
  "second_switch": false,
  "check": "valid"
}
"""),
    Case(("range", "--points", "tilted.csv", "--out", "out.csv"),
         {"tilted.csv": "corners"},
         """\
Boundary              out.csv
Vertices              4
Last repeats first    no
Orientation           counter-clockwise
Crosses itself        no
Area                  5000.000
Perimeter             300.000
Easting               1000.000 .. 1100.000
Northing              2000.000 .. 2050.000
First switch          no
Second switch         no
Check                 valid
""", """\
{
  "boundary": "out.csv",
  "vertices": 4,
  "last_repeats_first": false,
  "orientation": "counter-clockwise",
  "crosses_itself": false,
  "area": 5000,
  "perimeter": 300,
  "easting": [1000, 1100],
  "northing": [2000, 2050],
  "first_switch": false,
  "second_switch": false,
  "check": "valid"
}
"""),
    Case(("diff", "tilted.csv", "design.csv", "--list", "out.csv"),
         {"tilted.csv": "surface", "design.csv": "surface"},
         """\
Before                tilted
After                 design
Points unchanged      0
Points added          0
Points removed        0
Points moved          0
Longest move          0.000
Points raised         2
Largest rise          2.000
Points lowered        2
Largest fall          8.000
Filled volume         1000.000
Removed volume        16000.000
Filled plan area      1000.000
Removed plan area     4000.000
Common plan area      5000.000
List                  out.csv
""", """\
{
  "before": "tilted",
  "after": "design",
  "points_unchanged": 0,
  "points_added": 0,
  "points_removed": 0,
  "points_moved": 0,
  "longest_move": 0,
  "points_raised": 2,
  "largest_rise": 2,
  "points_lowered": 2,
  "largest_fall": 8,
  "filled_volume": 1000,
  "removed_volume": 16000,
  "filled_plan_area": 1000,
  "removed_plan_area": 4000,
  "common_plan_area": 5000,
  "list": "out.csv"
}
"""),
]


def shape(text):
    """JSON with its numbers left out: keys in order, words, spacing and line breaks."""
    return NUMBER.sub("#", text)


class EveryCommand(HostTest):
    def fresh(self):
        """A folder with the inputs and nothing else."""
        for file in self.folder.iterdir():
            file.unlink()
        for name, contents in FILES.items():
            self.write(name, contents)

    def names(self):
        return {file.name for file in self.folder.iterdir()}

    def numbers(self, text):
        json.loads(text)
        return [float(number) for number in NUMBER.findall(text)]

    def test_the_table_has_every_command(self):
        shown = self.run_host("--help").stdout
        commands = re.findall(r"^  ([a-z]+) {2,}", shown[shown.index("Subcommands:"):], re.MULTILINE)
        self.assertEqual({case.command[0] for case in TABLE}, set(commands))

    def test_text(self):
        for case in TABLE:
            with self.subTest(command=case.command):
                self.fresh()
                run = self.run_host(*case.command)
                self.assert_done(run)
                self.assertEqual(run.stdout, case.text)

    def test_json(self):
        for case in TABLE:
            with self.subTest(command=case.command):
                self.fresh()
                run = self.run_host(*case.command, "--json")
                self.assert_done(run)
                self.assertEqual(shape(run.stdout), shape(case.json))
                found, expected = self.numbers(run.stdout), self.numbers(case.json)
                self.assertEqual(len(found), len(expected))
                for one, other in zip(found, expected):
                    self.assertAlmostEqual(one, other, delta=1e-6)

    def test_what_is_written_is_the_same_for_text_and_json_and_from_run_to_run(self):
        for case in TABLE:
            with self.subTest(command=case.command):
                written = []
                for more in ((), ("--json",), ("--quiet",)):
                    self.fresh()
                    self.assert_done(self.run_host(*case.command, *more))
                    self.assertEqual(self.names() - FILES.keys(), {w for w in case.command if w.startswith(("out", "page"))})
                    written.append({name: (self.folder / name).read_bytes() for name in self.names()})
                self.assertTrue(written[0] == written[1] == written[2])

    def test_help_has_an_example_that_works(self):
        for command in sorted({case.command[0] for case in TABLE} | {"generate"}):
            with self.subTest(command=command):
                self.fresh()
                self.write("ground.csv", TILTED)
                run = self.run_host(command, "--help")
                self.assert_done(run)
                example = re.search(r"^Example:\n  orvikdtm ([^>\n]+)", run.stdout, re.MULTILINE).group(1)
                self.assertEqual(example.split()[0], command)
                self.assertEqual(self.run_host(*example.split()).returncode, DONE)

    def test_every_input_that_cannot_be_used_is_refused(self):
        """One line that says why, the exit status of failure, and nothing printed or written."""
        for case in TABLE:
            for word, kind in case.inputs.items():
                for name, contents, says in BAD[kind]:
                    with self.subTest(command=case.command, input=word, bad=name):
                        self.fresh()
                        if contents is not None:
                            self.write(name, contents)
                        before = self.names()
                        run = self.run_host(*(name if w == word else w for w in case.command))
                        if case.command == ("range", "west.waa") and name == "line.waa":  # it is there to tell that
                            self.assertEqual(run.returncode, FAULT)
                            self.assertRegex(run.stderr, r"\Aorvikdtm: line.waa: the boundary encloses nothing[^\n]+\n\Z")
                        else:
                            self.assert_refused(run, FAILED, says)
                        self.assertEqual(self.names(), before)


if __name__ == "__main__":
    unittest.main()
