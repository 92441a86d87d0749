// The map: every part's file as an area of its size, those of an assembly side by side in a frame.

const LEAST_AREA = 6;        // square pixels; what is smaller shares one area with the like
const LEAST_FRAME = 16;      // pixels; assemblies with a shorter side are one area
const FRAME_TITLE = 18;
const MOST_FRAMES = 40;      // within each other
const NO_COLOUR_OF_PART = [138, 146, 154];

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

// What the map shows: {part, bytes, below}, each part where the shortest way from a root leads to it.
// `bytes` is what all of it weighs; without `below` it is one file.
function map_of_parts() {
  const nodes = PARTS.map((part, index) => ({part: index, own: part.bytes ?? 0, bytes: part.bytes ?? 0,
                                             below: []}));
  const order = [];
  const waiting = [...REPORT.roots];
  PARTS.forEach((part, index) => { if (PARENTS[index] != null) nodes[PARENTS[index]].below.push(nodes[index]); });
  while (waiting.length > 0) {
    const node = nodes[waiting.pop()];
    order.push(node);
    for (const below of node.below) waiting.push(below.part);
  }
  for (const node of order.reverse()) {
    node.bytes += node.below.reduce((sum, below) => sum + below.bytes, 0);
    if (node.below.length === 0) continue;
    node.below.push({part: node.part, own: node.own, bytes: node.own, below: [], is_own: true});
    node.below = node.below.filter((below) => below.bytes > 0)
      .sort((a, b) => b.bytes - a.bytes || a.part - b.part);
  }
  return REPORT.roots.map((root) => nodes[root]);
}

class Treemap {
  // `choose(part)` is called with the index of a part when its area is pressed or gone to.
  constructor(box, choose) {
    this.box = box;
    this.choose = choose;
    this.tops = map_of_parts();
    this.chosen = null;
    this.by_colour = false;
    const sizes = PARTS.map((part) => part.bytes ?? 0).filter((bytes) => bytes > 0).map(Math.log);
    this.least = sizes.reduce((a, b) => Math.min(a, b), Infinity);
    this.most = sizes.reduce((a, b) => Math.max(a, b), -Infinity);
    box.addEventListener("click", (event) => {
      const cell = event.target.closest("[data-part]");
      if (cell) choose(Number(cell.dataset.part));
    });
    box.addEventListener("keydown", (event) => this.press(event));
    for (const chosen of document.querySelectorAll("[name=map-colour]")) {
      chosen.addEventListener("change", () => {
        this.by_colour = chosen.value === "part";
        this.draw(true);
      });
    }
    new ResizeObserver(() => this.draw()).observe(box);
    DARK.addEventListener("change", () => this.draw(true));
  }

  mark(part) {
    this.chosen = part;
    const before = this.box.querySelector(".chosen");
    before?.classList.remove("chosen");
    before?.setAttribute("aria-selected", false);
    const cell = this.box.querySelector(`[data-part="${part}"]`);
    cell?.classList.add("chosen");
    cell?.setAttribute("aria-selected", true);
    if (cell) this.box.setAttribute("aria-activedescendant", cell.id);
    else this.box.removeAttribute("aria-activedescendant");
  }

  draw(anew = false) {
    const {clientWidth: width, clientHeight: height} = this.box;
    if (width === 0 || height === 0) return;
    if (!anew && width === this.width && height === this.height) return;
    this.width = width;
    this.height = height;
    this.ramp = [style_colour("--ramp-low"), style_colour("--ramp-high")];
    this.made = 0;
    this.box.replaceChildren();
    this.fill(this.box, this.tops.filter((top) => top.bytes > 0), {left: 0, top: 0, width, height}, 0);
    if (this.chosen !== null) this.mark(this.chosen);
  }

  // Fills a place in an element with these nodes.
  fill(into, nodes, place, depth) {
    const sum = nodes.reduce((bytes, node) => bytes + node.bytes, 0);
    const scale = place.width * place.height / sum;
    const large = nodes.filter((node) => node.bytes * scale >= LEAST_AREA);
    const small = nodes.filter((node) => node.bytes * scale < LEAST_AREA);
    if (small.length > 0) {
      const bytes = small.reduce((all, node) => all + node.bytes, 0);
      large.push({part: null, count: small.length, bytes, below: []});
      large.sort((a, b) => b.bytes - a.bytes);
    }
    const places = rectangles_for(large.map((node) => node.bytes), place.width, place.height);
    large.forEach((node, i) => {
      const at = {...places[i], left: places[i].left + place.left, top: places[i].top + place.top};
      const is_frame = node.below.length > 1 && depth < MOST_FRAMES &&
        Math.min(at.width, at.height) >= LEAST_FRAME;
      into.append(is_frame ? this.frame(node, at, depth) : this.cell(node, at));
    });
  }

