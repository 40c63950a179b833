"""The manual page, the completions and the documentation, which are made of the words of --help."""

import os
import re
import shutil
import subprocess
import unittest
from pathlib import Path

from orvikdtm import PROGRAM, HostTest

DOCUMENTATION = Path(os.environ["ORVIKDTM_DOCS"]) / "commands.md"


class Help(HostTest):
    def generate(self, form):
        run = self.run_host("generate", form)
        self.assert_done(run)
        return run.stdout

    def commands(self):
        listed = self.run_host("--help").stdout
        return re.findall(r"^  ([a-z]+) {2,}", listed[listed.index("Subcommands:"):], re.MULTILINE)

    def options(self, command):
        text = self.run_host(command, "--help").stdout
        return sorted(set(re.findall(r"^  (?:-h,)?(--[a-z]+)", text, re.MULTILINE)))

    def test_the_documentation_is_up_to_date(self):
        """When this fails: cmake --build --preset release --target update-command-docs."""
        self.assertEqual(self.generate("markdown"), DOCUMENTATION.read_text(encoding="utf-8"))

    def test_the_documentation_is_what_help_prints(self):
        pages = re.findall(r"```\n(.*?)\n```", self.generate("markdown"), re.DOTALL)
        expected = [self.run_host(*words, "--help").stdout.strip("\n")
                    for words in [(), *((command,) for command in self.commands())]]
        self.assertEqual(pages, expected)

    def test_every_command_and_option_is_in_every_form(self):
        man, bash, zsh = (self.generate(form) for form in ("man", "bash", "zsh"))
        self.assertNotIn("generate", self.commands())
        self.assertGreater(len(self.commands()), 6)
        for command in self.commands():
            self.assertIn(f".SS {command}\n", man)
            self.assertIn(f"'{command}:", zsh)
            for option in self.options(command):
                with self.subTest(command=command, option=option):
                    self.assertIn("\\fB" + option.replace("-", "\\-") + "\\fR", man)
                    self.assertRegex(bash, rf"\n    {command}\) options='[^']*{option}[ ']")
                    self.assertIn(f"'{option}[", zsh)

    def test_the_manual_page_is_sound(self):
        self.write("orvikdtm.1", self.generate("man"))
        man = (self.folder / "orvikdtm.1").read_text(encoding="utf-8")
        for section in ("NAME", "SYNOPSIS", "COMMANDS"):
            self.assertIn(f".SH {section}\n", man)
        self.assertNotRegex(man, r"(?m)^[.'](?!SH|SS|TP|TH|PP|nf|fi)")
        if shutil.which("groff"):
            run = subprocess.run(["groff", "-man", "-Tascii", "-ww", "orvikdtm.1"], cwd=self.folder, text=True,
                                 capture_output=True, check=False)
            self.assertEqual((run.returncode, run.stderr), (0, ""))

    def complete(self, *words):
        """What bash offers for the last word."""
        self.write("completion", self.generate("bash"))
        script = "compopt() { :; }; . ./completion; COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1)); _orvikdtm; printf '%s\\n' \"${COMPREPLY[@]}\""
        run = subprocess.run(["bash", "-c", script, "bash", "orvikdtm", *words], cwd=self.folder, text=True,
                             capture_output=True, check=False)
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        return run.stdout.split("\n")[:-1]

    def test_bash_completes_commands_options_choices_and_files(self):
        self.write("ground one.csv", "")
        self.assertEqual(self.complete("vol"), ["volume"])
        self.assertEqual(sorted(self.complete("")), sorted(self.commands()))
        self.assertEqual(self.complete("volume", "--lev"), ["--level"])
        self.assertEqual(self.complete("volume", "x.csv", "--method", ""), ["exact", "sampled"])
        self.assertEqual(self.complete("volume", "gro"), ["ground one.csv"])
        self.assertEqual(self.complete("volume", "x.csv", "--ref", "gro"), ["ground one.csv"])
        self.assertEqual(self.complete("volume", "x.csv", "--level", ""), [""])
        self.assertEqual(self.complete("--ver"), ["--version"])

    def test_zsh_reads_its_completion(self):
        self.assertTrue(self.generate("zsh").startswith("#compdef orvikdtm\n"))
        if shutil.which("zsh"):
            self.write("_orvikdtm", self.generate("zsh"))
            run = subprocess.run(["zsh", "-n", "_orvikdtm"], cwd=self.folder, text=True, capture_output=True, check=False)
            self.assertEqual((run.returncode, run.stderr), (0, ""))

    def test_an_unknown_form_prints_nothing(self):
        run = subprocess.run([PROGRAM, "generate", "pdf"], text=True, capture_output=True, check=False)
        self.assertEqual((run.returncode, run.stdout), (2, ""))


if __name__ == "__main__":
    unittest.main()
