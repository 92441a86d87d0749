// What is printed: the tree and the bill of materials, whole, whatever is in sight on the screen.

const MOST_PRINTED_PICTURES = 1000;

// The tree with every assembly once: where it occurs again, it says so.
function printed_tree() {
  const list = element("div", "printed-tree");
  const seen = new Set();
  const waiting = REPORT.roots.map((part) => [{part, count: 1}, 0]).reverse();
  while (waiting.length > 0) {
    const [use, level] = waiting.pop();
    const part = PARTS[use.part];
    const again = is_assembly(part) && seen.has(use.part);
    const row = element("div");
    row.style.paddingInlineStart = `${Math.min(level, 20) * 1.2}em`;
    row.append(element("span", "", title_of(part) +
                       (use.count > 1 ? ` ×${number_text(use.count)}` : "") +
                       (use.closes_cycle ? " (contains itself)" : again ? " (see above)" : "")),
               element("span", "", weight_text(use.part)));
    list.append(row);
    if (use.closes_cycle || again) continue;
    seen.add(use.part);
    for (let i = part.components.length - 1; i >= 0; --i) {
      waiting.push([part.components[i], level + 1]);
    }
  }
  return list;
}

function printed_table(order) {
  const table = element("table");
  const columns = shown_columns();
  const pictures = HAS_PICTURES && order.length <= MOST_PRINTED_PICTURES;
  const head = element("tr");
  if (pictures) head.append(element("th"));
  for (const column of columns) {
    head.append(element("th", column.right ? "right" : "", column.title));
  }
  table.appendChild(element("thead")).append(head);
  const body = table.appendChild(element("tbody"));
  for (const index of order) {
    const row = body.appendChild(element("tr"));
    if (pictures) {
      const canvas = thumbnail(index, 52, 38);
      if (HAS_LINES[index]) draw_thumbnail(canvas);
      row.appendChild(element("td")).append(canvas);
    }
    for (const column of columns) {
      row.append(element("td", column.right ? "right" : "", column.text(PARTS[index])));
    }
  }
  return table;
}

function set_up_printing(table) {
  const paper = document.getElementById("paper");
  const printing = matchMedia("print");
  function fill() {
    if (paper.childElementCount > 0) return;
    paper.append(element("h2", "", "Structure"), printed_tree(),
                 element("h2", "", "Bill of materials"), printed_table(table.order));
  }
  addEventListener("beforeprint", fill);
  addEventListener("afterprint", () => paper.replaceChildren());
  printing.addEventListener("change", () => (printing.matches ? fill() : paper.replaceChildren()));
}
