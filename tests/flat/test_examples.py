"""The example hosts on the sample site: in C, in C++ and in Python they print and write the same."""

import os
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path
from unittest import mock

SOURCE = Path(os.environ["ORVIKDTM_SOURCE"])
SITE = SOURCE / "examples/sample-site"
GROUND = SITE / "ground.xml"
sys.path.insert(0, str(SOURCE / "examples/python"))

import orvikdtm  # noqa: E402

HOSTS = {
    "C": [os.environ["ORVIKDTM_EXAMPLE_C"]],
    "C++": [os.environ["ORVIKDTM_EXAMPLE_CPP"]],
    "Python": [sys.executable, "-B", str(SOURCE / "examples/python/survey_site.py")],
}
WRITTEN = {"design.svg", "design.ttin", "volume.html", "volume.txt"}


def run_host(command, ground, out):
    """What a host prints."""
    run = subprocess.run([*command, SITE, ground, out], stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                         timeout=120, check=False)
    if run.returncode != 0 or run.stderr:
        raise RuntimeError(f"{command}: {run.returncode} {run.stderr}")
    return run.stdout


def triangles(sjw):
    """The triangles of a ".sjw" file: sets of three corners in its own digits."""
    numbers = sjw.read_text(encoding="ascii").split("\n")[:-1]
    corners = [tuple(numbers[i:i + 3]) for i in range(0, len(numbers), 3)]
    return sorted(sorted(corners[i:i + 3]) for i in range(0, len(corners), 3))


