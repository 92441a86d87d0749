// Draws a scene into a raster.

const FAR_STRENGTH = 0.34;  // of lines that are farthest away, where nearest ones have 1

// How many of a part's lines, the longest of which come first, are worth drawing at this size.
const lines_worth = (pixels, lines, share) =>
  Math.min(lines, Math.ceil((3 + pixels * pixels / 8) * share));

let SPOTS = new Float64Array(0);  // x, y, depth of the points of one copy
const PLACED = new Float64Array(12), FRAMED = new Float64Array(12);

// The points of a copy in the picture, as far as its first `count` lines go.
function place_points(lines, matrix, count) {
  const points = 3 * lines.starts[count];
  if (SPOTS.length < points) SPOTS = new Float64Array(2 * points);
  const [a, b, c, d, e, f, g, h, i, j, k, l] = composed(matrix, lines.frame, FRAMED);
  const from = lines.points;
  for (let at = 0; at < points; at += 3) {
    const x = from[at], y = from[at + 1], z = from[at + 2];
    SPOTS[at] = a * x + b * y + c * z + d;
    SPOTS[at + 1] = e * x + f * y + g * z + h;
    SPOTS[at + 2] = i * x + j * y + k * z + l;
  }
}

// Where the box around a copy's lines is in the picture.
function spot_of(lines, matrix) {
  const [a, b, c, d, e, f, g, h, i, j, k, l] = composed(matrix, lines.frame, FRAMED);
  return [32767.5 * (a + b + c) + d, 32767.5 * (e + f + g) + h, 32767.5 * (i + j + k) + l];
}

// Draws the copies of a scene as `matrix` takes them to pixels. `look(copy)` says how strong its
// lines are, nearest and farthest, how wide, and in which ink, where it is not their own (-1). A
// share below 1 leaves shorter lines out. Returns how many straight pieces were drawn.
function paint(scene, matrix, raster, share, look) {
  const {plain, palette} = inks();
  let pieces = 0;
  for (const copy of scene.copies) {
    const lines = lines_of(copy.part);
    const together = composed(matrix, copy.matrix, PLACED);
    const scale = Math.hypot(together[0], together[4]) + Math.hypot(together[1], together[5]) +
      Math.hypot(together[2], together[6]);
    const size = lines.diagonal * scale / 2;
    const [x, y, depth] = spot_of(lines, together);
    if (x < -size || y < -size || x > raster.width + size || y > raster.height + size) continue;
    const {near, far, width, ink} = look(copy);
    const colour = ink >= 0 ? ink : copy.colour >= 0 ? ink_of(copy.colour) : -1;
    const strength_at = (z) => near + (far - near) * Math.min(1, Math.max(0, z));
    if (size < 1.5) {
      const own = lines.colours[0] === 65535 ? plain : palette[lines.colours[0]];
      raster.plot(x | 0, y | 0, strength_at(depth), colour >= 0 ? colour : own);
      continue;
    }
    const count = lines_worth(size, lines.colours.length, share);
    place_points(lines, together, count);
    for (let line = 0; line < count; ++line) {
      const own = lines.colours[line];
      const used = colour >= 0 ? colour : own === 65535 ? plain : palette[own];
      const last = 3 * (lines.starts[line + 1] - 1);
      let at = 3 * lines.starts[line];
      let before = strength_at(SPOTS[at + 2]);
      for (; at < last; at += 3, ++pieces) {
        const behind = strength_at(SPOTS[at + 5]);
        raster.line(SPOTS[at], SPOTS[at + 1], before, SPOTS[at + 3], SPOTS[at + 4], behind,
                    width, used);
        before = behind;
      }
    }
  }
  return pieces;
}

// How far a point is from a straight piece.
function distance_to(x, y, x0, y0, x1, y1) {
  const dx = x1 - x0, dy = y1 - y0;
  const square = dx * dx + dy * dy;
  const t = square > 0 ? clamped(((x - x0) * dx + (y - y0) * dy) / square, 0, 1) : 0;
  return Math.hypot(x - x0 - t * dx, y - y0 - t * dy);
}

// The copy whose line is at (x, y), within `reach` pixels; of several as near, the nearest to the
// eye. Null where there is none.
function copy_at(scene, matrix, x, y, reach) {
  let best = null, least = Infinity;
  for (const copy of scene.copies) {
    const lines = lines_of(copy.part);
    const together = composed(matrix, copy.matrix, PLACED);
    place_points(lines, together, lines.colours.length);
    for (let line = 0; line < lines.colours.length; ++line) {
      const last = 3 * (lines.starts[line + 1] - 1);
      for (let at = 3 * lines.starts[line]; at < last; at += 3) {
        const away = distance_to(x, y, SPOTS[at], SPOTS[at + 1], SPOTS[at + 3], SPOTS[at + 4]);
        if (away > reach) continue;
        const badness = away + reach * (SPOTS[at + 2] + SPOTS[at + 5]) / 2;
        if (badness < least) [best, least] = [copy, badness];
      }
    }
  }
  return best;
}
