// What the input says about itself, and what about it deserves a look.

// Why parts have no picture whose shapes are in other files.
function elsewhere_text() {
  const count = PARTS.filter((part) => part.external_file && !part.lines).length;
  if (REPORT.pictures !== "drawn" || count === 0) return "";
  const which = count === 1 ? "the shape of 1 part is" : `the shapes of ${number_text(count)} parts are`;
  return `; ${which} in other files, which report --follow reads, too`;
}

// By what was asked for and came of it.
const WHY_NO_PICTURES = {
  drawn: "; nothing in it can be drawn",
  "no room": "; not drawn, since its lines need more memory than the limit",
  "not asked": "",
};

function show_about() {
  const files = PARTS.filter((part) => part.bytes !== null);
  const bytes = files.reduce((sum, part) => sum + part.bytes, 0);
  document.title = `${REPORT.input} – split report`;
  document.getElementById("title").textContent = REPORT.input;
  document.getElementById("summary").textContent =
    `${counted(files.length, "file", "files")}, ${size_text(bytes)}; ` +
    `assemblies ${REPORT.assemblies}, names ${REPORT.names}` +
    (elsewhere_text() || (HAS_PICTURES ? "" : WHY_NO_PICTURES[REPORT.pictures]));

  const {header} = REPORT;
  const listed = (texts) => texts.filter((text) => text.trim() !== "").join(", ");
  const facts = [
    ["System", listed([...new Set([header.system, header.preprocessor])])],
    ["Author", listed([...header.authors, ...header.organisations])],
    ["Time", header.time.replace("T", " ")],
    ["Schema", listed(header.schemas.map((schema) => schema.replace(/\s*\{.*/, "")))],
    ["Length units", listed(header.units.map((unit) => unit.toLowerCase()))],
    ["Input", `${size_text(header.bytes)}, ${counted(header.records, "record", "records")}`],
  ];
  const list = document.getElementById("about");
  for (const [term, text] of facts) {
    if (text === "") continue;
    const fact = element("div");
    fact.append(element("dt", "", term), element("dd", "", text));
    list.append(fact);
  }
}

function place_text(finding) {
  if (finding.line === 0) return finding.file;
  const file = finding.file === "" ? "" : `${finding.file}, `;
  return `${file}line ${number_text(finding.line)}, column ${number_text(finding.column)}`;
}

function show_findings() {
  const list = document.getElementById("findings");
  for (const finding of REPORT.findings) {
    const item = element("li", finding.severity);
    item.append(element("b", "", finding.severity),
                element("span", "", finding.sentence),
                element("i", "", place_text(finding)));
    list.append(item);
  }
  const tab = document.getElementById("tab-findings");
  tab.hidden = REPORT.findings.length === 0;
  tab.textContent = counted(REPORT.findings.length, "finding", "findings");
}
