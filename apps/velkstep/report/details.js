// What is known of the chosen part.

const MOST_PARENTS = 50;

// Shows the part with this index. `choose(part)` is called when a parent of it is pressed.
function show_details(index, choose) {
  const part = PARTS[index];
  const facts = document.getElementById("facts");
  document.getElementById("part-title").textContent = title_of(part);
  facts.replaceChildren();

  function add(term, value) {
    const description = element("dd");
    description.append(value);
    facts.append(element("dt", "", term), description);
  }

  if (part.file !== "") {
    const link = element("a", "", part.file);
    link.href = link_to(part.file);
    add("File", link);
  }
  if (part.bytes !== null) {
    const exactly = part.bytes < 1000 ? "" : ` (${counted(part.bytes, "byte", "bytes")})`;
    add("Size", size_text(part.bytes) + exactly);
    add("Records", number_text(part.records));
  }
  add("Kind", part.kind);
  if (part.external_file !== undefined) add("Shape in", part.external_file);
  if (part.id !== "") add("Id", part.id);
  if (part.record !== null) add("Record", `#${part.record}`);
  add("Uses in the whole", part.total);
  if (part.used_in.length === 0) return;
  const parents = element("ul");
  for (const use of part.used_in.slice(0, MOST_PARENTS)) {
    const parent = element("button", "", title_of(PARTS[use.part]));
    parent.type = "button";
    parent.addEventListener("click", () => choose(use.part));
    const item = element("li");
    item.append(parent, use.count > 1 ? ` ×${number_text(use.count)}` : "");
    parents.append(item);
  }
  const more = part.used_in.length - MOST_PARENTS;
  if (more > 0) parents.append(element("li", "", `${number_text(more)} more`));
  add("Used in", parents);
}
