// The parts of the split, as the page's data has them, and how they are put into words.
"use strict";

const REPORT = JSON.parse(document.getElementById("data").textContent);
const PARTS = REPORT.parts;

const title_of = (part) =>
  part.record === null ? "(generated root)" : part.name || part.id || "(no name)";

const number_text = (number) => number.toLocaleString("en");

const counted = (number, one, many) => `${number_text(number)} ${number === 1 ? one : many}`;

const is_assembly = (part) => part.components.length > 0;

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

const UNIT_SIGNS = {
  micrometre: "µm", millimetre: "mm", centimetre: "cm", decimetre: "dm", metre: "m",
  kilometre: "km", inch: "in", foot: "ft", mil: "mil", yard: "yd",
};

const unit_text = (unit) => UNIT_SIGNS[unit.toLowerCase()] ?? unit;

// A length to four digits, or whole; `largest` is the largest beside it, next to which it may be
// nothing.
function length_text(length, largest) {
  if (length < 1e-9 * largest) return "0";
  const digits = length < 1000 ? {maximumSignificantDigits: 4} : {maximumFractionDigits: 0};
  return length.toLocaleString("en", digits);
}

// The sides of a part's bounding box with the unit, or nothing.
function box_text(part) {
  if (!part.box) return "";
  const sides = [0, 1, 2].map((i) => part.box[i + 3] - part.box[i]);
  const [a, b, c] = sides.map((side) => length_text(side, Math.max(...sides)));
  return `${a} × ${b} × ${c}${part.unit ? ` ${unit_text(part.unit)}` : ""}`;
}

// Where a part's file is, seen from this page.
const link_to = (file) => "./" + encodeURIComponent(file);

// A link that opens a part's file.
function file_link(part) {
  const link = element("a", "file", part.file);
  link.href = link_to(part.file);
  return link;
}

// A new element with this class and text. Texts of the data never become markup.
function element(tag, class_name = "", text = "") {
  const made = document.createElement(tag);
  if (class_name) made.className = class_name;
  if (text !== "") made.textContent = text;
  return made;
}

// A button that calls `action`.
function button(text, action, title = "") {
  const made = element("button", "", text);
  made.type = "button";
  if (title) made.title = title;
  made.addEventListener("click", action);
  return made;
}

// For each part the use that leads to it on a shortest way from a root: the index of the part that
// uses it; null for roots.
function parents_on_shortest_ways() {
  const parents = new Array(PARTS.length).fill(undefined);
  for (const root of REPORT.roots) parents[root] = null;
  const waiting = [...REPORT.roots];
  for (let i = 0; i < waiting.length; ++i) {
    for (const use of PARTS[waiting[i]].components) {
      if (use.closes_cycle || parents[use.part] !== undefined) continue;
      parents[use.part] = waiting[i];
      waiting.push(use.part);
    }
  }
  return parents;
}

const PARENTS = parents_on_shortest_ways();

// The parts on a shortest way from a root to this one, both included.
function way_to(part) {
  const way = [part];
  while (PARENTS[way[0]] != null) way.unshift(PARENTS[way[0]]);
  return way;
}

// What stands for a part in the page's address, behind "#part=".
const address_of = (part) => PARTS[part].record ?? "root";

// The index of the part that the page's address asks for; -1 where there is none.
function part_in_address() {
  const asked = new URLSearchParams(location.hash.slice(1)).get("part");
  return asked === null ? -1 : PARTS.findIndex((part, index) => address_of(index) === asked);
}
