// The lines of parts, read from the page's data when they are needed first.

function bytes_of(text) {
  if (Uint8Array.fromBase64) return Uint8Array.fromBase64(text);
  const characters = atob(text);
  const bytes = new Uint8Array(characters.length);
  for (let i = 0; i < characters.length; ++i) bytes[i] = characters.charCodeAt(i);
  return bytes;
}

const LINES = new Map();

// The own lines of a part, or null: `starts` (positions in `points`, in points, one more than there
// are lines), `colours` (one each, 65535 for none), `points` (x, y, z from 0 to 65535), and `frame`,
// the matrix that takes points to the part's coordinates.
function lines_of(part) {
  if (!PARTS[part].lines) return null;
  if (LINES.has(part)) return LINES.get(part);
  const numbers = new Uint16Array(bytes_of(PARTS[part].lines).buffer);
  const count = numbers[0] + 65536 * numbers[1];
  const starts = new Uint32Array(count + 1), colours = new Uint16Array(count);
  for (let line = 0; line < count; ++line) {
    starts[line + 1] = starts[line] + numbers[2 + 2 * line];
    colours[line] = numbers[3 + 2 * line];
  }
  const [x, y, z, right, back, top] = PARTS[part].frame;
  const lines = {
    starts, colours, points: numbers.subarray(2 + 2 * count),
    frame: Float64Array.of((right - x) / 65535, 0, 0, x, 0, (back - y) / 65535, 0, y,
                           0, 0, (top - z) / 65535, z),
    diagonal: Math.hypot(right - x, back - y, top - z),
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
const HAS_PICTURES = HAS_LINES.includes(true);
