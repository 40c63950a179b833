"""The manual page, the completions and the documentation, which are made of the words of --help."""

import os
import pty
import re
import select
import shutil
import subprocess
import unittest
from pathlib import Path

from orvikdtm import PROGRAM, HostTest

DOCUMENTATION = Path(os.environ["ORVIKDTM_DOCS"]) / "commands.md"

# Ctrl-X s shows the line as it stands between angle brackets.
ZSH_SETUP = r"""
fpath=($PWD $fpath)
autoload -Uz compinit
compinit -u -D
show() { BUFFER="print -r -- \<${(qq)BUFFER}\>"; zle accept-line }
zle -N show
bindkey '^I' complete-word
bindkey '^Xs' show
print ready
"""


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

    def test_the_first_page_of_the_documentation_is_the_programs(self):
        self.assertIn("```\n" + self.run_host("--help").stdout.strip("\n") + "\n```\n", self.generate("markdown"))
        self.assertNotIn("generate [OPTIONS]", self.generate("markdown"))

    def completed_by_zsh(self, lines):
        """What an interactive zsh makes of each line when the tabulator is pressed."""
        master, terminal = pty.openpty()
        zsh = subprocess.Popen(["zsh", "-f", "-i"], cwd=self.folder, stdin=terminal, stdout=terminal, stderr=terminal,
                               env={"TERM": "dumb", "PATH": os.environ["PATH"], "HOME": str(self.folder)})
        os.close(terminal)
        try:
            self.type_and_read(master, b". ./setup\n", rb"ready\r\n")
            return [self.type_and_read(master, line.encode() + b"\t\x18s", rb"\n<(.*?)>\r\n") for line in lines]
        finally:
            zsh.kill()
            zsh.wait()
            os.close(master)

    def type_and_read(self, master, typed, pattern):
        os.write(master, typed)
        shown = b""
        while not (found := re.search(pattern, shown)):
            self.assertTrue(select.select([master], [], [], 60)[0], shown)
            shown += os.read(master, 4096)
        return found.group(found.re.groups).decode()

    def test_zsh_completes_commands_options_choices_and_files(self):
        script = self.generate("zsh")
        self.assertTrue(script.startswith("#compdef orvikdtm\n"))
        if not shutil.which("zsh"):
            return
        self.write("_orvikdtm", script)
        self.write("ground one.csv", "")
        self.write("setup", ZSH_SETUP)
        expected = {
            "vol": "volume ", "--ver": "--version ", "volume x.csv --lev": "volume x.csv --level ",
            "volume x.csv --method s": "volume x.csv --method sampled ", "volume gro": "volume ground\\ one.csv ",
            "volume x.csv --ref gro": "volume x.csv --ref ground\\ one.csv ", "range --hu": "range --hull ",
            "diff a.csv gro": "diff a.csv ground\\ one.csv ", "volume x.csv --level gro": "volume x.csv --level gro",
            "nothing gro": "nothing gro"}
        shown = self.completed_by_zsh(["orvikdtm " + line for line in expected])
        self.assertEqual(shown, ["orvikdtm " + line for line in expected.values()])

    def test_an_unknown_form_prints_nothing(self):
        run = subprocess.run([PROGRAM, "generate", "pdf"], text=True, capture_output=True, check=False)
        self.assertEqual((run.returncode, run.stdout), (2, ""))


if __name__ == "__main__":
    unittest.main()
