// The bill of materials: every part once, with how often it is in the whole.

const TABLE_ROW_HEIGHT = 44;

const {compare: by_text} = new Intl.Collator(undefined, {numeric: true, sensitivity: "base"});
const quantity_of = (part) => BigInt(part.total.replace(/\D/g, ""));
const volume_of = ({box}) =>
  box ? (box[3] - box[0]) * (box[4] - box[1]) * (box[5] - box[2]) : -1;

// What the columns are called, what stands in them, and how they are sorted.
const COLUMNS = [
  {key: "name", title: "Name", text: title_of, order: (a, b) => by_text(title_of(a), title_of(b))},
  {key: "id", title: "Id", text: (part) => part.id, order: (a, b) => by_text(a.id, b.id)},
  {key: "quantity", title: "Quantity", text: (part) => part.total, right: true,
   order: (a, b) => Number(quantity_of(a) - quantity_of(b))},
  {key: "size", title: "Size", text: (part) => (part.bytes === null ? "" : size_text(part.bytes)),
   right: true, exact: (part) => part.bytes ?? "", order: (a, b) => (a.bytes ?? -1) - (b.bytes ?? -1)},
  {key: "box", title: "Bounding box", text: box_text, right: true, picture: true,
   order: (a, b) => volume_of(a) - volume_of(b)},
  {key: "file", title: "File", text: (part) => part.file, order: (a, b) => by_text(a.file, b.file)},
];

const shown_columns = () => COLUMNS.filter((column) => HAS_PICTURES || !column.picture);

class Table {
  // `choose(part)` is called when a part's row is pressed or gone to.
  constructor(box, choose) {
    this.box = box;
    this.choose = choose;
    this.chosen = -1;
    this.sorted = {key: "name", descending: false};
    this.with_assemblies = false;
    this.head = box.appendChild(this.make_head());
    const space = box.appendChild(element("div", "space"));
    space.setAttribute("role", "rowgroup");
    this.list = new Rows(box.parentElement, space, TABLE_ROW_HEIGHT, (index) => this.element_of(index));
    box.addEventListener("keydown", (event) => this.press(event));
    space.addEventListener("click", (event) => this.click(event));
    this.sort();
  }

  make_head() {
    const row = element("div", "line head");
    row.setAttribute("role", "row");
    row.setAttribute("aria-rowindex", 1);
    if (HAS_PICTURES) {
      const cell = element("span", "cell-thumbnail");
      cell.setAttribute("role", "columnheader");
      cell.setAttribute("aria-label", "Picture");
      row.append(cell);
    }
    for (const column of shown_columns()) {
      const cell = element("span", `cell-${column.key}`);
      cell.setAttribute("role", "columnheader");
      cell.dataset.key = column.key;
      cell.append(button(column.title, () => this.sort_by(column.key)));
      row.append(cell);
    }
    return row;
  }

  sort_by(key) {
    this.sorted = {key, descending: this.sorted.key === key && !this.sorted.descending};
    this.sort();
  }

  sort() {
    const {key, descending} = this.sorted;
    const column = COLUMNS.find((candidate) => candidate.key === key);
    const sign = descending ? -1 : 1;
    this.order = PARTS.map((part, index) => index)
      .filter((index) => this.with_assemblies || PARTS[index].kind !== "assembly")
      .sort((a, b) => sign * column.order(PARTS[a], PARTS[b]) || a - b);
    for (const cell of this.head.querySelectorAll("[data-key]")) {
      const state = cell.dataset.key !== key ? "none" : descending ? "descending" : "ascending";
      cell.setAttribute("aria-sort", state);
    }
    this.box.setAttribute("aria-rowcount", this.order.length + 1);
    this.list.count = this.order.length;
    this.mark(this.chosen);
  }

  // Shows which part is chosen, in sight where it is listed.
  mark(part) {
    this.chosen = part;
    const index = this.order.indexOf(part);
    this.list.gap.behind = index;
    if (index >= 0) {
      this.list.bring_in_sight(index);
      this.box.setAttribute("aria-activedescendant", `line-${index}`);
    } else this.box.removeAttribute("aria-activedescendant");
    this.list.redraw();
  }

