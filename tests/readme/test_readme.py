"""Does every sentence of the README that can be tried hold? Its programs are built against the installed library and run, its
command lines run, what it says a script prints is what is printed, its picture is what the program draws."""

import json
import os
import re
import shlex
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

SOURCE = Path(os.environ["ORVIKDTM_SOURCE"])
INSTALLED = Path(os.environ["ORVIKDTM_INSTALLED"])
LIBDIR = INSTALLED / os.environ["ORVIKDTM_LIBDIR"]
PROGRAM = INSTALLED / os.environ["ORVIKDTM_BINDIR"] / "orvikdtm"
README = (SOURCE / "README.md").read_text(encoding="utf-8")
SITE = SOURCE / "examples/sample-site"


def block(language):
    """The only block of code in a language."""
    found = [text for name, text in re.findall(r"^```(\w*)\n(.*?)^```$", README, re.M | re.S) if name == language]
    if len(found) != 1:
        raise ValueError(f"{len(found)} blocks of {language!r}")
    return found[0]


def run(*command, cwd, **environment):
    done = subprocess.run([str(word) for word in command], cwd=cwd, env={**os.environ, **environment}, text=True,
                          capture_output=True, timeout=300, check=False)
    if done.returncode != 0:
        raise RuntimeError(f"{command}: {done.returncode}\n{done.stdout}{done.stderr}")
    return done.stdout


def orvikdtm(*arguments, cwd):
    return run(PROGRAM, *arguments, cwd=cwd)


def numbers(text):
    return [float(number) for number in re.findall(r"-?\d+\.\d+", text)]


