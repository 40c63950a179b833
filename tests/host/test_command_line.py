"""Command lines that make no sense, and those that ask about the program itself."""

import os
import re
import unittest

from orvikdtm import DONE, TILTED, WRONG_USAGE, HostTest

VOLUME = ("volume", "tilted.csv")
GOOD = (*VOLUME, "--level", "10", "--report", "r.txt")

REFUSED = [
    # command line, what the message says
    ((), "A command is required, such as info or volume"),
    (("measure",), "there is no command 'measure': see 'orvikdtm --help'"),
    (("measure", "a.csv"), "there is no command 'measure'"),
    (("info",), "SURFACE is required: see 'orvikdtm info --help'"),
    (("info", "a.csv", "b.csv"), "too many words: 'b.csv'"),
    (("info", "a.csv", "b.csv", "c.csv", "d.csv"), "too many words: 'b.csv' 'c.csv' 'd.csv'"),
    (("info", "a.csv", "--deep"), "there is no option '--deep': see 'orvikdtm info --help'"),
    (("info", "a.csv", "b\nc.csv"), "too many words: 'b?c.csv'"),
    (("--deep",), "there is no option '--deep': see 'orvikdtm --help'"),
    ((*VOLUME, "--levl", "10", "--report", "r.txt"), "there is no option '--levl': see 'orvikdtm volume --help'"),
    (("volume", "--levl=10"), "there is no option '--levl=10'"),
    (("volume", "--level", "10", "--report", "r.txt"), "SURFACE is required: see 'orvikdtm volume --help'"),
    (VOLUME, "--level or --ref is required"),
    ((*VOLUME, "--level", "10", "--report"), "--report"),
    ((*VOLUME, "--report", "r.txt"), "--level or --ref is required"),
    ((*VOLUME, "--level", "10", "--ref", "b.csv"), "--level and --ref exclude each other"),
    (("info", "tilted.csv", "--map", "x.svg"), "there is no option '--map'"),
    (("convert", "tilted.csv"), "OUTPUT is required"),
    (("convert", "tilted.csv", "out.csv"), "OUTPUT out.csv: the name must end in .ttin or .sjw"),
    (("convert", "tilted.csv", ""), "OUTPUT is empty"),
    (("height", "tilted.csv"), "--at or --points is required"),
    (("height", "tilted.csv", "--at", "1,2", "--points", "p.csv"), "--at and --points exclude each other"),
    (("height", "tilted.csv", "--at", "1050"), "--at '1050' is not a place: give easting,northing"),
    (("height", "tilted.csv", "--at", "1,2,3"), "--at '1,2,3' is not a place"),
    (("height", "tilted.csv", "--at", "east,2"), "--at 'east' is not a number"),
    (("height", "tilted.csv", "--at", "1,2", "--out", "o.csv"), "--out needs --points"),
    (("height", "tilted.csv", "--points", "p.csv", "--out", "tilted.csv"), "--out would overwrite the input in tilted"),
    (("balance", "tilted.csv", "--factor", "0"), "--factor '0' is not likely"),
    (("balance", "tilted.csv", "--factor", "x"), "--factor 'x' is not a number"),
    (("balance", "tilted.csv", "--step", "0"), "--step '0' is not above 0"),
    (("balance", "tilted.csv", "--step", "1e-9"), "too many rows: give a larger --step"),
    (("balance", "tilted.csv", "--from", "20", "--to", "10"), "--from lies above its --to"),
    (("balance", "unread.csv", "--from", "20", "--to", "10"), "--from lies above its --to"),
    (("balance", "tilted.csv", "--from", "2e12"), "--from '2e12' is too large"),
    (("range",), "BOUNDARY, --hull or --points is required"),
    (("range", "a.waa", "--hull", "tilted.csv"), "exclude each other"),
    (("range", "a.waa", "--out", "b.waa"), "--out needs --hull or --points"),
    (("range", "--hull", "tilted.csv"), "--out is required"),
    (("range", "--hull", "tilted.csv", "--out", "b.txt"), "the name of a boundary file ends in .waa or .csv"),
    (("range", "--points", "tilted.csv", "--out", "tilted.csv"), "--out would overwrite the input in tilted.csv"),
    (("diff", "tilted.csv"), "AFTER is required"),
    (("diff", "tilted.csv", "tilted.csv", "--list", "tilted.csv"), "--list would overwrite the input in tilted.csv"),
    (("generate", "pdf"), "there is no form 'pdf'"),
    ((*VOLUME, "--report", "r.txt", "--level"), "--level"),
    ((*VOLUME, "--report", "r.txt", "--level", "high"), "'high' is not a number"),
    ((*VOLUME, "--report", "r.txt", "--level", "nan"), "'nan' is not a number"),
    ((*VOLUME, "--report", "r.txt", "--level", "-inf"), "'-inf' is not a number"),
    ((*VOLUME, "--report", "r.txt", "--level", "1e999"), "'1e999' is not a number"),
    ((*VOLUME, "--report", "r.txt", "--level", "82,5"), "'82,5' is not a number"),
    ((*VOLUME, "--report", "r.txt", "--level", "82.5m"), "'82.5m' is not a number"),
    ((*VOLUME, "--report", "r.txt", "--level", "+-3"), "'+-3' is not a number"),
    ((*VOLUME, "--report", "r.txt", "--level", ""), "--level"),
    ((*VOLUME, "--report", "tilted.csv", "--level", "10"), "--report would overwrite the input in tilted.csv"),
    ((*VOLUME, "--report", "./tilted.csv", "--level", "10"), "--report would overwrite the input in tilted.csv"),
    ((*VOLUME, "--report", "r.txt", "--level", "1.1e12"), "'1.1e12' is too large"),
    ((*VOLUME, "--report", "r.txt", "--level", "high\nlow"), "'high?low' is not a number"),
    ((*VOLUME, "--report", "r.txt", "--level", "x" * 99), "'" + "x" * 40 + "...' is not a number"),
    ((*VOLUME, "--report", "", "--level", "10"), "--report is empty"),
    ((*GOOD, "--labels", "a,b,c,d,e\n,f,g,h,i,j,k,l"), "--labels holds a line break"),
    ((*GOOD, "--labels", "a,b,c,d,e\r,f,g,h,i,j,k,l"), "--labels holds a line break"),
    ((*GOOD, "--labels", "one,two"), "twelve texts"),
    ((*GOOD, "--method", "fast"), "--method 'fast' is neither exact nor sampled"),
    ((*GOOD, "--method", ""), "--method '' is neither exact nor sampled"),
    ((*GOOD, "--method"), "--method"),
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

    def test_no_way_of_writing_its_path_overwrites_the_survey(self):
        (self.folder / "sub").mkdir()
        self.write("sub/ground.csv", TILTED)
        (self.folder / "link.txt").symlink_to("sub/ground.csv")
        os.link(self.folder / "sub/ground.csv", self.folder / "hard.txt")
        paths = ("sub/ground.csv", "sub\\ground.csv", ".\\sub\\ground.csv", str(self.folder / "sub/ground.csv"))
        for points in paths:
            for report in (*paths, "link.txt", ".\\link.txt", "hard.txt"):
                with self.subTest(points=points, report=report):
                    run = self.run_host("volume", points, "--level", "2", "--report", report)
                    self.assert_refused(run, WRONG_USAGE, "overwrite the input in ")
                    self.assertEqual((self.folder / "sub/ground.csv").read_text(), TILTED)

    def test_the_end_of_the_options_may_be_marked(self):
        self.write("-x.csv", TILTED)
        self.write("plain.csv", TILTED)
        self.assert_done(self.run_host("info", "--", "plain.csv"))
        self.assert_done(self.run_host("info", "--", "-x.csv"))

    def test_version(self):
        run = self.run_host("--version")
        self.assert_done(run)
        self.assertRegex(run.stdout, r"\Aorvikdtm \d+\.\d+\.\d+\n\Z")

    def test_help_has_an_example_that_works(self):
        """Run on a file of the name that it uses."""
        self.write("ground.csv", TILTED)
        run = self.run_host("--help")
        self.assert_done(run)
        example = re.search(r"^Example:\n  orvikdtm (.+)$", run.stdout, re.MULTILINE).group(1)
        self.assertEqual(self.run_host(*example.split()).returncode, DONE)


if __name__ == "__main__":
    unittest.main()
