// A list of rows, of which only those in sight are elements. It scrolls within its box, or with the
// page where the box is as long as the list. Behind one row there may be room for something else.

class Rows {
  // `make(index)` gives a row's element.
  constructor(box, space, height, make) {
    this.box = box;
    this.space = space;
    this.height = height;
    this.make = make;
    this.count = 0;
    this.made = new Map();
    this.gap = {behind: -1, height: 0};
    document.addEventListener("scroll", () => this.draw(), {capture: true, passive: true});
    new ResizeObserver(() => this.draw()).observe(box);
    addEventListener("resize", () => this.draw());
    DARK.addEventListener("change", () => this.redraw());
  }

  scrolls() {
    return getComputedStyle(this.box).overflowY === "auto";
  }

  top_of(index) {
    return index * this.height + (index > this.gap.behind && this.gap.behind >= 0 ? this.gap.height : 0);
  }

  // How many rows fit in at once.
  page() {
    const room = this.scrolls() ? this.box.clientHeight : innerHeight;
    return Math.max(1, Math.floor(room / this.height) - 1);
  }

  // Scrolls as far as it takes to have a row in sight.
  bring_in_sight(index) {
    this.space.style.height = `${this.top_of(this.count)}px`;
    const top = this.top_of(index);
    if (this.scrolls()) {
      const head = this.space.offsetTop;
      const hidden = head + top + this.height - this.box.clientHeight;
      if (top < this.box.scrollTop) this.box.scrollTop = top;
      if (hidden > this.box.scrollTop) this.box.scrollTop = hidden;
    } else if (this.box.offsetParent !== null) {
      const at = this.space.getBoundingClientRect().top + top;
      if (at < 0 || at + this.height > innerHeight) scrollBy(0, at - innerHeight / 4);
    }
  }

  // Draws all rows in sight anew.
  redraw() {
    this.made.clear();
    this.draw();
  }

  draw() {
    this.space.style.height = `${this.top_of(this.count)}px`;
    if (this.box.offsetParent === null) return;
    const around = this.box.getBoundingClientRect();
    const top = this.space.getBoundingClientRect().top;
    const above = Math.max(around.top, 0) - top - 2 * this.height;
    const below = Math.min(around.bottom, innerHeight) - top + 2 * this.height;
    const rows = new Map();
    for (let i = this.first_below(above); i < this.count && this.top_of(i) < below; ++i) {
      rows.set(i, this.made.get(i) ?? this.make(i));
      rows.get(i).style.top = `${this.top_of(i)}px`;
    }
    const same = rows.size === this.made.size && [...rows].every(([i, row]) => this.made.get(i) === row);
    this.made = rows;
    if (!same || this.space.childElementCount !== rows.size) this.space.replaceChildren(...rows.values());
  }

  first_below(pixels) {
    let first = Math.max(0, Math.floor((pixels - this.gap.height) / this.height));
    while (first < this.count && this.top_of(first) + this.height < pixels) ++first;
    return first;
  }
}
