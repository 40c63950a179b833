"""The HTML page of a volume in a real browser: it opens without a network, its numbers are the report's, its map moves
and grows, and its 3-D view draws and turns."""

import os
import re
import sys
import time
import unittest
from pathlib import Path

from browser import CHROMIUM, NOT_RUN, Browser
from orvikdtm import SITE, HostTest, values

VIEW = Path(os.environ["ORVIKDTM_WEB_VIEW"])  # the bundle that the host was built with: empty without npm
HAS_VIEW = VIEW.exists() and VIEW.stat().st_size > 0
GROUND = str(SITE / "ground.csv")


def report_numbers(text):
    """The numbers of the text report, in its order."""
    return re.findall(r"-?\d+\.\d{4}", text)


class Page(HostTest):
    def page(self, *arguments):
        run = self.run_host("volume", *arguments, "--html", "page.html", "--report", "report.txt")
        self.assertEqual(run.returncode, 0, run.stderr)
        return values(run.stdout)

    def opened(self):
        browser = Browser()
        self.addCleanup(browser.__exit__)
        browser.open(self.folder / "page.html")
        if HAS_VIEW:
            self.wait_for(browser, "document.querySelector('#terrain').dataset.state === 'drawn'")
        return browser

    def wait_for(self, browser, condition):
        until = time.monotonic() + 60
        while not browser.evaluate(condition):
            self.assertLess(time.monotonic(), until, condition)
            time.sleep(0.05)

    def settled(self, browser, box):
        """What is seen once it stands still, which a view does that nobody turns."""
        until = time.monotonic() + 60
        last, now = None, browser.look(box)
        while now != last:
            self.assertLess(time.monotonic(), until, "it does not stand still")
            time.sleep(0.1)
            last, now = now, browser.look(box)
        return now

    def place(self, browser, selector):
        return browser.evaluate(
            f"(() => {{ const e = document.querySelector('{selector}'); e.scrollIntoView({{block: 'center'}});"
            "const r = e.getBoundingClientRect(); return {x: r.x, y: r.y, width: r.width, height: r.height}; })()")

    def test_the_numbers_are_the_reports(self):
        self.page(GROUND, "--level", "78.5")
        report = (self.folder / "report.txt").read_text(encoding="utf-8")
        browser = self.opened()
        shown = browser.evaluate("[...document.querySelectorAll('#figures td')].map((cell) => cell.textContent)")
        level, cut, fill, *rest = report_numbers(report)
        surface, cut_areas, fill_areas = rest[:4], rest[4:6], rest[6:]
        self.assertEqual(shown, [cut, fill, *cut_areas, *fill_areas, *surface])
        self.assertEqual(browser.evaluate("document.querySelector('#reference').textContent"), level)
        self.assertEqual(browser.evaluate("document.querySelector('#surface').textContent"), "ground")
        self.assertEqual(browser.faults(), [])

    def test_the_map_is_moved_and_enlarged(self):
        self.page(GROUND, "--ref", str(SITE / "design.csv"))
        browser = self.opened()
        box = self.place(browser, "#map .frame rect")
        middle = (box["x"] + box["width"] / 2, box["y"] + box["height"] / 2)
        transform = "document.querySelector('#map .map').getAttribute('transform')"
        label = "[...document.querySelectorAll('.scale-bar text')].at(-1).textContent"
        before, bar = browser.look(box), browser.evaluate(label)
        browser.wheel(*middle, -600)
        self.wait_for(browser, f"/scale\\([2-9]/.test({transform})")
        self.assertNotEqual(browser.evaluate(label), bar)
        enlarged, there = browser.look(box), browser.evaluate(transform)
        self.assertNotEqual(enlarged, before)
        browser.drag(middle, (middle[0] - 90, middle[1] + 60))
        self.wait_for(browser, f"{transform} !== '{there}'")
        self.assertNotEqual(browser.look(box), enlarged)
        browser.evaluate("document.querySelector('#whole').click()")
        self.assertEqual(browser.evaluate(transform), "translate(0 0) scale(1)")
        self.assertEqual(browser.evaluate(label), bar)
        self.assertEqual(browser.faults(), [])

    def test_a_page_without_the_3d_view_says_so(self):
        """A host that was built without npm; any other shows the view."""
        self.page(GROUND, "--level", "78.5")
        browser = self.opened()
        self.assertEqual("has no 3-D view" in browser.evaluate("document.body.innerText"), not HAS_VIEW)

    def test_the_3d_view_draws_and_turns(self):
        if not HAS_VIEW:
            return self.test_a_page_without_the_3d_view_says_so()
        self.page(GROUND, "--level", "78.5")
        browser = self.opened()
        box = self.place(browser, "#terrain canvas")
        before = self.settled(browser, box)
        colours = browser.evaluate("""(async () => {
          const canvas = document.querySelector('#terrain canvas');
          document.querySelector('#heights').dispatchEvent(new Event('input'));  // draws, so that there is a picture
          const copy = new OffscreenCanvas(canvas.width, canvas.height).getContext('2d');
          copy.drawImage(canvas, 0, 0);
          const { data } = copy.getImageData(0, 0, canvas.width, canvas.height);
          let red = 0, blue = 0;
          for (let i = 0; i < data.length; i += 4) {
            if (data[i + 3] > 0 && data[i] > data[i + 2] + 25) ++red;
            if (data[i + 3] > 0 && data[i + 2] > data[i] + 25) ++blue;
          }
          return { red: red / data.length * 4, blue: blue / data.length * 4 };
        })()""")
        self.assertGreater(colours["red"], 0.02, colours)
        self.assertGreater(colours["blue"], 0.02, colours)
        middle = (box["x"] + box["width"] / 2, box["y"] + box["height"] / 2)
        browser.drag(middle, (middle[0] + 160, middle[1] - 40))
        turned = self.settled(browser, box)
        self.assertNotEqual(turned, before)
        browser.drag((middle[0] + 160, middle[1] - 40), middle)
        self.assertNotEqual(self.settled(browser, box), turned)
        self.assertEqual(browser.faults(), [])

    def test_the_page_holds_all_that_it_needs(self):
        self.page(GROUND, "--level", "78.5")
        text = (self.folder / "page.html").read_text(encoding="utf-8")
        self.assertNotRegex(text, r"<(?:script|img|iframe|link)[^>]*\b(?:src|href)=")
        self.assertEqual("has no 3-D view" in text, not HAS_VIEW)
        self.assertEqual("Permission is hereby granted" in text, HAS_VIEW)
        self.assertLess(len(text), 2000000)


if __name__ == "__main__":
    if CHROMIUM is None:
        print("NOT RUN: no chromium here, so the page was not opened in a browser; scripts/install-dependencies brings "
              "it where the system has one")
        sys.exit(NOT_RUN)
    unittest.main()
