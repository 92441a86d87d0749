// The search over all parts, opened in the tree or not.

const MOST_RESULTS = 100;

// A text without case and marks, so that "turgriff" finds "Türgriff".
const folded = (text) => text.normalize("NFKD").replace(/\p{M}/gu, "").toLowerCase();

// Lists what is found for the words in the field. `choose(part)` is called for a result.
function set_up_search(choose) {
  const field = document.getElementById("search");
  const status = document.getElementById("found");
  const list = document.getElementById("results");
  const texts = PARTS.map((part) =>
    folded([part.name, part.id, part.file, part.record === null ? "" : `#${part.record}`].join("\n")));

  // How well a part's title fits what was typed: 0 is best.
  function distance(part, typed) {
    const title = folded(title_of(PARTS[part]));
    return title === typed ? 0 : title.startsWith(typed) ? 1 : title.includes(typed) ? 2 : 3;
  }

  // All parts in whose texts every word occurs, those that fit best first.
  function parts_with(words) {
    const typed = words.join(" ");
    const groups = [[], [], [], []];
    texts.forEach((text, part) => {
      if (words.every((word) => text.includes(word))) groups[distance(part, typed)].push(part);
    });
    return groups.flat();
  }

  function search() {
    const words = folded(field.value).split(/\s+/).filter(Boolean);
    const found = words.length > 0 ? parts_with(words) : [];
    const some = found.slice(0, MOST_RESULTS);
    list.replaceChildren(...some.map(result));
    list.hidden = some.length === 0;
    if (words.length === 0) status.textContent = "";
    else if (some.length === found.length) {
      status.textContent = counted(found.length, "part found", "parts found");
    } else {
      status.textContent = `${number_text(found.length)} parts found, the first ${MOST_RESULTS} are shown`;
    }
  }

  function result(part) {
    const button = element("button");
    button.type = "button";
    button.append(element("span", "name", title_of(PARTS[part])),
                  element("span", "size", PARTS[part].file));
    button.addEventListener("click", () => choose(part));
    const item = element("li");
    item.append(button);
    return item;
  }

  field.addEventListener("input", search);
  search();  // A browser may have kept what was typed before the page was loaded again.
}
