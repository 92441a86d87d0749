// The parts of the split, as the page's data has them, and how they are put into words.
"use strict";

const REPORT = JSON.parse(document.getElementById("data").textContent);
const PARTS = REPORT.parts;

const title_of = (part) =>
  part.record === null ? "(generated root)" : part.name || part.id || "(no name)";

const number_text = (number) => number.toLocaleString("en");

const counted = (number, one, many) => `${number_text(number)} ${number === 1 ? one : many}`;

// A size in bytes, rounded to three digits.
function size_text(bytes) {
  let value = bytes;
  for (const unit of ["B", "kB", "MB", "GB"]) {
    if (value < 999.5 || unit === "GB") {
      return `${Number(value.toPrecision(3)).toLocaleString("en")} ${unit}`;
    }
    value /= 1000;
  }
}

// Where a part's file is, seen from this page.
const link_to = (file) => "./" + encodeURIComponent(file);

// A new element with this class and text. Texts of the data never become markup.
function element(tag, class_name = "", text = "") {
  const made = document.createElement(tag);
  if (class_name) made.className = class_name;
  if (text !== "") made.textContent = text;
  return made;
}

// For each part the use that leads to it on a shortest way from a root: [parent, position in the
// parent's components]; null for roots.
function ways_from_roots() {
  const ways = new Array(PARTS.length).fill(undefined);
  for (const root of REPORT.roots) ways[root] = null;
  const waiting = [...REPORT.roots];
  for (let i = 0; i < waiting.length; ++i) {
    PARTS[waiting[i]].components.forEach((use, position) => {
      if (use.closes_cycle || ways[use.part] !== undefined) return;
      ways[use.part] = [waiting[i], position];
      waiting.push(use.part);
    });
  }
  return ways;
}
