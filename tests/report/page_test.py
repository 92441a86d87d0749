# The report page in a browser: page_test.py VELKSTEP EXAMPLE CHROMIUM [FOLDER for screenshots]
import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

from browser import Browser
from exchange_files import exchange_file

VELKSTEP, EXAMPLE, CHROMIUM = sys.argv[1:4]
SCREENSHOTS = pathlib.Path(sys.argv[4]) if len(sys.argv) > 4 else None

NAMES = "[...document.querySelectorAll('.row .name')].map((name) => name.textContent)"
RESULTS = "[...document.querySelectorAll('#results .name')].map((name) => name.textContent)"
PARENTS = "[...document.querySelectorAll('#facts li')].map((item) => item.textContent)"
ACTIVE = """(() => {
  const tree = document.getElementById("tree");
  const row = document.getElementById(tree.getAttribute("aria-activedescendant"));
  const box = row.getBoundingClientRect(), around = tree.getBoundingClientRect();
  return {
    name: row.querySelector(".name").textContent,
    level: row.ariaLevel, position: row.ariaPosInSet, of: row.ariaSetSize,
    selected: row.ariaSelected, expanded: row.ariaExpanded,
    in_sight: box.top >= around.top - 0.5 && box.bottom <= around.bottom + 0.5,
  };
})()"""
AREAS = """(() => {
  const cells = [...document.querySelectorAll(".cell")];
  const box = document.getElementById("treemap");
  return {
    whole: box.clientWidth * box.clientHeight,
    cells: cells.map((cell) => ({
      part: cell.dataset.part === undefined ? null : Number(cell.dataset.part),
      area: parseFloat(cell.style.width) * parseFloat(cell.style.height),
    })),
  };
})()"""
FITS = "document.documentElement.scrollWidth <= document.documentElement.clientWidth"
OPENED_DESK_LAMP = ["Desk lamp", "Stand", "Boom", "Rocker switch"]


