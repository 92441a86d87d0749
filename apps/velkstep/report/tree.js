// The assembly tree. Only rows that were opened exist as data, and only those in sight as elements.

const ROW_HEIGHT = 34;
const MOST_ROWS = 50000;  // that opening all opens

class Tree {
  // `choose(way)` is called with the parts from a root to that of a row when it becomes the active
  // one, `hover(way)` when the pointer comes to a row, or null.
  constructor(box, choose, hover) {
    this.box = box;
    this.choose = choose;
    this.rows = this.rows_for(REPORT.roots.map((part) => ({part, count: 1})), 1);
    this.active = 0;
    const space = box.appendChild(element("div"));
    space.setAttribute("role", "none");
    this.list = new Rows(box.parentElement, space, ROW_HEIGHT, (index) => this.element_of(index));
    box.addEventListener("keydown", (event) => this.press(event));
    box.addEventListener("click", (event) => this.click(event));
    box.addEventListener("pointerover", (event) => {
      const row = event.target.closest(".row");
      hover(row ? this.way_of(Number(row.dataset.row)) : null);
    });
    box.addEventListener("pointerleave", () => hover(null));
  }

  rows_for(uses, level) {
    return uses.map((use, i) => ({use, level, open: false, position: i + 1, of: uses.length}));
  }

  can_open(row) {
    return !row.use.closes_cycle && PARTS[row.use.part].components.length > 0;
  }

  open(index) {
    const row = this.rows[index];
    if (row.open || !this.can_open(row)) return;
    row.open = true;
    const below = this.rows_for(PARTS[row.use.part].components, row.level + 1);
    this.rows = this.rows.slice(0, index + 1).concat(below, this.rows.slice(index + 1));
  }

  close(index) {
    const row = this.rows[index];
    row.open = false;
    let end = index + 1;
    while (end < this.rows.length && this.rows[end].level > row.level) ++end;
    this.rows.splice(index + 1, end - index - 1);
  }

  toggle(index) {
    if (this.rows[index].open) this.close(index);
    else this.open(index);
  }

  // Opens level by level, as long as there are not too many rows. Returns whether all are open.
  open_all() {
    for (;;) {
      const closed = this.rows.filter((row) => !row.open && this.can_open(row));
      if (closed.length === 0) return true;
      const more = closed.reduce((sum, row) => sum + PARTS[row.use.part].components.length, 0);
      if (this.rows.length + more > MOST_ROWS) return false;
      this.rows = this.rows.flatMap((row) => {
        if (row.open || !this.can_open(row)) return [row];
        row.open = true;
        return [row, ...this.rows_for(PARTS[row.use.part].components, row.level + 1)];
      });
    }
  }

  // The active row stays in place, with what is above it.
  expand_all() {
    const way = this.way_of(this.active);
    const whole = this.open_all();
    this.reveal(way);
    return whole;
  }

  collapse_all() {
    this.rows = this.rows_for(REPORT.roots.map((part) => ({part, count: 1})), 1);
    this.activate(0);
  }

  // `*` opens all, and where all is open closes it.
  toggle_all() {
    if (this.rows.some((row) => !row.open && this.can_open(row)) && this.rows.length < MOST_ROWS) {
      const before = this.rows.length;
      this.expand_all();
      if (this.rows.length > before) return;
    }
    this.collapse_all();
  }

  parent_of(index) {
    let above = index - 1;
    while (above >= 0 && this.rows[above].level >= this.rows[index].level) --above;
    return above;
  }

  // The parts from a root to that of a row.
  way_of(index) {
    const way = [];
    for (let at = index; at >= 0; at = this.parent_of(at)) way.unshift(this.rows[at].use.part);
    return way;
  }

  // Makes a row the active one, in sight.
  activate(index) {
    this.active = clamped(index, 0, this.rows.length - 1);
    this.list.count = this.rows.length;
    this.list.gap.behind = this.active;
    this.choose(this.way_of(this.active));
    this.list.bring_in_sight(this.active);
    this.draw();
  }

  // Opens the way from a root to a part and makes its row the active one.
  reveal(way) {
    let index = this.rows.findIndex((row) => row.level === 1 && row.use.part === way[0]);
    for (const part of way.slice(1)) {
      const level = this.rows[index].level + 1;
      this.open(index);
      do ++index;
      while (this.rows[index].level !== level || this.rows[index].use.part !== part);
    }
    this.activate(index);
  }

  press(event) {
    if (event.ctrlKey || event.altKey || event.metaKey) return;
    const row = this.rows[this.active];
    const actions = {
      ArrowDown: () => this.activate(this.active + 1),
      ArrowUp: () => this.activate(this.active - 1),
      PageDown: () => this.activate(this.active + this.list.page()),
      PageUp: () => this.activate(this.active - this.list.page()),
      Home: () => this.activate(0),
      End: () => this.activate(this.rows.length - 1),
      ArrowRight: () => {
        if (row.open) this.activate(this.active + 1);
        else this.toggle_active();
      },
      ArrowLeft: () => {
        if (row.open) this.toggle_active();
        else if (row.level > 1) this.activate(this.parent_of(this.active));
      },
      Enter: () => this.toggle_active(),
      " ": () => this.toggle_active(),
    };
    if (!Object.hasOwn(actions, event.key)) return;
    event.preventDefault();
    actions[event.key]();
  }

  toggle_active() {
    this.toggle(this.active);
    this.activate(this.active);
  }

  click(event) {
    const shown = event.target.closest(".row");
    if (!shown) return;
    const index = Number(shown.dataset.row);
    if (event.target.closest(".twisty")) this.toggle(index);
    this.activate(index);
  }

  draw() {
    this.list.count = this.rows.length;
    this.list.redraw();
    this.box.setAttribute("aria-activedescendant", `row-${this.active}`);
  }

  element_of(index) {
    const row = this.rows[index];
    const part = PARTS[row.use.part];
    const made = element("div", "row");
    made.id = `row-${index}`;
    made.dataset.row = index;
    made.style.height = `${ROW_HEIGHT}px`;
    made.style.paddingInlineStart = `min(${row.level - 1}rem, 45%)`;
    made.setAttribute("role", "treeitem");
    made.setAttribute("aria-level", row.level);
    made.setAttribute("aria-posinset", row.position);
    made.setAttribute("aria-setsize", row.of);
    made.setAttribute("aria-selected", index === this.active);
    if (this.can_open(row)) made.setAttribute("aria-expanded", row.open);
    made.append(element("span", "twisty"));
    if (HAS_PICTURES) made.append(thumbnail(row.use.part, 38, 28));
    const name = made.appendChild(element("span", "name", title_of(part)));
    name.title = name.textContent;
    if (row.use.count > 1) made.append(element("span", "times", `×${number_text(row.use.count)}`));
    if (row.use.closes_cycle) made.append(element("span", "times", "(contains itself)"));
    made.append(element("span", "size", weight_text(row.use.part)));
    return made;
  }
}
