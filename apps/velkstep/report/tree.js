// The assembly tree. Only rows that were opened exist as data, and only those in sight as elements.

const ROW_HEIGHT = 32;

class Tree {
  // `choose(part)` is called with the index of a part when its row becomes the active one.
  constructor(box, choose) {
    this.box = box;
    this.choose = choose;
    this.ways = ways_from_roots();
    this.rows = this.rows_for(REPORT.roots.map((part) => ({part, count: 1})), 1);
    this.active = 0;
    this.space = box.appendChild(element("div"));
    this.space.setAttribute("role", "none");
    box.addEventListener("scroll", () => this.draw());
    box.addEventListener("keydown", (event) => this.press(event));
    box.addEventListener("click", (event) => this.click(event));
    new ResizeObserver(() => this.draw()).observe(box);
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

  parent_of(index) {
    let above = index - 1;
    while (above >= 0 && this.rows[above].level >= this.rows[index].level) --above;
    return above;
  }

  // Makes a row the active one, in sight.
  activate(index) {
    this.active = Math.max(0, Math.min(index, this.rows.length - 1));
    const top = this.active * ROW_HEIGHT;
    this.space.style.height = `${this.rows.length * ROW_HEIGHT}px`;
    if (top < this.box.scrollTop) this.box.scrollTop = top;
    const hidden = top + ROW_HEIGHT - this.box.clientHeight;
    if (hidden > this.box.scrollTop) this.box.scrollTop = hidden;
    this.draw();
    this.choose(this.rows[this.active].use.part);
  }

  // Opens the way from a root to a part and makes its row the active one.
  reveal(part) {
    const positions = [];
    let top = part;
    for (; this.ways[top]; top = this.ways[top][0]) positions.unshift(this.ways[top][1]);
    let index = this.rows.findIndex((row) => row.level === 1 && row.use.part === top);
    for (const position of positions) {
      const level = this.rows[index].level + 1;
      this.open(index);
      for (let left = position; left >= 0; ) {
        ++index;
        if (this.rows[index].level === level) --left;
      }
    }
    this.activate(index);
  }

  press(event) {
    if (event.ctrlKey || event.altKey || event.metaKey) return;
    const row = this.rows[this.active];
    const page = Math.max(1, Math.floor(this.box.clientHeight / ROW_HEIGHT) - 1);
    const actions = {
      ArrowDown: () => this.activate(this.active + 1),
      ArrowUp: () => this.activate(this.active - 1),
      PageDown: () => this.activate(this.active + page),
      PageUp: () => this.activate(this.active - page),
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
    const first = Math.max(0, Math.floor(this.box.scrollTop / ROW_HEIGHT) - 2);
    const most = Math.ceil(this.box.clientHeight / ROW_HEIGHT) + 4;
    const last = Math.min(this.rows.length, first + most);
    const shown = [];
    for (let i = first; i < last; ++i) shown.push(this.element_of(i));
    this.space.style.height = `${this.rows.length * ROW_HEIGHT}px`;
    this.space.replaceChildren(...shown);
    this.box.setAttribute("aria-activedescendant", `row-${this.active}`);
  }

  element_of(index) {
    const row = this.rows[index];
    const part = PARTS[row.use.part];
    const made = element("div", "row");
    made.id = `row-${index}`;
    made.dataset.row = index;
    made.style.top = `${index * ROW_HEIGHT}px`;
    made.style.height = `${ROW_HEIGHT}px`;
    made.style.paddingInlineStart = `min(${row.level - 1}rem, 45%)`;
    made.setAttribute("role", "treeitem");
    made.setAttribute("aria-level", row.level);
    made.setAttribute("aria-posinset", row.position);
    made.setAttribute("aria-setsize", row.of);
    made.setAttribute("aria-selected", index === this.active);
    if (this.can_open(row)) made.setAttribute("aria-expanded", row.open);
    made.append(element("span", "twisty"), element("span", "name", title_of(part)));
    if (row.use.count > 1) made.append(element("span", "times", `×${number_text(row.use.count)}`));
    if (row.use.closes_cycle) made.append(element("span", "times", "(contains itself)"));
    made.append(element("span", "size", part.bytes === null ? "" : size_text(part.bytes)));
    return made;
  }
}
