// The search over all parts, opened in the tree or not.

const MOST_RESULTS = 100;

// A text without case and marks, so that "turgriff" finds "Türgriff".
const folded = (text) => text.normalize("NFKD").replace(/\p{M}/gu, "").toLowerCase();

class Search {
  // `choose(part)` is called for a hit that is pressed or gone to, `leave()` when Escape is pressed.
  constructor(choose, leave) {
    this.field = document.getElementById("search");
    this.status = document.getElementById("found");
    this.list = document.getElementById("results");
    this.choose = choose;
    this.leave = leave;
    this.texts = PARTS.map((part) =>
      folded([part.name, part.id, part.file, part.record === null ? "" : `#${part.record}`].join("\n")));
    this.field.addEventListener("input", () => this.search());
    this.field.addEventListener("keydown", (event) => this.press(event));
    this.list.addEventListener("click", (event) => {
      const hit = event.target.closest("[role=option]");
      if (hit) this.go_to([...this.list.children].indexOf(hit));
    });
    this.search();  // A browser may have kept what was typed before the page was loaded again.
  }

  // How well a part's title fits what was typed: 0 is best.
  distance(part, typed) {
    const title = folded(title_of(PARTS[part]));
    return title === typed ? 0 : title.startsWith(typed) ? 1 : title.includes(typed) ? 2 : 3;
  }

  // All parts in whose texts every word occurs, those that fit best first.
  parts_with(words) {
    const typed = words.join(" ");
    const groups = [[], [], [], []];
    this.texts.forEach((text, part) => {
      if (words.every((word) => text.includes(word))) groups[this.distance(part, typed)].push(part);
    });
    return groups.flat();
  }

  search() {
    const words = folded(this.field.value).split(/\s+/).filter(Boolean);
    const found = words.length > 0 ? this.parts_with(words) : [];
    this.hits = found.slice(0, MOST_RESULTS);
    this.at = -1;
    this.list.replaceChildren(...this.hits.map((part, i) => this.hit(part, i)));
    this.list.hidden = this.hits.length === 0;
    this.field.setAttribute("aria-expanded", this.hits.length > 0);
    this.field.removeAttribute("aria-activedescendant");
    if (words.length === 0) this.status.textContent = "";
    else if (this.hits.length === found.length) {
      this.status.textContent = counted(found.length, "part found", "parts found");
    } else {
      this.status.textContent =
        `${number_text(found.length)} parts found, the first ${MOST_RESULTS} are shown`;
    }
  }

  hit(part, i) {
    const item = element("li");
    item.id = `hit-${i}`;
    item.setAttribute("role", "option");
    item.setAttribute("aria-selected", false);
    item.title = title_of(PARTS[part]);
    item.append(element("span", "name", item.title),
                element("span", "size", PARTS[part].file));
    return item;
  }

  // Enter and the arrows go through the hits, round and round.
  press(event) {
    if (event.key === "Escape") {
      this.field.value = "";
      this.search();
      this.leave();
      return;
    }
    const step = event.key === "ArrowDown" || (event.key === "Enter" && !event.shiftKey) ? 1
      : event.key === "ArrowUp" || event.key === "Enter" ? -1 : 0;
    if (step === 0 || this.hits.length === 0) return;
    event.preventDefault();
    const from = this.at < 0 && step < 0 ? 0 : this.at;
    this.go_to((from + step + this.hits.length) % this.hits.length);
  }

  go_to(index) {
    this.list.children[this.at]?.setAttribute("aria-selected", false);
    this.at = index;
    const hit = this.list.children[index];
    hit.setAttribute("aria-selected", true);
    hit.scrollIntoView({block: "nearest"});
    this.field.setAttribute("aria-activedescendant", hit.id);
    this.choose(this.hits[index]);
  }
}
