# The report page in a browser:
#   page_test.py VELKSTEP EXAMPLE CHROMIUM [FOLDER with samples [FOLDER for screenshots]]
import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

from browser import Browser
from exchange_files import DrawnFile, copies_of, drawn_parts, exchange_file, styled_places

VELKSTEP, EXAMPLE, CHROMIUM = sys.argv[1:4]
SAMPLE = pathlib.Path(sys.argv[4]) / "as1-oc-214.stp" if len(sys.argv) > 4 else pathlib.Path()
SCREENSHOTS = pathlib.Path(sys.argv[5]) if len(sys.argv) > 5 else None

NAMES = "[...document.querySelectorAll('.row .name')].map((name) => name.textContent)"
RESULTS = "[...document.querySelectorAll('#results .name')].map((name) => name.textContent)"
PARENTS = "[...document.querySelectorAll('#facts li')].map((item) => item.textContent)"
TITLE = "document.getElementById('part-title').textContent"
FOUND = "document.querySelector('#found').textContent"
LISTED = "[...document.querySelectorAll('.line .cell-name')].slice(1).map((cell) => cell.textContent)"
ACTIVE = """(() => {
  const tree = document.getElementById("tree");
  const row = document.getElementById(tree.getAttribute("aria-activedescendant"));
  const box = row.getBoundingClientRect(), around = tree.parentElement.getBoundingClientRect();
  return {
    name: row.querySelector(".name").textContent,
    level: row.ariaLevel, position: row.ariaPosInSet, of: row.ariaSetSize,
    selected: row.ariaSelected, expanded: row.ariaExpanded,
    in_sight: box.top >= around.top - 0.5 && box.bottom <= around.bottom + 0.5,
  };
})()"""
# The cells of the map by the frame that they are in.
AREAS = """[...document.querySelectorAll("#treemap, .frame")].map((frame) =>
  [...frame.children].filter((cell) => cell.matches(".cell[data-part]")).map((cell) => ({
    part: Number(cell.dataset.part),
    area: parseFloat(cell.style.width) * parseFloat(cell.style.height),
  })))"""
# The bytes of a canvas: red, green, blue, alpha.
PIXELS = """((canvas) => {
  const copy = new OffscreenCanvas(canvas.width, canvas.height);
  const context = copy.getContext("2d", {willReadFrequently: true});
  context.drawImage(canvas, 0, 0);
  return context.getImageData(0, 0, canvas.width, canvas.height).data;
})"""
# The least contrast between a visible text and what is behind it, as WCAG 2 counts it, and the text.
CONTRAST = """(() => {
  const channels = (text) => text.match(/[\\d.]+/g).map(Number);
  const behind = (element) => {
    for (let at = element; at; at = at.parentElement) {
      const [red, green, blue, alpha = 1] = channels(getComputedStyle(at).backgroundColor);
      if (alpha === 1) return [red, green, blue];
    }
    return [255, 255, 255];
  };
  const light = (colour) => colour.map((part) => part / 255).map((part) =>
    part <= 0.04045 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4)
    .reduce((sum, part, i) => sum + part * [0.2126, 0.7152, 0.0722][i], 0);
  let least = [Infinity, "", 0], count = 0;
  for (const element of document.querySelectorAll("body *")) {
    const text = [...element.childNodes].filter((node) => node.nodeType === 3)
      .map((node) => node.textContent).join("").trim();
    if (text === "" || !element.checkVisibility() || element.matches("script, noscript")) continue;
    ++count;
    const [a, b] = [light(channels(getComputedStyle(element).color).slice(0, 3)), light(behind(element))];
    const contrast = (Math.max(a, b) + 0.05) / (Math.min(a, b) + 0.05);
    if (contrast < least[0]) least = [contrast, text];
  }
  return [...least.slice(0, 2), count];
})()"""
# How many pixels of a canvas are drawn, and in how many of its columns and rows.
INK = """((canvas) => {
  const data = """ + PIXELS + """(canvas);
  const columns = new Set(), rows = new Set();
  let drawn = 0;
  for (let i = 0; i < data.length / 4; ++i) {
    if (data[4 * i + 3] < 20) continue;
    ++drawn;
    columns.add(i %% canvas.width);
    rows.add(Math.floor(i / canvas.width));
  }
  return [drawn, columns.size / canvas.width, rows.size / canvas.height];
})(document.querySelector(%s))"""
# The colour of the strongest pixels of the preview.
STRONGEST = """(() => {
  const data = """ + PIXELS + """(document.querySelector("#preview canvas"));
  const counts = {};
  for (let i = 0; i < data.length; i += 4) {
    if (data[i + 3] < 150) continue;
    const colour = [...data.subarray(i, i + 3)].join(" ");
    counts[colour] = (counts[colour] ?? 0) + 1;
  }
  return Object.entries(counts).sort((a, b) => b[1] - a[1])[0]?.[0] ?? null;
})()"""
CAMERA = "(({yaw, pitch, zoom, pan}) => [yaw, pitch, zoom, ...pan])(PAGE.preview.camera)"
# Turns the preview for a second: how many pictures, how many a second, milliseconds that the fastest
# one took.
TURN = """new Promise((done) => {
  const begin = performance.now();
  let frames = 0, least = Infinity;
  const step = () => {
    const now = performance.now() - begin;
    if (frames > 0) least = Math.min(least, PAGE.preview.milliseconds);
    if (now > 1000 && frames > 2) return done([frames, 1000 * frames / now, least]);
    ++frames;
    PAGE.preview.camera.turn(3, 0);
    PAGE.preview.move();
    requestAnimationFrame(step);
  };
  step();
})"""
FITS = "document.documentElement.scrollWidth <= document.documentElement.clientWidth"
OPENED_DESK_LAMP = ["Desk lamp", "Stand", "Boom", "Rocker switch"]
ALL_OF_DESK_LAMP = ["Desk lamp", "Stand", "Base", "Rubber foot", "Column", "Boom", "Arm",
                    "Arm beam", "Pivot pin", "Head", "Socket", "Pivot pin", "Shade", "Bulb",
                    "Rocker switch"]
