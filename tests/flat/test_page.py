"""The volume report's page in a real browser: title, headings, five tables and every value, read from its DOM."""

import html.parser
import os
import shutil
import subprocess
import sys
import tempfile
import unittest
from decimal import ROUND_HALF_UP, Decimal
from pathlib import Path

NOT_RUN = 77  # what ctest counts as skipped
WRITER = os.environ["ORVIKDTM_WRITE_PAGE"]
CHROMIUM = next(filter(None, map(shutil.which, ("chromium", "chromium-browser"))), None)

LABELS = ("Erdmassen äöü", "土方 surface", "Reference", "Volumes", "Cut", "Fill", "Plan area", "Surface area",
          "Plan perimeter", "Surface perimeter", "Cut areas", "Fill areas")
VALUES = ("12.34567", "1234567.891", "10000", "10034.56785", "400.00004", "401.5", "-100.25", "0.00006",
          "38512600.0800", "0")


class Page(html.parser.HTMLParser):
    """What a serialised DOM shows: the title, the texts of headings and paragraphs, the cells of the tables."""

    def __init__(self, dom):
        super().__init__()
        self.title, self.headings, self.paragraphs, self.tables = None, [], [], []
        self._into = None
        self.feed(dom)

    def handle_starttag(self, tag, attributes):
        if tag == "table":
            self.tables.append([])
        elif tag == "tr":
            self.tables[-1].append([])
        elif tag in ("title", "h3", "p", "th", "td"):
            self._into = (tag, [])

    def handle_data(self, data):
        if self._into:
            self._into[1].append(data)

    def handle_endtag(self, tag):
        if not self._into or tag != self._into[0]:
            return
        text, self._into = "".join(self._into[1]), None
        if tag == "title":
            self.title = text
        elif tag == "h3":
            self.headings.append(text)
        elif tag == "p":
            self.paragraphs.append(text)
        else:
            self.tables[-1][-1].append((tag, text))


def shown(value):
    """Four decimals, halves away from zero."""
    return str(Decimal(value).quantize(Decimal("0.0001"), ROUND_HALF_UP))


def opened(path, profile):
    run = subprocess.run(
        [CHROMIUM, "--headless", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--no-first-run",
         f"--user-data-dir={profile}", "--dump-dom", path.as_uri()],
        stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=120, check=True)
    return Page(run.stdout.decode("utf-8"))


class InABrowser(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def page(self, *reference, labels=LABELS):
        path = self.folder / "report.html"
        subprocess.run([WRITER, path, ",".join(labels), "Böschung 3", *reference, *VALUES], check=True)
        return opened(path, self.folder / "profile")

    def expect(self, page, reference):
        self.assertEqual(page.title, LABELS[0])
        self.assertEqual(page.headings, [LABELS[0]])
        self.assertEqual(page.paragraphs, [LABELS[3], LABELS[1] + ":", LABELS[10], LABELS[11]])
        v = [shown(value) for value in VALUES]
        expected = [
            [(1, "Böschung 3"), (2, reference)],
            [(4, v[0]), (5, v[1])],
            [(6, v[2]), (7, v[3]), (8, v[4]), (9, v[5])],
            [(6, v[6]), (7, v[7])],
            [(6, v[8]), (7, v[9])],
        ]
        self.assertEqual(page.tables, [[[("th", LABELS[label]), ("td", value)] for label, value in table]
                                       for table in expected])

    def test_against_a_level(self):
        self.expect(self.page("level", "12.5"), "12.5000")

    def test_against_a_surface(self):
        self.expect(self.page("surface", "Entwurf ß 12.5"), "Entwurf ß 12.5")

    def test_absent_labels_leave_the_tables_whole(self):
        page = self.page("level", "12.5", labels=LABELS[:2])
        self.assertEqual([len(table) for table in page.tables], [2, 2, 4, 2, 2])
        self.assertEqual(page.tables[1], [[("th", ""), ("td", "12.3457")], [("th", ""), ("td", "1234567.8910")]])


if __name__ == "__main__":
    if CHROMIUM is None:
        print("NOT RUN: no chromium here, so the page was not opened in a browser; scripts/install-dependencies brings "
              "it where the system has one")
        sys.exit(NOT_RUN)
    unittest.main()
