// The lines of parts, read from the page's data when they are needed first.

function bytes_of(text) {
  const characters = atob(text);
  const bytes = new Uint8Array(characters.length);
  for (let i = 0; i < characters.length; ++i) bytes[i] = characters.charCodeAt(i);
  return bytes;
}

const LINES = new Map();

// The own lines of a part, or null: `starts` (positions in `points`, in points, one more than there
// are lines), `colours` (one each, 65535 for none), `points` (x, y, z from 0 to 65535), and `frame`,
// which takes points to the part's coordinates: three pairs of a factor and a summand.
function lines_of(part) {
  if (!PARTS[part].lines) return null;
  if (LINES.has(part)) return LINES.get(part);
  const numbers = new Uint16Array(bytes_of(PARTS[part].lines).buffer);
  const starts = [0], colours = [];
  const points = new Uint16Array(numbers.length);
  let filled = 0;
  for (let at = 0; at < numbers.length; ) {
    const count = 3 * numbers[at];
    colours.push(numbers[at + 1]);
    points.set(numbers.subarray(at + 2, at + 2 + count), filled);
    filled += count;
    starts.push(filled / 3);
    at += 2 + count;
  }
  const box = PARTS[part].frame;
  const frame = [0, 1, 2].map((i) => [(box[i + 3] - box[i]) / 65535, box[i]]);
  const lines = {
    starts: Uint32Array.from(starts), colours: Uint16Array.from(colours), frame,
    points: points.slice(0, filled),
    diagonal: Math.hypot(box[3] - box[0], box[4] - box[1], box[5] - box[2]),
  };
  LINES.set(part, lines);
  return lines;
}

const PLACEMENTS = new Map();

// The components of a part where they are placed: [{part, matrix, colour}], colour -1 for its own.
function placed_in(part) {
  if (PLACEMENTS.has(part)) return PLACEMENTS.get(part);
  const {placed = [], placements = "", placed_colours = {}} = PARTS[part];
  const numbers = new Float32Array(bytes_of(placements).buffer);
  const components = placed.map((component, i) => ({
    part: component, matrix: numbers.subarray(12 * i, 12 * i + 12),
    colour: placed_colours[i] ?? -1,
  }));
  PLACEMENTS.set(part, components);
  return components;
}

// Which parts have lines, of their own or in a component.
function parts_with_lines() {
  const drawn = new Array(PARTS.length).fill(false);
  const users = PARTS.map(() => []);
  PARTS.forEach((part, index) => (part.placed ?? []).forEach((used) => users[used].push(index)));
  const waiting = [];
  const found = (part) => {
    if (drawn[part]) return;
    drawn[part] = true;
    waiting.push(part);
  };
  PARTS.forEach((part, index) => { if (part.lines) found(index); });
  while (waiting.length > 0) users[waiting.pop()].forEach(found);
  return drawn;
}

const HAS_LINES = parts_with_lines();