PARTS_OF_DESK_LAMP = ["Arm beam", "Base", "Bulb", "Column", "Pivot pin", "Rocker switch",
                      "Rubber foot", "Shade", "Socket"]


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
    def report(cls, name, source, *more):
        outdir = cls.folder / name
        subprocess.run([VELKSTEP, "report", "--quiet", *more, source, outdir], check=True,
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
                          if not url.startswith(("file:", "data:", "blob:"))], [])

    def value(self, expression):
        return self.browser.value(expression)

    def active(self):
        return self.value(ACTIVE)

    def focus(self, selector):
        self.value("document.querySelector(%s).focus()" % json.dumps(selector))

    def ink(self, selector):
        """Waits for pictures that are drawn in later frames."""
        for _ in range(100):
            ink = self.value(INK % json.dumps(selector))
            if ink[0] > 0:
                return ink
            self.browser.settle()
        self.fail("nothing is drawn in " + selector)

    def facts(self):
        return self.value("""Object.fromEntries(
          [...document.querySelectorAll("#facts dt")].map((term) =>
            [term.textContent, term.nextElementSibling.textContent]))""")

    def part(self, name):
        return self.value("PARTS.findIndex((part) => part.name === %s)" % json.dumps(name))

    def expect_areas_of_sizes(self, page, frames):
        """Every file is an area of the map, and those of one frame are in proportion to sizes."""
        self.browser.click("#tab-map")
        areas = self.value(AREAS)
        parts = self.value("PARTS.map((part) => ({file: part.file, bytes: part.bytes}))")
        sizes = [(page.parent / part["file"]).stat().st_size for part in parts]
        self.assertEqual([part["bytes"] for part in parts], sizes)
        self.assertEqual(sorted(cell["part"] for frame in areas for cell in frame),
                         list(range(len(parts))))
        self.assertEqual(len(areas), frames + 1)
        for frame in areas:
            for cell in frame:
                of_area = cell["area"] / sum(one["area"] for one in frame)
                of_bytes = sizes[cell["part"]] / sum(sizes[one["part"]] for one in frame)
                self.assertAlmostEqual(of_area / of_bytes, 1, 1)

    def test_shows_the_root_opened_with_its_file_and_what_the_header_says(self):
        self.browser.open(self.lamp)
        self.assertEqual(self.value(NAMES), OPENED_DESK_LAMP)
        self.assertEqual(self.value(TITLE), "Desk lamp")
        facts = self.facts()
        self.assertEqual(facts["File"], "Desk lamp.stp")
        self.assertEqual(facts["Number"], "#1332")
        self.assertEqual(facts["Bounding box"], "508.2 × 213 × 599 mm")
        self.assertEqual(self.value("document.querySelector('#facts a').href"),
                         (self.lamp.parent / "Desk lamp.stp").as_uri())
        about = self.value("[...document.querySelectorAll('#about div')].map((one) =>"
                           "[...one.children].map((child) => child.textContent))")
        size = pathlib.Path(EXAMPLE).stat().st_size
        self.assertEqual(about, [
            ["System", "generate_assembly"], ["Time", "2024-05-17 09:30:00"],
            ["Schema", "AUTOMOTIVE_DESIGN"], ["Length units", "millimetre"],
            ["Input", "%s kB, 1,366 records" % ("%.3g" % (size / 1000))]])
        self.assertTrue(self.value("document.getElementById('tab-findings').hidden"))
        # An assembly weighs what all files below it do, each once.
        bytes_of = self.value("Object.fromEntries(PARTS.map((part) => [part.name, part.bytes]))")
        stand = sum(bytes_of[name] for name in ("Stand", "Base", "Rubber foot", "Column"))
        self.assertEqual(self.value("weight_of(%d)" % self.part("Stand")),
                         {"bytes": stand, "files": 4})
        self.assertEqual(self.value("document.querySelector('#row-1 .size').textContent"),
                         "%.3g kB" % (stand / 1000))

    def test_the_tree_by_mouse_and_keys(self):
        self.browser.open(self.lamp)
        self.browser.click("#row-1 .twisty")
        self.assertEqual(self.value(NAMES), [
            "Desk lamp", "Stand", "Base", "Rubber foot", "Column", "Boom", "Rocker switch"])
        self.browser.click("#row-1 .twisty")
        self.assertEqual(self.value(NAMES), OPENED_DESK_LAMP)
        self.focus("#tree")
        self.browser.press("Home")
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
        self.browser.press("*")
        self.assertEqual(self.value(NAMES), ALL_OF_DESK_LAMP)
        self.browser.press("*")
        self.assertEqual(self.value(NAMES), ["Desk lamp"])
        self.browser.click("#expand")
        self.assertEqual(self.value(NAMES), ALL_OF_DESK_LAMP)
        self.browser.click("#collapse")
        self.assertEqual(self.value(NAMES), ["Desk lamp"])

    def test_search_by_keys_goes_through_hits_and_opens_the_tree_to_them(self):
        self.browser.open(self.lamp)
        self.browser.press("/")
        self.assertEqual(self.value("document.activeElement.id"), "search")
        self.browser.type("PIVOT p")
        self.assertEqual(self.value(RESULTS), ["Pivot pin"])
        self.assertEqual(self.value(FOUND), "1 part found")
        self.browser.press("Enter")
        self.assertEqual((self.active()["name"], self.active()["level"]), ("Pivot pin", "4"))
        self.assertEqual(self.facts()["File"], "Pivot pin.stp")
        self.assertEqual(self.value(PARENTS), ["Arm ×2", "Head"])
        self.browser.press("Escape")
        self.assertEqual(self.value("document.activeElement.id"), "tree")
        self.browser.press("/")
        self.browser.type("ba")
        self.assertEqual(self.value(RESULTS), ["Base"])
        self.value("document.getElementById('search').select()")
        self.browser.type("arm")
        self.assertEqual(self.value(RESULTS), ["Arm", "Arm beam"])
        for key, name in [("ArrowDown", "Arm"), ("ArrowDown", "Arm beam"), ("Enter", "Arm"),
                          ("ArrowUp", "Arm beam")]:
            self.browser.press(key)
            self.assertEqual(self.value(TITLE), name)
            hit = self.value("""document.getElementById(document.getElementById("search")
              .getAttribute("aria-activedescendant")).querySelector(".name").textContent""")
            self.assertEqual((hit, self.active()["name"]), (name, name))
        self.browser.click("#results li")
        self.assertEqual(self.value(TITLE), "Arm")
        self.value("document.getElementById('search').select()")
        self.browser.type("nothing like it")
        self.assertEqual((self.value(RESULTS), self.value(FOUND)), ([], "0 parts found"))

    def test_a_link_to_a_part_survives_a_reload(self):
        self.browser.open(self.lamp)
        self.browser.click("#expand")
        self.browser.click("#row-8 .name")
        self.assertEqual(self.value("location.hash"), "#part=111")
        self.browser.reload()
        self.assertEqual((self.value(TITLE), self.active()["name"], self.active()["in_sight"]),
                         ("Pivot pin", "Pivot pin", True))
        self.value("location.hash = '#part=292'")
        self.browser.settle()
        self.assertEqual((self.value(TITLE), self.active()["level"]), ("Base", "3"))
        self.value("history.replaceState(null, '', '#part=77777')")
        self.browser.reload()
        self.assertEqual(self.value(TITLE), "Desk lamp")
        # A root that the file does not have is no record.
        self.browser.open(self.report_of("tops", ["a", "b", "lid"], [(0, 2), (1, 2)]))
        self.browser.click("#row-1 .name")
        self.browser.click("#row-0 .name")
        self.assertEqual(self.value("location.hash"), "#part=root")
        self.value("PAGE.tree.activate(2)")
        self.value("location.hash = '#part=root'")
        self.browser.reload()
        self.assertEqual(self.value(TITLE), "(generated root)")

    def test_the_map_is_grouped_by_assembly_and_leads_to_the_part(self):
        self.browser.open(self.lamp)
        self.expect_areas_of_sizes(self.lamp, 5)
        self.assertEqual(self.value("""[...document.querySelectorAll(".frame")].map((frame) =>
          frame.getAttribute("aria-label")).sort()"""), ["Arm", "Boom", "Desk lamp", "Head", "Stand"])
        shade = self.part("Shade")
        before = self.value(AREAS)
        self.browser.click('[data-part="%d"]' % shade)
        self.assertEqual(self.value(AREAS), before)
        self.assertEqual(self.value(TITLE), "Shade")
        self.assertEqual(self.value("document.querySelector('.cell.chosen').dataset.part"),
                         str(shade))
        colour = "getComputedStyle(document.querySelector('.cell.chosen')).backgroundColor"
        by_weight = self.value(colour)
        self.browser.click("[name=map-colour][value=part]")
        self.assertEqual(self.value("document.querySelector('.chosen').dataset.part"), str(shade))
        self.assertEqual(self.value(colour), "rgb(199, 31, 26)")
        self.assertNotEqual(by_weight, self.value(colour))
        # The arrow leads to the next area on its side; the tree opens to that part.
        edge = "document.querySelector('.chosen').getBoundingClientRect().%s"
        right = self.value(edge % "right")
        self.focus("#treemap")
        self.browser.press("ArrowRight")
        self.assertAlmostEqual(self.value(edge % "left"), right, delta=8)
        next_one = self.value(TITLE)
        self.assertNotEqual(next_one, "Shade")
        self.browser.click("#tab-tree")
        self.assertEqual((self.active()["name"], self.active()["in_sight"]), (next_one, True))

    def test_the_bill_of_materials_is_sorted_copied_and_saved(self):
        self.browser.open(self.lamp)
        self.browser.click("#tab-bom")
        self.assertEqual(self.value(LISTED), PARTS_OF_DESK_LAMP)
        line = self.value("""[...document.getElementById("line-4").children].slice(1).map((cell) =>
          cell.textContent)""")
        size = (self.lamp.parent / "Pivot pin.stp").stat().st_size
        self.assertEqual([text.split(" × ")[-1] for text in line], [
            "Pivot pin", "Pivot pin", "5", "%.3g kB" % (size / 1000), "12 mm", "Pivot pin.stp"])
        self.assertGreater(self.ink("#line-4 canvas")[0], 50)
        self.browser.click("[data-key=quantity] button")
        self.browser.click("[data-key=quantity] button")
        self.assertEqual(self.value(LISTED)[:3], ["Pivot pin", "Rubber foot", "Arm beam"])
        self.assertEqual(self.value("""[...document.querySelectorAll("[aria-sort]")].map((cell) =>
          cell.ariaSort)"""), ["none", "none", "descending", "none", "none", "none"])
        # By keys as well.
        self.focus("[data-key=name] button")
        self.browser.press("Enter")
        self.assertEqual(self.value(LISTED), PARTS_OF_DESK_LAMP)
        self.browser.click("[data-key=quantity] button")
        self.browser.click("[data-key=quantity] button")
        # A row selects the part; a link of its own opens its file.
        self.browser.click("#line-1 .cell-name")
        self.assertEqual((self.value(TITLE), self.value("location.hash")),
                         ("Rubber foot", "#part=189"))
        self.assertEqual(self.value("document.querySelector('#line-1 a').href"),
                         (self.lamp.parent / "Rubber foot.stp").as_uri())
        self.focus("#bom")
        self.browser.press("ArrowUp")
        self.assertEqual(self.value(TITLE), "Pivot pin")
        self.assertEqual(self.value("""document.getElementById(document.getElementById("bom")
          .getAttribute("aria-activedescendant")).ariaSelected"""), "true")
        self.value("""(() => {
          navigator.clipboard.writeText = async (text) => { window.copied = text; };
          URL.createObjectURL = (blob) => { window.saved = blob.text(); return "blob:none"; };
          HTMLAnchorElement.prototype.click = function () { window.saved_as = this.download; };
        })()""")
        self.browser.click("#copy")
        copied = [line.split("\t") for line in self.value("window.copied").split("\n")]
        self.assertEqual(copied[0], ["Name", "Id", "Quantity", "Size (bytes)", "Bounding box", "File"])
        self.assertEqual([line[0] for line in copied[1:4]], ["Pivot pin", "Rubber foot", "Arm beam"])
        self.assertEqual((copied[1][2:4], copied[1][5]), (["5", str(size)], "Pivot pin.stp"))
        self.assertEqual(len(copied), 10)
        self.assertEqual(self.value("document.getElementById('bom-status').textContent"),
                         "9 parts copied")
        self.browser.click("#csv")
        self.assertEqual(self.value("window.saved_as"), "desk-lamp-bom.csv")
        saved = self.value("window.saved").lstrip("\ufeff")
        self.assertEqual(saved, "".join(",".join(
            '"%s"' % text if "," in text else text for text in line) + "\r\n" for line in copied))
        self.browser.click("#with-assemblies")
        self.assertEqual(self.value("document.getElementById('bom').ariaRowCount"), "15")
        # The tree has opened to the part; so it does for what a part is used in.
        self.browser.click("#tab-tree")
        self.assertEqual((self.active()["name"], self.active()["in_sight"]), ("Pivot pin", True))
        self.browser.click("#facts li:last-child button")
        self.assertEqual((self.active()["name"], self.value(TITLE)), ("Head", "Head"))

    def test_every_column_sorts_and_is_seen_whole(self):
        self.browser.open(self.lamp)
        self.browser.click("#tab-bom")
        parts = self.value("""PARTS.filter((part) => part.kind === "part").map((part) => [
          part.name, part.id, Number(part.total), part.bytes,
          [0, 1, 2].reduce((volume, i) => volume * (part.box[i + 3] - part.box[i]), 1), part.file])""")
        for column, key in enumerate(["name", "id", "quantity", "size", "box", "file"]):
            if key != "name":  # which it is sorted by already
                self.browser.click("[data-key=%s] button" % key)
            values = {part[0]: part[column] for part in parts}
            ascending = [values[name] for name in self.value(LISTED)]
            self.assertEqual(ascending, sorted(ascending), key)
            self.browser.click("[data-key=%s] button" % key)
            descending = [values[name] for name in self.value(LISTED)]
            self.assertEqual(descending, sorted(descending, reverse=True), key)
        # Wide or narrow, no column is cut off or out of sight.
        cut_off = """[...document.querySelectorAll("#bom .line > span")].filter((cell) =>
          cell.scrollWidth > cell.clientWidth + 1 ||
          cell.getBoundingClientRect().right > document.querySelector("#panel-bom .list")
            .getBoundingClientRect().right).map((cell) => cell.textContent)"""
        for share in ("50%", "75%"):
            self.value("document.documentElement.style.setProperty('--lists', '%s')" % share)
            self.browser.settle()
            self.assertEqual(self.value(cut_off), [], share)

    def test_pictures_turn_stand_out_and_find_parts(self):
        self.browser.open(self.lamp)
        drawn, columns, rows = self.ink("#preview canvas")
        self.assertGreater(drawn, 1000)
        self.assertGreater(max(columns, rows), 0.85)  # It fits and fills.
        for row in range(4):
            self.assertGreater(self.ink("#row-%d canvas" % row)[0], 20)
        # Keys, mouse and wheel.
        self.focus("#preview canvas")
        yaw, pitch, zoom = self.value(CAMERA)[:3]
        self.browser.press("ArrowLeft")
        self.browser.press("ArrowUp")
        self.assertAlmostEqual(self.value(CAMERA)[0], yaw + 10)
        self.assertAlmostEqual(self.value(CAMERA)[1], pitch - 10)
        self.browser.drag("#preview canvas", 40, 20)
        self.assertAlmostEqual(self.value(CAMERA)[0], yaw + 10 - 20)
        self.browser.wheel("#preview canvas", -100)
        self.assertGreater(self.value(CAMERA)[2], zoom * 1.1)
        for fit in (lambda: self.browser.press("0"),
                    lambda: self.browser.double_click("#preview canvas"),
                    lambda: self.browser.click("#fit")):
            self.value("PAGE.preview.camera.zoom_by(3, 20, 10)")
            self.focus("#preview canvas")
            fit()
            self.value("new Promise((done) => setTimeout(done, 400))")
            self.assertEqual(self.value(CAMERA)[2:], [1, 0, 0])
        self.browser.click("[data-view=front]")
        self.assertEqual(self.value(CAMERA)[:2], [0, 0])
        self.browser.touch("#preview canvas", 30, 0)
        self.assertAlmostEqual(self.value(CAMERA)[0], -15)
        # What is chosen in the tree stands out; also what the pointer is on.
        lit = "224 87 11"
        self.assertNotEqual(self.value(STRONGEST), lit)
        self.browser.click("#row-2 .name")
        self.assertEqual(self.value(STRONGEST), lit)
        self.browser.click("#row-0 .name")
        self.browser.hover("#row-1 .name")
        self.assertEqual(self.value(STRONGEST), lit)
        self.browser.hover("#title")
        self.assertNotEqual(self.value(STRONGEST), lit)
        # A line that is pressed finds its part.
        self.browser.click("[data-view=iso]")
        way = self.value("""(() => {
          const {scene, canvas} = PAGE.preview;
          const copy = scene.copies.find((one) => PARTS[one.part].name === "Shade");
          const lines = lines_of(copy.part);
          place_points(lines, composed(PAGE.preview.matrix(1), copy.matrix), 1);
          const box = canvas.getBoundingClientRect();
          return [box.left + SPOTS[0], box.top + SPOTS[1]];
        })()""")
        self.browser.click_at(*way)
        self.assertEqual((self.value(TITLE), self.active()["name"]), ("Shade", "Shade"))
        # Alone, in its own colour.
        self.browser.click("#alone")
        self.assertEqual(self.value("PAGE.preview.scene.copies.length"), 1)
        red, green, blue = (int(part) for part in self.value(STRONGEST).split())
        self.assertGreater(red, 2 * max(green, blue))
        self.assertEqual(self.value("document.querySelector('#alone').ariaPressed"), "true")

    def test_lines_are_where_the_file_has_them(self):
        self.browser.open(self.lamp)
        # Boxes of the parts' lines as they are read back, against those that the library tells.
        for part, (box, read) in enumerate(self.value("""PARTS.map((part, index) => {
              const lines = lines_of(index);
              if (!lines) return [null, null];
              const read = [Infinity, Infinity, Infinity, -Infinity, -Infinity, -Infinity];
              lines.points.forEach((value, at) => {
                const place = lines.frame[4 * (at % 3) + 3] + lines.frame[5 * (at % 3)] * value;
                read[at % 3] = Math.min(read[at % 3], place);
                read[at % 3 + 3] = Math.max(read[at % 3 + 3], place);
              });
              return [part.box, read];
            })""")):
            self.assertEqual(box is None, read is None)
            for a, b in zip(box or [], read or []):
                self.assertAlmostEqual(a, b, 3)
        self.assertEqual(self.value("PARTS.filter((part, index) => lines_of(index)).length"), 9)
        # The longest lines come first, in the colours of the file.
        lengths = self.value("""(() => {
          const {starts, points, frame} = lines_of(%d);
          const sizes = [];
          for (let line = 0; line + 1 < starts.length; ++line) {
            let size = 0;
            for (let at = 3 * starts[line]; at < 3 * (starts[line + 1] - 1); at += 3) {
              size += Math.hypot(...[0, 1, 2].map((i) =>
                frame[5 * i] * (points[at + i] - points[at + 3 + i])));
            }
            sizes.push(size);
          }
          return sizes;
        })()""" % self.part("Base"))
        self.assertGreater(len(lengths), 3)
        for one, next_one in zip(lengths, lengths[1:]):
            self.assertGreater(one, next_one - 0.01)
        self.assertEqual(self.value("PAGE.preview.scene.copies.length"), 17)
        self.assertEqual(self.value("css_colour(PARTS[%d].colour)" % self.part("Shade")), "#c71f1a")

    def test_farther_lines_are_fainter_and_fingers_zoom(self):
        file = DrawnFile()
        file.product("two", [file.polyline((0, y, z), (100, y, z)) for y, z in ((0, 0), (100, 50))])
        source = self.folder / "near-and-far.stp"
        source.write_text(file.text())
        strengths = """(() => {
          const {width, height, data} = PAGE.preview.raster.image;
          const most = (from, to) => {
            let alpha = 0;
            for (let i = 4 * width * from + 3; i < 4 * width * to; i += 4) alpha = Math.max(alpha, data[i]);
            return alpha;
          };
          return [most(0, height >> 1), most(height >> 1, height)];
        })()"""
        for dark in (False, True):
            self.browser.open(self.report("near-and-far-%s" % dark, source), dark=dark)
            self.browser.click("[data-view=front]")
            far, near = self.value(strengths)
            self.assertGreater(far, 40)
            self.assertGreater(near, 2 * far)
        zoom = self.value(CAMERA)[2]
        self.browser.pinch("#preview canvas", 40, 80)
        self.assertAlmostEqual(self.value(CAMERA)[2], 2 * zoom, delta=0.1)

    def test_places_have_the_colours_that_assemblies_give_them(self):
        source = self.folder / "styled.stp"
        source.write_text(styled_places())
        self.browser.open(self.report("styled", source))
        copies = """PAGE.preview.scene.copies.map(({part, matrix, colour}) =>
          [PARTS[part].name, matrix[3], matrix[7], css_colour(colour)])"""
        red, green, blue = "#ff0000", "#00ff00", "#0000ff"
        self.assertEqual(self.value(copies), [
            ["one", 0, 0, red], ["one", 15, 0, red], ["one", 0, 20, green], ["one", 15, 20, blue],
            ["one", 0, 40, green]])
        # What "three" says does not count where "two" is seen by itself.
        self.browser.click("#row-1 .name")
        self.browser.click("#alone")
        self.assertEqual(self.value("""PAGE.preview.scene.copies.map(({matrix, colour}) =>
          [matrix[3], matrix[7], colour])"""), [[0, 0, 0x00FF00], [15, 0, -1]])

    def test_panes_tabs_and_roles(self):
        self.browser.open(self.lamp)
        width = "document.getElementById('lists').offsetWidth"
        height = "document.getElementById('preview').offsetHeight"
        before = [self.value(width), self.value(height)]
        self.focus("#divider")
        for _ in range(3):
            self.browser.press("ArrowRight")
        self.focus("#divider-details")
        for _ in range(3):
            self.browser.press("ArrowUp")
        self.assertGreater(self.value(width), before[0] + 40)
        self.assertLess(self.value(height), before[1] - 20)
        self.assertEqual(self.value("document.getElementById('divider').ariaValueNow"), "56")
        self.browser.drag("#divider", -200, 0)
        self.assertLess(self.value(width), before[0] - 50)
        shown = self.value(height)
        self.browser.drag("#divider-details", 0, 60)
        self.assertAlmostEqual(self.value(height), shown + 60, delta=4)
        # The picture takes the room that it gets.
        self.assertEqual(self.value("[PAGE.preview.raster.width, PAGE.preview.raster.height]"), self.value(
            "[PAGE.preview.canvas.clientWidth, PAGE.preview.canvas.clientHeight]"))
        self.focus("#tab-tree")
        for key, tab, panel in [("ArrowRight", "tab-bom", "panel-bom"),
                                ("ArrowRight", "tab-map", "panel-map"),
                                ("ArrowRight", "tab-tree", "panel-tree"),
                                ("End", "tab-map", "panel-map")]:
            self.browser.press(key)
            self.assertEqual(self.value("document.activeElement.id"), tab)
            self.assertEqual(self.value("""[...document.querySelectorAll("[role=tabpanel]")]
              .filter((one) => !one.hidden).map((one) => one.id)"""), [panel])
        # What a screen reader is told.
        roles = {(node["role"]["value"], node.get("name", {}).get("value", ""))
                 for node in self.browser.send("Accessibility.getFullAXTree")["nodes"]
                 if not node["ignored"]}
        for role in [("tablist", "What to show"), ("tab", "Map"), ("tabpanel", "Map"),
                     ("combobox", "Search parts by name, id or file"), ("separator", "Width of the lists"),
                     ("listbox", "Each part's file as an area of its size"), ("group", "Boom"),
                     ("application", "Drawing of Desk lamp; arrow keys turn it, + and - zoom, 0 fits it"),
                     ("toolbar", "View"), ("heading", "Desk lamp")]:
            self.assertIn(role, roles)
        self.browser.click("#tab-bom")
        roles = {(node["role"]["value"], node.get("name", {}).get("value", ""))
                 for node in self.browser.send("Accessibility.getFullAXTree")["nodes"]
                 if not node["ignored"]}
        for role in [("grid", "Bill of materials"), ("columnheader", "Quantity"),
                     ("gridcell", "Arm beam")]:
            self.assertIn(role, roles)
        self.browser.click("#tab-tree")
        tree = [node for node in self.browser.send("Accessibility.getFullAXTree")["nodes"]
                if node.get("role", {}).get("value") in ("tree", "treeitem")]
        self.assertEqual(len(tree), 1 + len(OPENED_DESK_LAMP))

    def test_print_gives_tree_and_bill_of_materials_whole(self):
        self.browser.open(self.lamp)
        self.browser.send("Emulation.setEmulatedMedia", media="print")
        self.browser.settle()
        self.assertEqual(self.value("""[...document.querySelectorAll(".printed-tree div span:first-child")]
          .map((name) => name.textContent)"""), [
            "Desk lamp", "Stand", "Base", "Rubber foot ×4", "Column", "Boom", "Arm ×2", "Arm beam",
            "Pivot pin ×2", "Head", "Socket", "Pivot pin", "Shade", "Bulb", "Rocker switch"])
        self.assertEqual(self.value("""[...document.querySelectorAll("#paper tbody tr")].map((row) =>
          row.children[1].textContent)"""), PARTS_OF_DESK_LAMP)
        self.assertEqual(self.value("getComputedStyle(document.getElementById('panes')).display"), "none")
        self.assertGreater(self.ink("#paper canvas")[0], 50)
        self.assertGreater(len(self.browser.send("Page.printToPDF")["data"]), 5000)
        self.browser.send("Emulation.setEmulatedMedia", media="")
        self.browser.settle()
        self.assertEqual(self.value("document.getElementById('paper').childElementCount"), 0)

    def test_a_phone_has_the_details_below_the_chosen_row(self):
        for page in (self.lamp, self.report_of("wide", ["W" * 300, "w" * 300], [(0, 1)])):
            self.browser.open(page, 360, 740)
            self.assertTrue(self.value(FITS))
            self.browser.press("/")
            self.browser.type("w" if "wide" in str(page) else "pin")
            self.assertTrue(self.value(FITS))
        self.browser.open(self.lamp, 360, 740)
        below = """((selector) => {
          const row = document.querySelector(selector).getBoundingClientRect();
          const details = document.getElementById("details").getBoundingClientRect();
          return Math.abs(details.top - row.bottom) < 2 && details.height > 200;
        })"""
        self.focus("#tree")
        self.browser.press("ArrowDown")
        self.assertTrue(self.value(below + "('#row-1')"))
        after = "document.querySelector('#row-2').getBoundingClientRect().top"
        self.assertGreaterEqual(
            self.value(after), self.value("document.getElementById('details')"
                                          ".getBoundingClientRect().bottom") - 2)
        self.browser.click("#tab-bom")
        self.browser.click("#line-2 .cell-name")
        self.assertEqual((self.value(TITLE), self.value(FITS)), ("Bulb", True))
        self.assertTrue(self.value(below + "('#line-2')"))
        self.browser.click("#tab-map")
        self.assertTrue(self.value("document.getElementById('details').parentElement.id === 'panes'"))
        self.assertTrue(self.value(FITS))

    def test_follows_the_colour_scheme_and_reduced_motion(self):
        colours, inks = [], []
        for dark in (False, True):
            self.browser.open(self.lamp, dark=dark)
            colours.append(self.value("getComputedStyle(document.body).backgroundColor"))
            self.ink("#preview canvas")
            inks.append(self.value("brightness_of(channels_of(inks().plain))"))
        self.assertEqual(colours, ["rgb(244, 245, 247)", "rgb(20, 23, 26)"])
        self.assertLess(inks[0], 0.5)
        self.assertGreater(inks[1], 0.6)
        self.browser.send("Emulation.setEmulatedMedia", features=[
            {"name": "prefers-reduced-motion", "value": "reduce"}])
        self.value("PAGE.preview.camera.zoom_by(3)")
        self.value("PAGE.preview.fit()")
        self.assertEqual(self.value(CAMERA)[2:], [1, 0, 0])
        self.picture("lamp", self.lamp)

    def test_all_texts_can_be_read(self):
        # 4.5 is what WCAG 2 asks for in level AA.
        source = self.folder / "readable.stp"
        source.write_text(exchange_file(["box", "l\\id"], [(0, 1)]))
        for page in (self.lamp, self.report("readable", source)):
            for dark in (False, True):
                self.browser.open(page, dark=dark)
                self.browser.click("#expand")
                for tab in ("tree", "bom", "map", "findings"):
                    if self.value("document.getElementById('tab-%s').hidden" % tab):
                        continue
                    self.browser.click("#tab-" + tab)
                    for colour in ("weight", "part") if tab == "map" else ("",):
                        if colour and self.value("!document.getElementById('map-colours').hidden"):
                            self.browser.click("[name=map-colour][value=%s]" % colour)
                        contrast, text, count = self.value(CONTRAST)
                        self.assertGreaterEqual(contrast, 4.5, (text, tab, dark))
                        self.assertGreater(count, 15)

    def test_overlong_names_are_shortened_and_told_whole(self):
        name = "Very_long_name_without_a_blank_" * 8
        page = self.report_of("overlong", ["top", name, name + "2"], [(0, 1), (1, 2)])
        for width in (1280, 700):
            self.browser.open(page, width)
            self.assertTrue(self.value(FITS))
            self.assertEqual(self.value("document.querySelector('#row-1 .name').title"), name)
            self.browser.press("/")
            self.browser.type("very")
            self.assertEqual(self.value("document.querySelector('#results li').title"), name)
            for tab in ("bom", "map", "tree"):
                self.browser.click("#tab-" + tab)
                self.assertTrue(self.value(FITS), tab)
        # There is nothing to draw: no room is kept for pictures, and the page says why.
        self.assertEqual(self.value("document.querySelectorAll('canvas.thumbnail').length"), 0)
        self.assertIn("nothing in it can be drawn", self.value(
            "document.getElementById('summary').textContent"))

    def test_without_room_for_pictures(self):
        source = self.folder / "crowded.stp"
        source.write_text(drawn_parts(90))
        page = self.report("crowded", source, "--memory-limit", "700K")
        self.browser.open(page)
        self.assertEqual(self.value("PARTS.length"), 101)
        self.assertIn("need more memory than the limit", self.value(
            "document.getElementById('summary').textContent"))
        self.assertFalse(self.value("HAS_PICTURES"))

    def test_without_pictures(self):
        page = self.report("plain", EXAMPLE, "--no-pictures")
        self.browser.open(page)
        self.assertEqual(self.value("[...document.querySelectorAll('canvas')].filter((one) =>"
                                    "one.offsetParent !== null).length"), 0)
        self.browser.click("#tab-bom")
        self.assertEqual(self.value("""[...document.querySelectorAll("[role=columnheader]")].map(
          (cell) => cell.textContent)"""), ["Name", "Id", "Quantity", "Size", "File"])
        self.assertNotIn('"lines"', page.read_text())

    def test_columns_have_room_of_their_own_without_pictures(self):
        long = "A very long name of a bracket with many holes, supplier drawing 4711"
        page = self.report_of("long", ["box", long, "lid"], [(0, 1), (0, 2), (0, 2)])
        overlaps = """[...document.querySelectorAll("#bom .line")].filter((line) => {
          const boxes = [...line.children].filter((cell) => cell.offsetParent !== null)
            .map((cell) => cell.getBoundingClientRect());
          return boxes.some((a, i) => boxes.slice(i + 1).some((b) =>
            a.left < b.right - 1 && b.left < a.right - 1 && a.top < b.bottom - 1 && b.top < a.bottom - 1)
            || a.bottom > line.getBoundingClientRect().bottom + 1);
        }).length"""
        for width in (1280, 900, 390):
            self.browser.open(page, width, 844)
            self.browser.click("#tab-bom")
            self.assertEqual(self.value("document.querySelectorAll('#bom .line').length"), 3)
            self.assertEqual(self.value(overlaps), 0, width)
            self.assertTrue(self.value(FITS), width)

    def test_lengths_have_four_digits(self):
        self.browser.open(self.lamp)
        for length, largest, text in [
                (0.0127, 0.0127, "0.0127"), (0.00912345, 0.0127, "0.009123"), (50.34, 60, "50.34"),
                (999.96, 1000, "1,000"), (12345.6, 12345.6, "12,346"), (1e-17, 3, "0"), (0, 0, "0"),
                (1e-7, 1e-7, "0.0000001")]:
            self.assertEqual(self.value("length_text(%r, %r)" % (length, largest)), text)

    def test_shapes_in_other_files_are_mentioned(self):
        split = self.folder / "split"
        subprocess.run([VELKSTEP, "split", "-q", EXAMPLE, "-o", split], check=True)
        self.browser.open(self.report("referring", split / "Desk lamp.stp"))
        self.assertIn("; the shapes of 3 parts are in other files, which report --follow reads, too",
                      self.value("document.getElementById('summary').textContent"))
        self.focus("#tree")
        self.browser.press("ArrowDown")
        self.browser.press("ArrowDown")
        self.assertIn("Shape inBoom.stp", self.value("document.getElementById('facts').textContent"))
        self.browser.open(self.report("followed", split / "Desk lamp.stp", "--follow"))
        self.assertNotIn("other files",
                         self.value("document.getElementById('summary').textContent"))
        self.assertTrue(self.value("HAS_PICTURES"))

    def test_long_names_are_cut_with_dots_and_whole_on_a_phone(self):
        name = " ".join(["A very long name of a bracket with many holes"] * 5)
        page = self.report_of("title", [name, "lid"], [(0, 1)])
        cut = """(() => { const title = document.getElementById("part-title");
          return title.scrollHeight > title.clientHeight + 1; })()"""
        for width, is_cut in ((1280, True), (390, False)):
            self.browser.open(page, width, 844)
            self.assertEqual(self.value(cut), is_cut)
            self.assertEqual(self.value("document.getElementById('part-title').title"), name)

    def test_findings_are_on_the_page(self):
        source = self.folder / "odd.stp"
        source.write_text(exchange_file(["box", "lid"], [(0, 1)])
                          .replace("'lid','lid'", "'lid','l\\id'"))
        self.browser.open(self.report("odd", source))
        self.assertEqual(self.value("document.getElementById('tab-findings').textContent"),
                         "1 finding")
        self.browser.click("#tab-findings")
        severity, sentence, line = self.value(
            "[...document.querySelectorAll('#findings li > *')].map((one) => one.textContent)")
        self.assertEqual((severity, line), ("warning", "line 11, column 1"))
        self.assertEqual(self.value("""document.querySelector("#about dd").textContent"""), "me, us")
        self.assertIn("\\", sentence)
        self.assertTrue(self.value("document.getElementById('preview').hidden"))

    def test_names_are_text(self):
        hostile = "</script><script>alert(1)</script><img src=x onerror=alert(2)>"
        page = self.report_of("hostile", [hostile, "<b>lid</b>", "<!--"], [(0, 1), (0, 2)])
        self.browser.open(page)
        self.assertEqual(self.value(NAMES), [hostile, "<b>lid</b>", "<!--"])
        for tab in ("bom", "map", "tree"):
            self.browser.click("#tab-" + tab)
        self.assertEqual(self.value("document.querySelectorAll('img, #lists b, script').length"), 2)

    def test_search_takes_letters_without_their_marks(self):
        page = self.report_of("marks", ["Haus", "Türgriff", "支架"], [(0, 1), (0, 2)])
        self.browser.open(page)
        for text, names in [("turgriff", ["Türgriff"]), ("支", ["支架"]), ("x", [])]:
            self.browser.press("/")
            self.value("document.getElementById('search').select()")
            self.browser.type(text)
            self.assertEqual(self.value(RESULTS), names)
            self.browser.press("Escape")

    def test_a_ladder_opens_level_by_level(self):
        levels = 60
        uses = [(i, i + 1) for i in range(levels) for _ in range(2)]
        page = self.report_of("ladder", ["level %d" % i for i in range(levels + 1)], uses)
        self.browser.open(page)
        self.assertEqual(self.value(NAMES), ["level 0", "level 1"])
        self.browser.press("/")
        self.browser.type("level %d" % levels)
        self.browser.press("Enter")
        self.assertEqual(self.active()["level"], str(levels + 1))
        self.assertEqual(self.facts()["Uses in the whole"], str(2**levels))

    def test_a_cycle_ends_where_it_closes(self):
        page = self.report_of("cycle", ["box", "lid"], [(0, 1), (1, 0)])
        self.browser.open(page)
        self.focus("#tree")
        for key in ["ArrowDown", "ArrowRight", "ArrowDown", "ArrowRight"]:
            self.browser.press(key)
        self.assertEqual(self.value(NAMES), ["box", "lid", "box"])
        self.assertEqual((self.active()["name"], self.active()["expanded"]), ("box", None))

    def test_ten_thousand_parts(self):
        count = 10000
        page = self.report_of("many", ["all"] + ["part %d" % i for i in range(1, count)],
                              [(0, i) for i in range(1, count)])
        self.browser.open(page)
        self.expect_areas_of_sizes(page, 1)
        self.browser.click("#tab-tree")
        self.assertLess(self.value("document.querySelectorAll('.row').length"), 100)
        self.focus("#tree")
        self.browser.press("End")
        active = self.active()
        self.assertEqual((active["name"], active["position"], active["of"], active["in_sight"]),
                         ("part 9999", "9999", "9999", True))
        self.browser.press("/")
        self.browser.type("part 77")
        with_77 = [i for i in range(1, count)
                   if any("77" in str(number) for number in (i, 3 * i + 3))]
        found = self.value(RESULTS)
        self.assertEqual((len(found), found[:3]), (100, ["part 77", "part 770", "part 771"]))
        self.assertEqual(self.value(FOUND),
                         "%d parts found, the first 100 are shown" % len(with_77))

    def test_a_page_of_2700_parts_is_small_and_opens_at_once(self):
        count = 2700
        source = self.folder / "drawn.stp"
        source.write_text(drawn_parts(count))
        page = self.report("drawn", source)
        size = page.stat().st_size
        self.assertLess(size, 15e6)
        self.browser.processor_seconds()
        self.browser.open(page)
        opened = self.value("""(([times]) => times.loadEventEnd - times.startTime)(
          performance.getEntriesByType("navigation"))""")
        worked = self.browser.processor_seconds()
        self.assertEqual(self.value("PARTS.length"), count + 1 + count // 9)
        self.assertEqual(self.value("PARTS.filter((part) => part.lines).length"), count)
        self.assertEqual(self.value("PAGE.preview.scene.copies.length"), count)
        self.assertGreater(self.ink("#preview canvas")[0], 1000)
        _, per_second, fastest = self.value(TURN)
        print("The page of %d parts: %.1f MB, open after %.2f s, of which its thread worked %.2f s;"
              " it turns at %.0f frames a second, the fastest took %.1f ms" %
              (count, size / 1e6, opened / 1000, worked, per_second, fastest))
        # A second where the machine is free; twice that for one that is slow.
        self.assertLess(worked, 2)
        self.picture("drawn", page)

    def test_a_hundred_copies_turn(self):
        source = self.folder / "copies.stp"
        if SAMPLE.is_file():
            source.write_text(copies_of(SAMPLE.read_text(), "as1", 100, 300))
        else:
            source.write_text(copies_of(pathlib.Path(EXAMPLE).read_text(), "Desk lamp", 100, 600))
        page = self.report("copies", source)
        # A copy costs a matrix and a usage.
        self.assertLess(page.stat().st_size, self.lamp.stat().st_size + 50000)
        self.browser.open(page)
        self.assertGreaterEqual(self.value("PAGE.preview.scene.copies.length"), 1700)
        self.browser.processor_seconds()
        self.value(TURN)  # so that the page knows how much it can draw
        before = self.browser.processor_seconds()
        frames, per_second, fastest = self.value(TURN)
        worked = (self.browser.processor_seconds() - before) / frames
        print("100 copies turn at %.0f frames a second; the fastest took %.1f ms, the page's thread"
              " worked %.1f ms for one" % (per_second, fastest, 1000 * worked))
        self.assertLess(worked, 1 / 30)  # 30 frames a second, where the machine has time
        self.picture("copies", page)

    def picture(self, name, page):
        """For the eye: the page in three forms."""
        if SCREENSHOTS is None:
            return
        for form, setting in [("light", {}), ("dark", {"dark": True}),
                              ("phone", {"width": 360, "height": 1500})]:
            self.browser.open(page, **setting)
            self.browser.click("#row-2 .name" if name == "lamp" else "#row-1 .name")
            self.browser.screenshot(SCREENSHOTS / ("%s-%s.png" % (name, form)))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2)
