#!/bin/sh
# Makes docs/report.png, the picture of a report page in the readme, from the example:
# tools/make-screenshot.sh [VELKSTEP]. Takes a built command line, chromium and python3.
set -eu
cd "$(dirname "$0")/.."

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"${1:-build/bin/velkstep}" report --quiet examples/desk-lamp.step "$work/lamp"
python3 -B tools/report_screenshot.py "$(command -v chromium)" "$work/lamp/report.html" Head \
  docs/report.png
# Flat colours: a palette makes the picture a third as large.
if command -v pngquant >/dev/null; then pngquant --force --ext .png docs/report.png; fi
