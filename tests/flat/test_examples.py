"""The example hosts on the sample site: in C, in C++ and in Python they print and write the same."""

import os
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

SOURCE = Path(os.environ["ORVIKDTM_SOURCE"])
SITE = SOURCE / "examples/sample-site"
sys.path.insert(0, str(SOURCE / "examples/python"))

import landxml  # noqa: E402
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


def make_ground(folder):
    """ground.csv of the sample site, triangulated, as a LandXML file."""
    dtm = orvikdtm.load()
    dtm.newDTMSurfaceLib()
    dtm.addDTMSurface(b"ground")
    sjw, xml = folder / "ground.sjw", folder / "ground.xml"
    if not dtm.loadSurfacePointsFile(0, os.fsencode(SITE / "ground.csv")) or not dtm.exportFileSJW(0, os.fsencode(sjw)):
        raise RuntimeError("the ground could not be made")
    dtm.releaseDTMSurface(0)
    xml.write_text(landxml.from_sjw(sjw.read_text(encoding="ascii"), "ground"), encoding="ascii")
    return xml


class Examples(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = Path(folder.name)
        cls.ground = make_ground(cls.folder)
        cls.printed = {}
        for host, command in HOSTS.items():
            out = cls.folder / host
            out.mkdir()
            cls.printed[host] = run_host(command, cls.ground, out)

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
                printed = run_host(command, self.ground, out)
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


if __name__ == "__main__":
    unittest.main()