  // An assembly: its name on top, and in it what it consists of.
  frame(node, place, depth) {
    const made = this.area(node, place, "frame");
    made.setAttribute("role", "group");
    made.setAttribute("aria-label", title_of(PARTS[node.part]));
    const has_title = place.width >= 44 && place.height >= 3 * FRAME_TITLE;
    if (has_title) {
      const title = made.appendChild(element("span", "title", title_of(PARTS[node.part])));
      if (place.width < 90) made.classList.add("narrow");
      else title.append(element("i", "", size_text(node.bytes)));
    }
    const edge = Math.min(place.width, place.height) >= 40 ? 3 : 1;
    const top = has_title ? FRAME_TITLE : edge;
    this.fill(made, node.below, {left: edge, top, width: place.width - 2 * edge,
                                 height: place.height - top - edge}, depth + 1);
    return made;
  }

  area(node, place, class_name) {
    const made = element("div", class_name);
    made.id = `area-${++this.made}`;
    if (node.part !== null) made.dataset.part = node.part;
    const title = node.part === null ? `${number_text(node.count)} smaller parts`
                                     : title_of(PARTS[node.part]);
    made.title = `${title}, ${size_text(node.bytes)}`;
    for (const [side, length] of Object.entries(place)) made.style[side] = `${length}px`;
    return made;
  }

  cell(node, place) {
    const made = this.area(node, place, "cell");
    made.setAttribute("role", "option");
    made.setAttribute("aria-selected", false);
    made.setAttribute("aria-label", made.title);
    const channels = this.colour_of(node);
    made.style.background = `rgb(${channels.join(" ")})`;
    made.style.color = text_colour_on(channels);
    if (place.width < 8 || place.height < 8) made.classList.add("small");
    const title = node.is_own ? "own file" : made.title.slice(0, made.title.lastIndexOf(", "));
    if (place.width >= 36 && place.height >= 20) made.append(element("span", "", title));
    if (place.width >= 52 && place.height >= 40) {
      made.append(element("span", "", size_text(node.bytes)));
    }
    return made;
  }

  colour_of(node) {
    if (this.by_colour) {
      const colour = node.part === null ? undefined : PARTS[node.part].colour;
      return colour === undefined ? NO_COLOUR_OF_PART : channels_of(colour);
    }
    const range = Math.max(1e-9, this.most - this.least);
    const share = clamped((Math.log(node.bytes) - this.least) / range, 0, 1);
    const [low, high] = this.ramp;
    return low.map((channel, i) => Math.round(channel + (high[i] - channel) * share));
  }

  // An arrow leads to the next area in its direction.
  press(event) {
    const towards = {ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1],
                     ArrowDown: [0, 1]}[event.key];
    if (!towards || event.ctrlKey || event.altKey || event.metaKey) return;
    event.preventDefault();
    const [across, down] = towards;
    const from = this.box.querySelector(".cell.chosen") ?? this.box.querySelector(".chosen .cell");
    if (!from) return;
    // Edges in the direction of the arrow, and to its side.
    const edges = (cell) => {
      const {left, right, top, bottom} = cell.getBoundingClientRect();
      const along = across ? [left, right] : [top, bottom];
      const [near, far] = across + down > 0 ? along : [-along[1], -along[0]];
      const [low, high] = across ? [top, bottom] : [left, right];
      return {near, far, low, high};
    };
    const start = edges(from);
    let best = null, least = Infinity;
    for (const cell of this.box.querySelectorAll(".cell[data-part]")) {
      const {near, far, low, high} = edges(cell);
      if (cell === from || near < start.far - 2) continue;
      const aside = Math.max(0, low - start.high, start.low - high);
      const middles = Math.abs(low + high - start.low - start.high) / 2;
      const badness = near - start.far + 4 * aside + middles / 4 + (far - near) / 100;
      if (badness >= least) continue;
      [best, least] = [cell, badness];
    }
    if (best) this.choose(Number(best.dataset.part));
  }
}
