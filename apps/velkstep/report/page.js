// Puts the page together: whatever is chosen in one place is shown in the others.

const PHONE = matchMedia("(max-width: 48rem)");

function show_page() {
  document.body.classList.toggle("no-pictures", !HAS_PICTURES);
  show_about();
  show_findings();
  const details = document.getElementById("details");
  const preview = HAS_PICTURES
    ? new Preview(document.getElementById("preview"), (way) => tree.reveal(way)) : null;
  document.getElementById("preview").hidden = preview === null;
  document.getElementById("divider-details").hidden = preview === null;
  document.getElementById("map-colours").hidden = preview === null;

  const choose = (part) => tree.reveal(way_to(part));
  const treemap = new Treemap(document.getElementById("treemap"), choose);
  const table = set_up_table(choose);
  let tab = "tree";
  let is_first = true;
  const tree = new Tree(document.getElementById("tree"), (way) => {
    const part = way[way.length - 1];
    show_details(part, choose);
    treemap.mark(part);
    table.mark(part);
    preview?.show(way);
    place_details();
    if (!is_first) history.replaceState(null, "", `#part=${address_of(part)}`);
    is_first = false;
  }, (way) => preview?.hover(way));

  // On a narrow page the details are directly below the chosen row.
  function place_details() {
    const lists = {tree: tree.list, bom: table.list};
    const list = PHONE.matches && lists[tab]?.gap.behind >= 0 ? lists[tab] : null;
    const home = list?.box ?? document.getElementById("panes");
    if (details.parentElement !== home) home.append(details);
    details.classList.toggle("inline", list !== null);
    for (const one of Object.values(lists)) one.gap.height = one === list ? details.offsetHeight : 0;
    if (list) {
      const top = list.top_of(list.gap.behind) + list.height;
      details.style.top = `${list.space.offsetTop + top}px`;
    }
  }
  function place_again() {
    place_details();
    tree.list.draw();
    table.list.draw();
  }
  new ResizeObserver(place_again).observe(details);
  PHONE.addEventListener("change", place_again);

  const open_tab = set_up_tabs((name) => {
    tab = name;
    place_again();
    tree.list.bring_in_sight(tree.active);
    table.mark(table.chosen);
  });
  set_up_divider("divider", "--lists", true, 50);
  set_up_divider("divider-details", "--preview", false, 60);
  set_up_printing(table);
  const search = new Search(choose, () => {
    open_tab("tree");
    document.getElementById("tree").focus();
  });
  document.getElementById("expand").addEventListener("click", () => tree.expand_all());
  document.getElementById("collapse").addEventListener("click", () => tree.collapse_all());
  addEventListener("keydown", (event) => {
    if (event.ctrlKey || event.altKey || event.metaKey || event.target.closest?.("input")) return;
    if (event.key === "/") {
      event.preventDefault();
      search.field.select();
      search.field.focus();
    } else if (event.key === "*") {
      open_tab("tree");
      tree.toggle_all();
    }
  });
  addEventListener("hashchange", () => {
    if (part_in_address() >= 0) choose(part_in_address());
  });

  tree.open(0);
  const asked = part_in_address();
  if (asked < 0) tree.activate(0);
  else choose(asked);
  return {tree, table, treemap, preview};
}

const PAGE = show_page();