  press(event) {
    if (event.target !== this.box || event.ctrlKey || event.altKey || event.metaKey) return;
    const at = this.order.indexOf(this.chosen);
    const page = this.list.page();
    const to = {ArrowDown: at + 1, ArrowUp: at - 1, PageDown: at + page, PageUp: at - page, Home: 0,
                End: this.order.length - 1}[event.key];
    if (to === undefined || this.order.length === 0) return;
    event.preventDefault();
    this.choose(this.order[clamped(to, 0, this.order.length - 1)]);
  }

  click(event) {
    const line = event.target.closest(".line");
    if (line && !event.target.closest("a")) this.choose(this.order[Number(line.dataset.line)]);
  }

  element_of(index) {
    const part = PARTS[this.order[index]];
    const made = element("div", "line");
    made.id = `line-${index}`;
    made.dataset.line = index;
    made.style.height = `${TABLE_ROW_HEIGHT}px`;
    made.setAttribute("role", "row");
    made.setAttribute("aria-rowindex", index + 2);
    made.setAttribute("aria-selected", this.order[index] === this.chosen);
    if (HAS_PICTURES) {
      const cell = element("span", "cell-thumbnail");
      cell.setAttribute("role", "gridcell");
      cell.append(thumbnail(this.order[index], 52, 38));
      made.append(cell);
    }
    for (const column of shown_columns()) {
      const cell = element("span", `cell-${column.key}`);
      cell.setAttribute("role", "gridcell");
      if (column.key === "file" && part.file !== "") cell.append(file_link(part));
      else cell.textContent = column.text(part);
      cell.title = cell.textContent;
      made.append(cell);
    }
    return made;
  }

  // What is listed, as lines of fields: a size is a number of bytes here.
  fields() {
    const columns = shown_columns();
    return [columns.map((column) => (column.exact ? `${column.title} (bytes)` : column.title)),
            ...this.order.map((index) =>
              columns.map((column) => String((column.exact ?? column.text)(PARTS[index]))))];
  }

  // As RFC 4180 has it.
  csv() {
    const field = (text) => (/[",\r\n]/.test(text) ? `"${text.replaceAll('"', '""')}"` : text);
    return this.fields().map((line) => `${line.map(field).join(",")}\r\n`).join("");
  }

  // As spreadsheets take it from the clipboard.
  tabbed() {
    return this.fields().map((line) => line.map((text) => text.replace(/\s+/g, " ")).join("\t"))
      .join("\n");
  }
}

async function copy_text(text) {
  try {
    await navigator.clipboard.writeText(text);
    return true;
  } catch {
    const area = element("textarea");
    area.value = text;
    document.body.append(area);
    area.select();
    const done = document.execCommand("copy");
    area.remove();
    return done;
  }
}

function save_text(name, text) {
  const link = element("a");
  link.href = URL.createObjectURL(new Blob(["\ufeff", text], {type: "text/csv;charset=utf-8"}));
  link.download = name;
  link.click();
  setTimeout(() => URL.revokeObjectURL(link.href), 10000);
}

// The table and what stands above it.
function set_up_table(choose) {
  const table = new Table(document.getElementById("bom"), choose);
  const status = document.getElementById("bom-status");
  const say = (text) => { status.textContent = text; };
  const count = () => say(counted(table.order.length, "part", "parts"));
  document.getElementById("with-assemblies").addEventListener("change", (event) => {
    table.with_assemblies = event.target.checked;
    table.sort();
    count();
  });
  document.getElementById("copy").addEventListener("click", async () => {
    say(await copy_text(table.tabbed()) ? `${counted(table.order.length, "part", "parts")} copied`
                                        : "The browser does not allow to copy");
  });
  document.getElementById("csv").addEventListener("click", () => {
    save_text(`${REPORT.input.replace(/\.[^.]*$/, "")}-bom.csv`, table.csv());
  });
  count();
  return table;
}
