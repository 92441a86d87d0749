// Puts the page together: whatever is chosen in one place is shown in the others.

function show_page() {
  const files = PARTS.filter((part) => part.bytes !== null);
  const bytes = files.reduce((sum, part) => sum + part.bytes, 0);
  document.title = `${REPORT.input} – split report`;
  document.getElementById("title").textContent = REPORT.input;
  document.getElementById("summary").textContent =
    `${counted(files.length, "file", "files")}, ${size_text(bytes)}; ` +
    `assemblies ${REPORT.assemblies}, names ${REPORT.names}`;

  const reveal = (part) => tree.reveal(part);
  const treemap = new Treemap(document.getElementById("treemap"), reveal);
  const tree = new Tree(document.getElementById("tree"), (part) => {
    show_details(part, reveal);
    treemap.mark(part);
  });
  set_up_search(reveal);
  show_legend();
  tree.open(0);
  tree.activate(0);
}

show_page();