class Readme(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        """A folder with the files that the README speaks of."""
        scratch = tempfile.TemporaryDirectory()
        cls.addClassCleanup(scratch.cleanup)
        cls.folder = Path(scratch.name)
        for name in ("ground.csv", "ground.xml", "boundary.waa"):
            shutil.copy(SITE / name, cls.folder)
        orvikdtm("convert", "ground.csv", "ground.ttin", cwd=cls.folder)
        orvikdtm("convert", SITE / "design.csv", "design.ttin", cwd=cls.folder)

    def built(self, language, compiler, standard):
        """What a program of the README prints, built with what pkg-config says."""
        program = self.folder / f"program-{language}"
        source = self.folder / f"program.{language}"
        source.write_text(block(language), encoding="utf-8")
        found = {"PKG_CONFIG_PATH": str(LIBDIR / "pkgconfig")}
        cflags = shlex.split(run("pkg-config", "--cflags", "OrvikDTMAlgorithm", cwd=self.folder, **found))
        libs = shlex.split(run("pkg-config", "--static", "--libs", "OrvikDTMAlgorithm", cwd=self.folder, **found))
        run(compiler, f"-std={standard}", "-Wall", "-Wextra", "-Werror", *cflags, source, *libs, "-o", program, cwd=self.folder)
        return run(program, cwd=self.folder, LD_LIBRARY_PATH=str(LIBDIR))

    def measured(self, *arguments):
        """Height at the README's place, cut and fill, as the program tells them."""
        height = orvikdtm("height", "ground.csv", "--at", "38512640,3414290", cwd=self.folder)
        volume = orvikdtm("volume", "ground.csv", *arguments, cwd=self.folder)
        return [float(re.search(label + r" +(\S+)", text)[1])
                for label, text in (("Height", height), ("Cut volume", volume), ("Fill volume", volume))]

    def expect_close(self, printed, expected):
        self.assertEqual(len(printed), 3)
        for one, other in zip(printed, expected):
            self.assertGreater(other, 0.0)
            self.assertAlmostEqual(one / other, 1.0, places=5)  # a C++ stream prints six digits

    def test_the_program_in_cpp(self):
        printed = self.built("cpp", os.environ["ORVIKDTM_CXX"], "c++20")
        self.assertRegex(printed, r"\Aheight \S+\ncut \S+, fill \S+\n\Z")
        self.expect_close([float(word) for word in re.findall(r"[\d.]+", printed)], self.measured("--level", "78.5"))

    def test_the_program_in_c(self):
        printed = self.built("c", os.environ["ORVIKDTM_CC"], "c11")
        self.assertRegex(printed, r"\Aheight \S+\ncut \S+, fill \S+\n\Z")
        self.expect_close(numbers(printed), self.measured("--ref", "design.ttin", "--method", "sampled"))

    def test_the_programs_are_as_short_as_they_should_be(self):
        self.assertLessEqual(len([line for line in block("cpp").splitlines() if line]), 20)
        self.assertLessEqual(len([line for line in block("c").splitlines() if line]), 12)

    def test_every_command_line_runs(self):
        lines = re.findall(r"^    orvikdtm (.*)$", README, re.M)
        self.assertGreater(len(lines), 5)
        for line in lines:
            with self.subTest(line):
                orvikdtm(*shlex.split(line), cwd=self.folder)
        for name in ("volume.txt", "map.svg", "volume.html", "contours.dxf"):
            self.assertGreater((self.folder / name).stat().st_size, 0, name)

    def test_the_demo_ends_as_it_is_shown(self):
        (self.folder / "examples").symlink_to(SOURCE / "examples")
        for _ in range(2):  # a second time over its own results
            printed = run(SOURCE / "scripts/measure-sample-site", PROGRAM, "build/demo", cwd=self.folder)
            self.assertEqual("\n" + block(""), printed[-len(block("")) - 1:])
        for name in re.findall(r"^build/demo/\S+", block(""), re.M):
            self.assertGreater((self.folder / name).stat().st_size, 0, name)

    def test_the_demo_runs_what_is_tried_here(self):
        demo = (SOURCE / "scripts/demo").read_text(encoding="utf-8")
        self.assertRegex(demo, r'(?m)^scripts/measure-sample-site "\$build/host/orvikdtm" build/demo$')

    def test_the_picture_is_what_the_program_draws(self):
        """When this fails: scripts/draw-sample-site."""
        picture = re.search(r"!\[[^\]]*\]\(([^)]*\.svg)\)", README)[1]
        self.assertIn(f"picture={picture}\n", (SOURCE / "scripts/draw-sample-site").read_text(encoding="utf-8"))
        orvikdtm("volume", SITE / "ground.csv", "--ref", SITE / "design.csv", "--map", "picture.svg", cwd=self.folder)
        self.assertEqual((self.folder / "picture.svg").read_bytes(), (SOURCE / picture).read_bytes())

    def test_the_version_that_is_asked_for_is_this_one(self):
        version = re.search(r"^project\(OrvikDTMAlgorithm VERSION (\d+\.\d+)", (SOURCE / "CMakeLists.txt").read_text(), re.M)[1]
        self.assertIn(f"find_package(OrvikDTMAlgorithm {version} REQUIRED)", block("cmake"))


class Links(unittest.TestCase):
    PAGES = [SOURCE / name for name in ("README.md", "CONTRIBUTING.md", "CHANGELOG.md")]
    PAGES += [*SOURCE.glob("docs/*.md"), *SOURCE.glob("examples/**/*.md")]

    def test_every_link_leads_to_a_file(self):
        found = 0
        for page in self.PAGES:
            for target in re.findall(r"\]\(([^)#]+)[^)]*\)", page.read_text(encoding="utf-8")):
                if not re.match(r"[a-z]+:", target):
                    found += 1
                    self.assertTrue((page.parent / target).exists(), f"{page.name} leads to {target}")
        self.assertGreater(found, 20)

    def test_every_script_that_is_named_is_there_and_runs(self):
        for page in self.PAGES:
            for name in re.findall(r"\bscripts/([a-z-]+)", page.read_text(encoding="utf-8")):
                self.assertTrue(os.access(SOURCE / "scripts" / name, os.X_OK), f"{page.name} names scripts/{name}")

    def test_the_readme_leads_to_every_document(self):
        for page in SOURCE.glob("docs/*.md"):
            self.assertTrue(f"(docs/{page.name})" in README, page.name)

    def test_every_script_is_spoken_of(self):
        pages = "".join(page.read_text(encoding="utf-8") for page in self.PAGES)
        for script in (SOURCE / "scripts").iterdir():
            self.assertTrue(script.name in pages, f"no page speaks of {script.name}")


class Dependencies(unittest.TestCase):
    """The list of dependencies against what the build asks for."""

    CALLED = {"GTest": "GoogleTest", "PkgConfig": "pkg-config", "Python3": "Python", "Threads": "POSIX threads",
              "benchmark": "Google Benchmark"}

    def row(self, name):
        page = (SOURCE / "docs/dependencies.md").read_text(encoding="utf-8")
        found = [line for line in page.splitlines() if re.match(r"\|[^|]*\b" + re.escape(name) + r"\b[^|]*\|", line)]
        self.assertEqual(len(found), 1, name)
        return found[0].split("|")

    def test_what_cmake_looks_for_is_listed_with_its_version(self):
        asked = set()
        for folder in ("OrvikDTMAlgorithm", "host", "tests", "bench"):
            text = (SOURCE / folder / "CMakeLists.txt").read_text(encoding="utf-8")
            asked.update(re.findall(r"find_package\((\w+)(?: ([\d.]+))?", text))
        self.assertGreater(len(asked), 7)
        for name, version in asked:
            with self.subTest(name):
                self.assertTrue(self.row(self.CALLED.get(name, name))[2].strip().startswith(version))

    def test_what_npm_fetches_is_listed_with_its_version(self):
        asked = json.loads((SOURCE / "host/web/package.json").read_text(encoding="utf-8"))
        for names in (asked["dependencies"], asked["devDependencies"]):
            for name, version in names.items():
                self.assertEqual(self.row({"three": "three.js"}.get(name, name))[2].strip(), version + ", exactly")

    def test_every_licence_of_what_is_delivered_is_at_hand(self):
        page = (SOURCE / "docs/dependencies.md").read_text(encoding="utf-8")
        licences = (SOURCE / "docs/third-party-licences.txt").read_text(encoding="utf-8")
        delivered = page[page.index("## Delivered"):page.index("## Used to build")]
        names = re.findall(r"^\| \[([^\]]+)\]", delivered, re.M)
        self.assertGreater(len(names), 3)
        for name in names:
            self.assertRegex(licences, r"(?m)^" + re.escape(name) + r" \(")


if __name__ == "__main__":
    unittest.main()