class ReportPage(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.scratch = tempfile.TemporaryDirectory()
        cls.folder = pathlib.Path(cls.scratch.name)
        cls.lamp = cls.report("lamp", EXAMPLE)
        cls.browser = Browser(CHROMIUM)

    @classmethod
    def tearDownClass(cls):
        cls.browser.close()
        cls.scratch.cleanup()

    @classmethod
    def report(cls, name, source):
        outdir = cls.folder / name
        subprocess.run([VELKSTEP, "report", "--quiet", source, outdir], check=True,
                       stderr=subprocess.DEVNULL)
        return outdir / "report.html"

    @classmethod
    def report_of(cls, name, names, uses):
        source = cls.folder / (name + ".stp")
        source.write_text(exchange_file(names, uses))
        return cls.report(name, source)

    def tearDown(self):
        self.assertEqual(self.browser.problems, [])
        self.assertEqual([url for url in self.browser.requests
                          if not url.startswith(("file:", "data:"))], [])

    def active(self):
        return self.browser.value(ACTIVE)

    def facts(self):
        return self.browser.value("""Object.fromEntries(
          [...document.querySelectorAll("#facts dt")].map((term) =>
            [term.textContent, term.nextElementSibling.textContent]))""")

    def expect_areas_of_sizes(self, page):
        """The areas fill the treemap, each in proportion to its file's size."""
        areas = self.browser.value(AREAS)
        parts = self.browser.value("PARTS.map((part) => ({file: part.file, bytes: part.bytes}))")
        sizes = [(page.parent / part["file"]).stat().st_size for part in parts]
        self.assertEqual([part["bytes"] for part in parts], sizes)
        self.assertEqual(sorted(cell["part"] for cell in areas["cells"]), list(range(len(parts))))
        self.assertAlmostEqual(sum(cell["area"] for cell in areas["cells"]) / areas["whole"], 1, 3)
        for cell in areas["cells"]:
            expected = areas["whole"] * sizes[cell["part"]] / sum(sizes)
            self.assertAlmostEqual(cell["area"] / expected, 1, 1)

    def test_shows_the_root_opened_and_its_file(self):
        self.browser.open(self.lamp)
        self.assertEqual(self.browser.value(NAMES), OPENED_DESK_LAMP)
        self.assertEqual(self.browser.value("document.querySelector('#part-title').textContent"),
                         "Desk lamp")
        facts = self.facts()
        self.assertEqual(facts["File"], "Desk lamp.stp")
        self.assertEqual(facts["Record"], "#1332")
        link = self.browser.value("document.querySelector('#facts a').href")
        self.assertEqual(link, (self.lamp.parent / "Desk lamp.stp").as_uri())

    def test_a_node_opens_and_closes_by_mouse(self):
        self.browser.open(self.lamp)
        self.browser.click("#row-1 .twisty")
        self.assertEqual(self.browser.value(NAMES), [
            "Desk lamp", "Stand", "Base", "Rubber foot", "Column", "Boom", "Rocker switch"])
        self.browser.click("#row-1 .twisty")
        self.assertEqual(self.browser.value(NAMES), OPENED_DESK_LAMP)

    def test_the_tree_follows_the_keys(self):
        self.browser.open(self.lamp)
        self.browser.value("document.getElementById('tree').focus()")
        for key, name, level, position, of, expanded in [
                ("ArrowDown", "Stand", "2", "1", "3", "false"),
                ("ArrowRight", "Stand", "2", "1", "3", "true"),
                ("ArrowRight", "Base", "3", "1", "3", None),
                ("ArrowRight", "Base", "3", "1", "3", None),
                ("ArrowDown", "Rubber foot", "3", "2", "3", None),
                ("ArrowLeft", "Stand", "2", "1", "3", "true"),
                ("ArrowLeft", "Stand", "2", "1", "3", "false"),
                ("End", "Rocker switch", "2", "3", "3", None),
                ("ArrowUp", "Boom", "2", "2", "3", "false"),
                ("Enter", "Boom", "2", "2", "3", "true"),
                ("Home", "Desk lamp", "1", "1", "1", "true")]:
            self.browser.press(key)
            self.assertEqual(self.active(), {
                "name": name, "level": level, "position": position, "of": of, "selected": "true",
                "expanded": expanded, "in_sight": True}, key)

    def test_search_finds_a_part_and_shows_it_in_the_tree(self):
        self.browser.open(self.lamp)
        self.browser.click("#search")
        self.browser.type("PIVOT p")
        self.assertEqual(self.browser.value(RESULTS), ["Pivot pin"])
        self.assertEqual(self.browser.value("document.querySelector('#found').textContent"),
                         "1 part found")
        self.browser.click("#results button")
        self.assertEqual((self.active()["name"], self.active()["level"]), ("Pivot pin", "4"))
        self.assertEqual(self.facts()["File"], "Pivot pin.stp")
        self.assertEqual(self.browser.value(PARENTS), ["Arm ×2", "Head"])
        self.browser.click("#search")
        self.browser.type("nothing like it")
        self.assertEqual(self.browser.value(RESULTS), [])
        self.assertEqual(self.browser.value("document.querySelector('#found').textContent"),
                         "0 parts found")

    def test_the_treemap_shows_every_byte_and_leads_to_the_part(self):
        self.browser.open(self.lamp)
        self.expect_areas_of_sizes(self.lamp)
        shade = self.browser.value("PARTS.findIndex((part) => part.name === 'Shade')")
        self.browser.click('[data-part="%d"]' % shade)
        self.assertEqual(self.active()["name"], "Shade")
        self.assertEqual(self.browser.value("document.querySelector('.cell.chosen').dataset.part"),
                         str(shade))

    def test_names_are_text(self):
        hostile = "</script><script>alert(1)</script><img src=x onerror=alert(2)>"
        page = self.report_of("hostile", [hostile, "<b>lid</b>", "<!--"], [(0, 1), (0, 2)])
        self.browser.open(page)
        self.assertEqual(self.browser.value(NAMES), [hostile, "<b>lid</b>", "<!--"])
        self.assertEqual(self.browser.value("document.querySelectorAll('img, b, script').length"), 2)

    def test_search_takes_letters_without_their_marks(self):
        page = self.report_of("marks", ["Haus", "Türgriff", "支架"], [(0, 1), (0, 2)])
        for text, names in [("turgriff", ["Türgriff"]), ("支", ["支架"]), ("x", [])]:
            self.browser.open(page)
            self.browser.click("#search")
            self.browser.type(text)
            self.assertEqual(self.browser.value(RESULTS), names)

    def test_a_ladder_opens_level_by_level(self):
        levels = 60
        uses = [(i, i + 1) for i in range(levels) for _ in range(2)]
        page = self.report_of("ladder", ["level %d" % i for i in range(levels + 1)], uses)
        self.browser.open(page)
        self.assertEqual(self.browser.value(NAMES), ["level 0", "level 1"])
        self.browser.click("#search")
        self.browser.type("level %d" % levels)
        self.browser.click("#results button")
        self.assertEqual(self.active()["level"], str(levels + 1))
        self.assertEqual(self.facts()["Uses in the whole"], str(2**levels))

    def test_a_cycle_ends_where_it_closes(self):
        page = self.report_of("cycle", ["box", "lid"], [(0, 1), (1, 0)])
        self.browser.open(page)
        self.browser.value("document.getElementById('tree').focus()")
        for key in ["ArrowDown", "ArrowRight", "ArrowDown", "ArrowRight"]:
            self.browser.press(key)
        self.assertEqual(self.browser.value(NAMES), ["box", "lid", "box"])
        self.assertEqual((self.active()["name"], self.active()["expanded"]), ("box", None))

    def test_ten_thousand_parts(self):
        count = 10000
        page = self.report_of("many", ["all"] + ["part %d" % i for i in range(1, count)],
                              [(0, i) for i in range(1, count)])
        self.browser.open(page)
        self.expect_areas_of_sizes(page)
        self.assertLess(self.browser.value("document.querySelectorAll('.row').length"), 100)
        self.browser.value("document.getElementById('tree').focus()")
        self.browser.press("End")
        active = self.active()
        self.assertEqual((active["name"], active["position"], active["of"], active["in_sight"]),
                         ("part 9999", "9999", "9999", True))
        self.browser.click("#search")
        self.browser.type("part 77")
        with_77 = [i for i in range(1, count)
                   if any("77" in str(number) for number in (i, 3 * i + 1, 3 * i + 3))]
        found = self.browser.value(RESULTS)
        self.assertEqual((len(found), found[:3]), (100, ["part 77", "part 770", "part 771"]))
        self.assertEqual(self.browser.value("document.querySelector('#found').textContent"),
                         "%d parts found, the first 100 are shown" % len(with_77))
        self.picture("many", page)

    def test_choosing_a_part_leaves_the_treemap_as_it_is(self):
        page = self.report_of("sizes", ["all", "x" * 400, "part"],
                              [(0, 1)] * 3 + [(0, 2), (2, 1)])
        self.browser.open(page)
        self.browser.value("document.querySelector('.cell').dataset.kept = 'yes'")
        before = self.browser.value(AREAS)
        for row in ("#row-1", "#row-2", "#row-0"):
            self.browser.click(row + " .name")
            self.assertEqual(self.browser.value(AREAS), before)
        self.assertEqual(self.browser.value("document.querySelector('.cell').dataset.kept"), "yes")

    def test_fits_a_phone(self):
        for page in (self.lamp, self.report_of("wide", ["W" * 300, "w" * 300], [(0, 1)])):
            self.browser.open(page, 360, 740)
            self.assertTrue(self.browser.value(FITS))
            self.browser.click("#search")
            self.browser.type("w" if "wide" in str(page) else "pin")
            self.assertTrue(self.browser.value(FITS))

    def test_follows_the_colour_scheme(self):
        colours = []
        for dark in (False, True):
            self.browser.open(self.lamp, dark=dark)
            colours.append(self.browser.value("getComputedStyle(document.body).backgroundColor"))
        self.assertEqual(colours, ["rgb(244, 245, 247)", "rgb(20, 23, 26)"])
        self.picture("lamp", self.lamp)

    def picture(self, name, page):
        """For the eye: the page in three forms."""
        if SCREENSHOTS is None:
            return
        for form, setting in [("light", {}), ("dark", {"dark": True}),
                              ("phone", {"width": 360, "height": 1500})]:
            self.browser.open(page, **setting)
            self.browser.click("#search")
            self.browser.type("p")
            self.browser.click("#results li:nth-child(2) button")
            self.browser.screenshot(SCREENSHOTS / ("%s-%s.png" % (name, form)))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
