// What is known of the chosen part.

const MOST_PARENTS = 50;

// Shows the part with this index. `choose(part)` is called when a parent of it is pressed.
function show_details(index, choose) {
  const part = PARTS[index];
  const facts = document.getElementById("facts");
  const title = document.getElementById("part-title");
  title.textContent = title.title = title_of(part);
  facts.replaceChildren();

  function add(term, value) {
    const description = element("dd");
    description.append(value);
    facts.append(element("dt", "", term), description);
  }

  if (part.file !== "") add("File", file_link(part));
  if (part.bytes !== null) {
    const exactly = part.bytes < 1000 ? "" : ` (${counted(part.bytes, "byte", "bytes")})`;
    add("Size", size_text(part.bytes) + exactly);
    add("Records", number_text(part.records));
  }
  if (is_assembly(part)) {
    const {bytes, files} = weight_of(index);
    add("With its parts", `${size_text(bytes)} in ${counted(files, "file", "files")}`);
  }
  if (part.external_file) add("Shape in", part.external_file);
  add("Kind", part.kind);
  if (part.id !== "") add("Id", part.id);
  if (part.record !== null) add("Number", `#${part.record}`);
  if (part.box) add("Bounding box", box_text(part));
  else if (part.unit) add("Length unit", part.unit.toLowerCase());
  if (part.not_drawn) add("Not drawn", counted(part.not_drawn, "edge", "edges"));
  add("Uses in the whole", part.total);
  if (part.used_in.length > 0) add("Used in", parents_of(part, choose));
}

function parents_of(part, choose) {
  const parents = element("ul");
  for (const use of part.used_in.slice(0, MOST_PARENTS)) {
    const item = element("li");
    item.append(button(title_of(PARTS[use.part]), () => choose(use.part)),
                use.count > 1 ? ` ×${number_text(use.count)}` : "");
    parents.append(item);
  }
  const more = part.used_in.length - MOST_PARENTS;
  if (more > 0) parents.append(element("li", "", `${number_text(more)} more`));
  return parents;
}
