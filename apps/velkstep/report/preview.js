// The large picture: it turns, and what is pressed in it is found in the tree.

const MOST_COPIES = 100000;
const SLOW = 24;          // milliseconds: slower pictures leave short lines out while they move
const LEAST_SHARE = 0.1;  // of the lines
const DEGREES_A_KEY = 10;
const PICK_REACH = 7;     // pixels
const FIT_MILLISECONDS = 220;
const REST_STRENGTH = 0.42;      // of what does not stand out, beside what does
const LIT_FAR_STRENGTH = 0.7;
const REDUCED_MOTION = matchMedia("(prefers-reduced-motion: reduce)");

class Preview {
  // `find(way)` is called with the parts from the first one to that whose line was pressed.
  constructor(box, find) {
    this.box = box;
    this.find = find;
    this.canvas = box.querySelector("canvas");
    this.note = box.querySelector(".note");
    this.camera = new Camera();
    this.alone = false;
    this.way = [];
    this.hovered = null;
    this.wholes = new Map();
    this.pointers = new Map();
    this.share = 1;
    this.listen();
  }

  listen() {
    const on = (kind, action, options) => this.canvas.addEventListener(kind, action, options);
    on("pointerdown", (event) => this.press(event));
    on("pointermove", (event) => this.drag(event));
    for (const kind of ["pointerup", "pointercancel"]) on(kind, (event) => this.let_go(event));
    on("wheel", (event) => this.wheel(event), {passive: false});
    on("dblclick", () => this.fit());
    on("keydown", (event) => this.key(event));
    on("contextmenu", (event) => event.preventDefault());
    for (const pressed of this.box.querySelectorAll("[data-view]")) {
      pressed.addEventListener("click", () => this.look_from(pressed.dataset.view));
    }
    this.box.querySelector("#fit").addEventListener("click", () => this.fit());
    const alone = this.box.querySelector("#alone");
    alone.addEventListener("click", () => {
      this.alone = !this.alone;
      alone.setAttribute("aria-pressed", this.alone);
      this.show(this.way);
    });
    new ResizeObserver(() => this.draw()).observe(this.canvas);
    DARK.addEventListener("change", () => this.draw());
  }

  // Shows the last part of a way from a root: alone, or in the whole, where it stands out.
  show(way) {
    this.way = way;
    const from = this.alone ? way.length - 1 : 0;
    const before = this.scene;
    this.scene = this.scene_of(way[from]);
    if (this.scene !== before) this.fit(true);
    this.chosen = this.alone ? null : this.scene.node_at(way);
    if (this.chosen === this.scene.root) this.chosen = null;
    this.hovered = null;
    const title = title_of(PARTS[way[way.length - 1]]);
    this.canvas.setAttribute("aria-label", HAS_LINES[way[way.length - 1]]
      ? `Drawing of ${title}; arrow keys turn it, + and - zoom, 0 fits it` : `No drawing of ${title}`);
    this.note.textContent = !HAS_LINES[way[way.length - 1]] ? "Nothing in this part can be drawn"
      : this.scene.whole ? "" : `The first ${number_text(this.scene.copies.length)} places are shown`;
    this.draw();
  }

  // The whole stays; of what is shown alone there is one at a time.
  scene_of(part) {
    if (this.scene?.part === part) return this.scene;
    if (REPORT.roots.includes(part)) {
      if (!this.wholes.has(part)) this.wholes.set(part, new Scene(part, MOST_COPIES));
      return this.wholes.get(part);
    }
    return new Scene(part, MOST_COPIES);
  }

  // Lets the last part of a way stand out as long as the pointer is on its row; null for none.
  hover(way) {
    const from = way === null ? -1 : way.indexOf(this.scene.part);
    const node = from < 0 ? null : this.scene.node_at(way.slice(from)) ?? null;
    if (node === this.hovered) return;
    this.hovered = node;
    this.draw();
  }

  // Draws with the next frame.
  draw() {
    if (this.asked) return;
    this.asked = true;
    requestAnimationFrame(() => {
      this.asked = false;
      this.draw_now();
    });
  }

  draw_now() {
    const scale = Math.min(2, devicePixelRatio);
    const width = Math.round(this.canvas.clientWidth * scale);
    const height = Math.round(this.canvas.clientHeight * scale);
    if (width === 0 || height === 0 || !this.scene) return;
    if (this.raster?.width !== width || this.raster.height !== height) {
      this.raster = new Raster(width, height);
      this.canvas.width = width;
      this.canvas.height = height;
    }
    const begin = performance.now();
    const share = this.moving ? this.share : 1;
    this.raster.clear();
    this.pieces = paint(this.scene, this.matrix(scale), this.raster, share, this.look(scale));
    this.canvas.getContext("2d").putImageData(this.raster.image, 0, 0);
    this.milliseconds = performance.now() - begin;
    const step = clamped(SLOW / Math.max(1, this.milliseconds), 0.7, 1.4);
    this.share = clamped(this.share * step, LEAST_SHARE, 1);
  }

  // What stands out is strong and wide; the rest is fainter then.
  look(scale) {
    const out = this.hovered ?? this.chosen;
    const near = out ? REST_STRENGTH : 1;
    const usual = {near, far: near * FAR_STRENGTH, width: scale, ink: -1};
    if (!out) return () => usual;
    const lit = {near: 1, far: LIT_FAR_STRENGTH, width: 1.7 * scale, ink: inks().lit};
    const known = new Map();
    return (copy) => {
      if (!known.has(copy.node)) known.set(copy.node, is_below(copy.node, out) ? lit : usual);
      return known.get(copy.node);
    };
  }

