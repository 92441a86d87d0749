// What a picture shows: a part with its components at all their places. Lines are those of the
// parts, so that a copy costs no more than a matrix.

// Does `inner` first, then `outer`; all are three rows of four.
function composed(outer, inner, both = new Float64Array(12)) {
  for (let row = 0; row < 12; row += 4) {
    const [a, b, c, d] = [outer[row], outer[row + 1], outer[row + 2], outer[row + 3]];
    for (let k = 0; k < 4; ++k) {
      both[row + k] = a * inner[k] + b * inner[4 + k] + c * inner[8 + k] + (k === 3 ? d : 0);
    }
  }
  return both;
}

const AS_IT_IS = Float64Array.of(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0);

// What is said of the component at `position` of a place: {colour, given, styles}; null where it is
// hidden there.
function style_below({colour, given, depth}, component, position, styles) {
  const result = {colour, given, styles: []};
  const give = (other, level) => {
    if (other < 0 || (result.colour >= 0 && result.given < level)) return;
    result.colour = other;
    result.given = level;
  };
  give(component.colour, depth);
  for (const one of styles) {
    const {path, colour: other = -1, hidden} = one.style;
    const step = depth - one.begun;
    if (path[step] !== position) continue;
    if (step + 1 < path.length) {
      result.styles.push(one);
    } else if (hidden) {
      return null;
    } else {
      give(other, one.begun);
    }
  }
  return result;
}

class Scene {
  // All places of what is below a part, up to `most` of them. `copies` are the places of parts with
  // lines: {part, matrix, colour, node}. A node is what a row of the tree stands for: a part on one
  // way from the first, {part, parent, below}, however often it is used there.
  constructor(part, most) {
    this.part = part;
    this.copies = [];
    this.whole = true;
    this.root = {part, parent: null, below: new Map()};
    this.box = PARTS[part].box ?? [0, 0, 0, 1, 1, 1];
    const waiting = [{node: this.root, matrix: AS_IT_IS, colour: -1, given: 0, depth: 0, styles: []}];
    for (let steps = 0; waiting.length > 0; ++steps) {
      if (this.copies.length >= most || steps > 5 * most + 1000) {
        this.whole = false;
        break;
      }
      this.enter(waiting.pop(), waiting);
    }
  }

  // `given` is the level at which a place got its colour: the upper one counts. `styles` are those of
  // parts above that may speak of what is below: {style, begun}, the uppermost last.
  enter(place, waiting) {
    const {node, matrix, depth} = place;
    if (PARTS[node.part].lines) {
      this.copies.push({part: node.part, matrix, colour: place.colour, node});
    }
    const own = (PARTS[node.part].styled ?? []).map((style) => ({style, begun: depth}));
    const styles = [...own, ...place.styles];
    const placed = placed_in(node.part);
    for (let i = placed.length - 1; i >= 0; --i) {
      const component = placed[i];
      if (!HAS_LINES[component.part]) continue;
      const style = style_below(place, component, i, styles);
      if (style === null) continue;
      let below = node.below.get(component.part);
      if (!below) {
        below = {part: component.part, parent: node, below: new Map()};
        node.below.set(component.part, below);
      }
      waiting.push({node: below, matrix: composed(matrix, component.matrix), depth: depth + 1,
                    ...style});
    }
  }

  // How far the boxes around all copies reach along a direction: [least, most].
  reach([x, y, z]) {
    let least = Infinity, most = -Infinity;
    for (const {part, matrix} of this.copies) {
      const frame = PARTS[part].frame;
      let middle = x * matrix[3] + y * matrix[7] + z * matrix[11], half = 0;
      for (let i = 0; i < 3; ++i) {
        const along = x * matrix[i] + y * matrix[4 + i] + z * matrix[8 + i];
        middle += along * (frame[i] + frame[i + 3]) / 2;
        half += Math.abs(along) * (frame[i + 3] - frame[i]) / 2;
      }
      least = Math.min(least, middle - half);
      most = Math.max(most, middle + half);
    }
    return this.copies.length > 0 ? [least, most] : [0, 0];
  }

  // The node at the end of a way of parts from the scene's part on, or undefined.
  node_at(way) {
    let node = this.root;
    for (const part of way.slice(1)) node = node?.below.get(part);
    return way[0] === this.part ? node : undefined;
  }
}

// The parts from a scene's part to a node.
function way_of(node) {
  const way = [];
  for (let at = node; at; at = at.parent) way.unshift(at.part);
  return way;
}

// Whether `node` is `above` or below it.
function is_below(node, above) {
  for (let at = node; at; at = at.parent) if (at === above) return true;
  return false;
}
