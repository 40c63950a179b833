"""The header of the flat interface, its documentation, and the host in C that calls all of it: the same functions."""

import os
import re
import unittest
from pathlib import Path

SOURCE = Path(os.environ["ORVIKDTM_SOURCE"])
HEADER = (SOURCE / "OrvikDTMAlgorithm/api/orvikdtm.h").read_text(encoding="ascii")
PAGE = (SOURCE / "docs/flat-interface.md").read_text(encoding="utf-8")
HOST = (SOURCE / "tests/flat/host.c").read_text(encoding="ascii")


def one_line(text):
    return re.sub(r"\s+", " ", text).strip()


def declared():
    """Every exported declaration, by name."""
    found = [one_line(text) for text in re.findall(r"^ORVIKDTM_API ([^;]+);", HEADER, re.M)]
    return {re.search(r"(\w+)\(", text)[1]: text for text in found}


def documented():
    """Every first cell of a table of functions, by name."""
    found = re.findall(r"^\| `([^`]*\([^`]*\))` \|", PAGE, re.M)
    return {re.search(r"(\w+)\(", text)[1]: text for text in found}


class Documentation(unittest.TestCase):
    maxDiff = None

    def test_there_is_something_to_compare(self):
        self.assertEqual(HEADER.count("ORVIKDTM_API"), len(declared()))
        self.assertGreater(len(declared()), 30)

    def test_every_function_is_in_the_table_as_it_is_declared(self):
        self.assertEqual(documented(), declared())

    def test_in_the_order_of_the_header(self):
        self.assertEqual(list(documented()), list(declared()))

    def test_the_header_says_something_before_every_function(self):
        for name in declared():
            with self.subTest(name):
                self.assertRegex(HEADER, r"\*/\nORVIKDTM_API [^;]*\b" + name + r"\(")

    def test_every_pointer_that_is_handed_out_has_its_life_told(self):
        lives = PAGE[PAGE.index("## The life of every pointer"):]
        returned = {re.match(r"(.*?\*) ", text)[1] for text in declared().values() if "*" in text.split("(")[0]}
        received = set(re.findall(r"typedef void \(\*\w+\)\((\w+\*) \w+\);", HEADER))
        self.assertEqual(len(received), 4)
        for pointer in returned | received:
            with self.subTest(pointer):
                self.assertIn(f"| `{pointer}` |", lives)

    def test_functions_named_in_the_text_exist(self):
        names = set(re.findall(r"`(\w+)`", PAGE)) - {"int", "index"}
        self.assertLessEqual({name for name in names if not name.endswith("Callback")}, set(declared()))

    def test_the_host_in_c_calls_every_function(self):
        self.assertEqual({name for name in declared() if f"{name}(" not in HOST}, set())


if __name__ == "__main__":
    unittest.main()