  matrix(scale) {
    const camera = Object.assign(new Camera(), this.camera);
    camera.pan = this.camera.pan.map((pixels) => pixels * scale);
    return camera.matrix(this.scene.box, this.canvas.clientWidth * scale,
                         this.canvas.clientHeight * scale, 14 * scale);
  }

  // While something moves, slow pictures are coarser; the whole follows when it rests.
  move() {
    this.moving = true;
    clearTimeout(this.rest);
    this.rest = setTimeout(() => {
      this.moving = false;
      if (this.share < 1) this.draw();
    }, 150);
    this.draw();
  }

  // Everything is to be seen again, from the same side.
  fit(at_once = false) {
    const [zoom, pan] = this.reframe();
    const begin = performance.now();
    const length = at_once || REDUCED_MOTION.matches ? 0 : FIT_MILLISECONDS;
    const step = () => {
      const t = length === 0 ? 1 : clamped((performance.now() - begin) / length, 0, 1);
      const left = (1 - t) ** 3;
      this.camera.zoom = zoom ** left;
      this.camera.pan = pan.map((pixels) => pixels * left);
      this.move();
      if (t < 1) requestAnimationFrame(step);
    };
    step();
  }

  // Frames the scene; returns the zoom and pan with which it looks as it did before.
  reframe() {
    const before = this.camera.middle && this.matrix(1);
    this.camera.frame(this.scene);
    Object.assign(this.camera, {zoom: 1, pan: [0, 0]});
    if (!before) return [1, [0, 0]];
    const after = this.matrix(1);
    const zoom = Math.hypot(...before.slice(0, 3)) / Math.hypot(...after.slice(0, 3));
    const place = (matrix, row) => this.camera.middle.reduce(
      (sum, part, i) => sum + matrix[row + i] * part, matrix[row + 3]);
    const half = [this.canvas.clientWidth / 2, this.canvas.clientHeight / 2];
    return [zoom, [0, 4].map((row, i) =>
      place(before, row) - half[i] + (half[i] - place(after, row)) * zoom)];
  }

  look_from(view) {
    [this.camera.yaw, this.camera.pitch] = VIEWS[view];
    this.fit(true);
  }

  // Where an event is, seen from the middle of the picture.
  place_of(event) {
    const box = this.canvas.getBoundingClientRect();
    return [event.clientX - box.left - box.width / 2, event.clientY - box.top - box.height / 2];
  }

  press(event) {
    this.canvas.setPointerCapture(event.pointerId);
    this.pointers.set(event.pointerId, this.place_of(event));
    this.dragged = this.pointers.size > 1 ? Infinity : 0;
  }

  drag(event) {
    const before = this.pointers.get(event.pointerId);
    if (!before) return;
    const now = this.place_of(event);
    const [dx, dy] = [now[0] - before[0], now[1] - before[1]];
    const other = [...this.pointers].find(([id]) => id !== event.pointerId)?.[1];
    this.pointers.set(event.pointerId, now);
    this.dragged += Math.hypot(dx, dy);
    if (this.dragged < 4) return;
    if (other) {
      const gap = ([x, y]) => Math.max(1, Math.hypot(x - other[0], y - other[1]));
      this.camera.zoom_by(gap(now) / gap(before), (now[0] + other[0]) / 2, (now[1] + other[1]) / 2);
      this.camera.pan = [this.camera.pan[0] + dx / 2, this.camera.pan[1] + dy / 2];
    } else if (event.shiftKey || event.buttons > 1) {
      this.camera.pan = [this.camera.pan[0] + dx, this.camera.pan[1] + dy];
    } else this.camera.turn(-dx * 0.5, dy * 0.5);
    this.move();
  }

  let_go(event) {
    const known = this.pointers.delete(event.pointerId);
    if (known && event.type === "pointerup" && event.button === 0 && this.dragged < 4) {
      this.pick(event);
    }
  }

  pick(event) {
    const [x, y] = this.place_of(event);
    const {clientWidth: width, clientHeight: height} = this.canvas;
    const copy = copy_at(this.scene, this.matrix(1), x + width / 2, y + height / 2, PICK_REACH);
    if (!copy) return;
    const first = this.alone ? this.way.slice(0, -1) : [];
    this.find([...first, ...way_of(copy.node)]);
  }

  wheel(event) {
    event.preventDefault();
    const pixels = event.deltaY * (event.deltaMode === 1 ? 16 : 1);
    this.camera.zoom_by(Math.exp(-clamped(pixels, -200, 200) * 0.002), ...this.place_of(event));
    this.move();
  }

  key(event) {
    if (event.ctrlKey || event.altKey || event.metaKey) return;
    const pan = (x, y) => { this.camera.pan = [this.camera.pan[0] + x, this.camera.pan[1] + y]; };
    const turn = (x, y) => (event.shiftKey ? pan(-4 * x, 4 * y) : this.camera.turn(x, y));
    const actions = {
      ArrowLeft: () => turn(DEGREES_A_KEY, 0),
      ArrowRight: () => turn(-DEGREES_A_KEY, 0),
      ArrowUp: () => turn(0, -DEGREES_A_KEY),
      ArrowDown: () => turn(0, DEGREES_A_KEY),
      "+": () => this.camera.zoom_by(1.25),
      "=": () => this.camera.zoom_by(1.25),
      "-": () => this.camera.zoom_by(0.8),
      "0": () => this.fit(),
      Home: () => this.fit(),
    };
    if (!Object.hasOwn(actions, event.key)) return;
    event.preventDefault();
    actions[event.key]();
    this.move();
  }
}