class Examples(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = Path(folder.name)
        cls.printed = {}
        for host, command in HOSTS.items():
            out = cls.folder / host
            out.mkdir()
            cls.printed[host] = run_host(command, GROUND, out)

    def test_all_print_the_same(self):
        for host in HOSTS:
            self.assertEqual(self.printed[host], self.printed["C++"], host)

    def test_all_write_the_same(self):
        for host in HOSTS:
            self.assertEqual({file.name for file in (self.folder / host).iterdir()}, WRITTEN)
            for name in WRITTEN:
                with self.subTest(host=host, name=name):
                    self.assertEqual((self.folder / host / name).read_bytes(), (self.folder / "C++" / name).read_bytes())

    def test_other_surfaces_in_the_folder_change_nothing(self):
        square = b"M,,0,0,1\nN,,9,0,1\nO,,9,9,1\nP,,0,9,1\n"
        (self.folder / "square.csv").write_bytes(square)
        dtm = orvikdtm.load()
        dtm.newDTMSurfaceLib()
        dtm.addDTMSurface(b"other")
        self.assertTrue(dtm.loadSurfacePointsFile(0, os.fsencode(self.folder / "square.csv")))
        for host, command in HOSTS.items():
            out = self.folder / f"{host} again"
            out.mkdir()
            for name in ("a", "design2", "my design", "z"):
                self.assertTrue(dtm.saveSurface(0, os.fsencode(out / f"{name}.ttin")))
            (out / "broken.ttin").write_bytes(b"no surface")
            with self.subTest(host=host):
                printed = run_host(command, GROUND, out)
                self.assertIn("the folder holds 5 such file(s)\n", printed)
                self.assertEqual(printed.replace("holds 5 such", "holds 1 such"), self.printed[host])
                for name in WRITTEN:
                    self.assertEqual((out / name).read_bytes(), (self.folder / host / name).read_bytes(), name)
        dtm.releaseDTMSurface(0)

    def test_the_reports_hold_what_is_printed(self):
        report = (self.folder / "C/volume.txt").read_text(encoding="ascii")
        page = (self.folder / "C/volume.html").read_text(encoding="ascii")
        for what in ("Cut", "Fill"):
            volume, plan, spatial = re.search(what + r" +(\S+) over (\S+), (\S+) along", self.printed["C"]).groups()
            self.assertGreater(float(volume), 100.0)
            self.assertIn(f"{what + ' volume':20}{volume:20}\n", report)
            self.assertIn(f"{what + ' areas':20}\n{'Plan area':20}{plan:20}\n{'Surface area':20}{spatial:20}\n", report)
            for value in (volume, plan, spatial):
                self.assertIn(f">{value}</td>", page)

    def test_the_steps(self):
        design = (SITE / "design.csv").read_text(encoding="ascii").splitlines()
        vertices = len((SITE / "boundary.waa").read_text(encoding="ascii").splitlines()) - 2
        printed = self.printed["Python"].splitlines()
        self.assertEqual(printed[0], f"Built     the design of {len(design)} points")
        self.assertEqual(printed[1], "Edited    point P1: raised to 76.5000, deleted, added as surveyed at 76.0000")
        self.assertEqual(printed[3], "Saved     design.ttin; the folder holds 1 such file(s)")
        self.assertEqual(printed[4], f"Bounded   by {vertices} vertices, switches 1 and 0")
        self.assertEqual(printed[5], "Measured  ground against design")

    def test_the_ground_as_landxml_is_the_tin_of_its_points(self):
        dtm = orvikdtm.load()
        dtm.newDTMSurfaceLib()
        dtm.addDTMSurface(b"ground")
        self.assertTrue(dtm.loadSurfacePointsFile(0, os.fsencode(SITE / "ground.csv")))
        self.assertTrue(dtm.loadDTMSurface(os.fsencode(GROUND), 2))
        written = [self.folder / "points.sjw", self.folder / "landxml.sjw"]
        for index, sjw in enumerate(written):
            self.assertTrue(dtm.exportFileSJW(index, os.fsencode(sjw)))
        self.assertEqual(*map(triangles, written))
        self.assertGreater(len(triangles(written[0])), 5000)
        while dtm.releaseDTMSurface(0):
            pass

    def test_the_drawing_has_every_line(self):
        lines = int(re.search(r"Drew +(\d+) lines", self.printed["C"])[1])
        self.assertEqual((self.folder / "C/design.svg").read_text(encoding="ascii").count("<line "), lines)


class Binding(unittest.TestCase):
    def test_it_has_every_function_of_the_header(self):
        header = (SOURCE / "OrvikDTMAlgorithm/api/orvikdtm.h").read_text(encoding="ascii")
        self.assertEqual(list(orvikdtm.FUNCTIONS), re.findall(r"^ORVIKDTM_API [^;(]*?(\w+)\(", header, re.M))

    def test_with_as_many_arguments(self):
        header = (SOURCE / "OrvikDTMAlgorithm/api/orvikdtm.h").read_text(encoding="ascii")
        for name, (_, *arguments) in orvikdtm.FUNCTIONS.items():
            declared = re.search(r"\b" + name + r"\(([^)]*)\);", header)[1]
            self.assertEqual(len(arguments), 0 if declared == "void" else declared.count(",") + 1, name)

    def test_its_records_have_the_librarys_size(self):
        sizes = {"SurfacePoint": 72, "RangePoint": 48, "DrawLine": 40, "FillCutResult": 160}
        for name, size in sizes.items():
            self.assertEqual(orvikdtm.ctypes.sizeof(getattr(orvikdtm, name)), size)

    def test_callbacks_may_be_none(self):
        dtm = orvikdtm.load()
        seen = []
        on_point = orvikdtm.SurfacePointCallback(lambda point: seen.append(point.contents.pointName))
        dtm.newDTMSurfaceLib()
        dtm.addDTMSurface(b"S")
        dtm.addSurfacePoint(0, b"P", 1.0, 2.0, 3.0)
        self.assertEqual(dtm.setCallBack(None, on_point, None, None), 1)
        self.assertEqual(dtm.getSurfacePoints(0), 1)
        for none in ((None,), (None, None, None, None), ()):
            self.assertEqual(dtm.setCallBack(*none), 1)
            self.assertEqual(dtm.getSurfacePoints(0), 1)
        self.assertEqual(seen, [b"P"])
        dtm.releaseDTMSurface(0)

    def test_too_many_callbacks_are_refused(self):
        with self.assertRaises(TypeError):
            orvikdtm.load().setCallBack(None, None, None, None, None)

    def test_a_library_that_is_not_there(self):
        host = SOURCE / "examples/python/survey_site.py"
        for library, says in (("/nowhere/libOrvikDTMAlgorithm.so", "cannot be loaded, see ORVIKDTM_LIBRARY: /nowhere/"),
                              (str(host), "cannot be loaded"), ("libc.so.6", "has no function libraryVersion")):
            with self.subTest(library=library):
                run = subprocess.run([sys.executable, "-B", host, "a", "b", "c"], capture_output=True, text=True,
                                     env={"ORVIKDTM_LIBRARY": library}, timeout=60, check=False)
                self.assertEqual(run.returncode, 1)
                self.assertRegex(run.stderr, r"\Asurvey_site.py: the library [^\n]+\n\Z")
                self.assertIn(says, run.stderr)

    def test_a_library_that_is_neither_named_nor_installed(self):
        with mock.patch.dict(os.environ, ORVIKDTM_LIBRARY=""), \
                mock.patch("ctypes.util.find_library", return_value=None), \
                self.assertRaisesRegex(OSError, "is not installed: set ORVIKDTM_LIBRARY"):
            orvikdtm.load()


if __name__ == "__main__":
    unittest.main()
