# Takes a picture of a report page: report_screenshot.py CHROMIUM PAGE PART PNG
# Beside tests/report/browser.py, which drives the browser.
import pathlib
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).parent.parent / "tests" / "report"))
from browser import Browser

chromium, page, part, png = sys.argv[1:]
browser = Browser(chromium)
try:
    browser.open(pathlib.Path(page), 1120, 640)
    browser.value("""(() => {
      PAGE.tree.expand_all();
      PAGE.tree.reveal(way_to(PARTS.findIndex((part) => part.name === %r)));
    })()""" % part)
    browser.settle()
    time.sleep(0.5)  # until all thumbnails are drawn
    browser.screenshot(pathlib.Path(png))
finally:
    browser.close()
