"""Command lines that make no sense, and those that ask about the program itself."""

import re
import unittest

from orvikdtm import DONE, TILTED, WRONG_USAGE, HostTest

VOLUME = ("volume", "tilted.csv")
GOOD = (*VOLUME, "--level", "10", "--report", "r.txt")

REFUSED = [
    # command line, what the message says
    ((), "A command, info or volume, is required"),
    (("measure",), "measure"),
    (("info",), "FILE"),
    (("info", "a.csv", "b.csv"), "b.csv"),
    (("info", "a.csv", "--deep"), "--deep"),
    (VOLUME, "required"),
    ((*VOLUME, "--level", "10"), "--report"),
    ((*VOLUME, "--report", "r.txt"), "--level"),
    ((*VOLUME, "--report", "r.txt", "--level"), "--level"),
    ((*VOLUME, "--report", "r.txt", "--level", "high"), "'high' is not a number"),
    ((*VOLUME, "--report", "r.txt", "--level", "nan"), "'nan' is not a number"),
    ((*VOLUME, "--report", "r.txt", "--level", "-inf"), "'-inf' is not a number"),
    ((*VOLUME, "--report", "r.txt", "--level", "1e999"), "'1e999' is not a number"),
    ((*VOLUME, "--report", "r.txt", "--level", "82,5"), "'82,5' is not a number"),
    ((*VOLUME, "--report", "r.txt", "--level", "82.5m"), "'82.5m' is not a number"),
    ((*VOLUME, "--report", "r.txt", "--level", "+-3"), "'+-3' is not a number"),
    ((*VOLUME, "--report", "r.txt", "--level", ""), "--level"),
    ((*VOLUME, "--report", "tilted.csv", "--level", "10"), "overwrite the survey in tilted.csv"),
    ((*VOLUME, "--report", "./tilted.csv", "--level", "10"), "overwrite the survey in tilted.csv"),
    ((*GOOD, "--labels", "one,two"), "twelve texts"),
    ((*GOOD, "--labels", "a,b,c,d,e,f,g,h,i,j,k,l,m"), "twelve texts"),
]


class CommandLine(HostTest):
    def test_what_makes_no_sense_is_refused(self):
        self.write("tilted.csv", TILTED)
        for arguments, says in REFUSED:
            with self.subTest(arguments=arguments):
                self.assert_refused(self.run_host(*arguments), WRONG_USAGE, says)
                self.assertEqual([f.name for f in self.folder.iterdir()], ["tilted.csv"])
        self.assertEqual((self.folder / "tilted.csv").read_text(), TILTED)

    def test_version(self):
        run = self.run_host("--version")
        self.assert_done(run)
        self.assertRegex(run.stdout, r"\Aorvikdtm \d+\.\d+\.\d+\n\Z")

    def test_help_has_an_example_that_works(self):
        """The example in each help text, run on a file of the name that it uses."""
        self.write("ground.csv", TILTED)
        for command in ((), ("info",), ("volume",)):
            with self.subTest(command=command):
                run = self.run_host(*command, "--help")
                self.assert_done(run)
                example = re.search(r"^Example:\n  orvikdtm (.+)$", run.stdout, re.MULTILINE).group(1)
                self.assertEqual(self.run_host(*example.split()).returncode, DONE)


if __name__ == "__main__":
    unittest.main()
