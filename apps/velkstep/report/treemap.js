// The treemap: every part's file as an area of its size.

// Beyond these, the smallest files share one area.
const MOST_CELLS = 10000;

// How far from a square the most stretched of some areas would be, laid out in one strip.
function stretch(largest, smallest, sum, side) {
  return Math.max((side * side * largest) / (sum * sum), (sum * sum) / (side * side * smallest));
}

// Rectangles {left, top, width, height} that fill a width and a height, their areas in proportion
// to `sizes`, which descend and are above zero. Strips along the shorter side keep them near
// squares.
function rectangles_for(sizes, width, height) {
  const rectangles = [];
  let left = 0, top = 0;
  let rest = sizes.reduce((sum, size) => sum + size, 0);
  for (let first = 0; first < sizes.length; ) {
    const free_width = width - left, free_height = height - top;
    const side = Math.min(free_width, free_height);
    const scale = (free_width * free_height) / rest;
    let sum = sizes[first], last = first + 1;
    let worst = stretch(sum * scale, sum * scale, sum * scale, side);
    for (; last < sizes.length; ++last) {
      const more = sum + sizes[last];
      const then = stretch(sizes[first] * scale, sizes[last] * scale, more * scale, side);
      if (then > worst) break;
      worst = then;
      sum = more;
    }
    const across = last === sizes.length ? Math.max(free_width, free_height) : (sum * scale) / side;
    let along = 0;
    for (; first < last; ++first) {
      const length = (sizes[first] / sum) * side;
      rectangles.push(free_width >= free_height
        ? {left, top: top + along, width: across, height: length}
        : {left: left + along, top, width: length, height: across});
      along += length;
    }
    if (free_width >= free_height) left += across;
    else top += across;
    rest -= sum;
  }
  return rectangles;
}

class Treemap {
  // `choose(part)` is called with the index of a part when its area is pressed.
  constructor(box, choose) {
    this.box = box;
    const largest_first = PARTS.map((part, index) => ({index, bytes: part.bytes}))
      .filter((area) => area.bytes > 0)
      .sort((a, b) => b.bytes - a.bytes || a.index - b.index);
    this.areas = largest_first.slice(0, MOST_CELLS);
    const others = largest_first.slice(MOST_CELLS);
    if (others.length > 0) {
      const bytes = others.reduce((sum, area) => sum + area.bytes, 0);
      this.areas.push({index: null, count: others.length, bytes});
      this.areas.sort((a, b) => b.bytes - a.bytes);
    }
    this.chosen = null;
    box.addEventListener("click", (event) => {
      const cell = event.target.closest("[data-part]");
      if (cell) choose(Number(cell.dataset.part));
    });
    new ResizeObserver(() => this.draw()).observe(box);
  }

  mark(part) {
    this.chosen = part;
    this.box.querySelector(".chosen")?.classList.remove("chosen");
    this.box.querySelector(`[data-part="${part}"]`)?.classList.add("chosen");
  }

  draw() {
    const {clientWidth: width, clientHeight: height} = this.box;
    if (width === 0 || height === 0 || (width === this.width && height === this.height)) return;
    this.width = width;
    this.height = height;
    const places = rectangles_for(this.areas.map((area) => area.bytes), width, height);
    this.box.replaceChildren(...this.areas.map((area, i) => this.cell(area, places[i])));
    if (this.chosen !== null) this.mark(this.chosen);
  }

  cell(area, place) {
    const part = PARTS[area.index];
    const title = part ? title_of(part) : `${number_text(area.count)} smaller parts`;
    const size = size_text(area.bytes);
    const made = element("div", `cell ${part ? part.kind.replaceAll(" ", "-") : "other"}`);
    if (part) made.dataset.part = area.index;
    made.title = `${title}, ${size}`;
    for (const [side, length] of Object.entries(place)) made.style[side] = `${length}px`;
    if (place.width < 8 || place.height < 8) made.classList.add("small");
    if (place.width >= 36 && place.height >= 20) made.append(element("span", "", title));
    if (place.width >= 52 && place.height >= 40) made.append(element("span", "", size));
    return made;
  }
}

function show_legend() {
  const legend = document.getElementById("legend");
  const kinds = new Set(PARTS.filter((part) => part.bytes > 0).map((part) => part.kind));
  for (const kind of kinds) {
    const entry = element("span");
    entry.append(element("i", kind.replaceAll(" ", "-")), kind);
    legend.append(entry);
  }
}
