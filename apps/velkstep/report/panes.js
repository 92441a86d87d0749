// The parts of the page: tabs, and the bars between panes, which move by mouse and by keys.

// `shown(name)` is called when a tab is opened.
function set_up_tabs(shown) {
  const tabs = [...document.querySelectorAll("[role=tab]")];
  const visible = () => tabs.filter((tab) => !tab.hidden);
  function open(tab) {
    for (const one of tabs) {
      const chosen = one === tab;
      one.setAttribute("aria-selected", chosen);
      one.tabIndex = chosen ? 0 : -1;
      document.getElementById(one.getAttribute("aria-controls")).hidden = !chosen;
    }
    shown(tab.id.replace("tab-", ""));
  }
  for (const tab of tabs) {
    tab.addEventListener("click", () => open(tab));
    tab.addEventListener("keydown", (event) => {
      const list = visible(), at = list.indexOf(tab);
      const to = {ArrowRight: at + 1, ArrowLeft: at - 1 + list.length, Home: 0,
                  End: list.length - 1}[event.key];
      if (to === undefined) return;
      event.preventDefault();
      list[to % list.length].focus();
      open(list[to % list.length]);
    });
  }
  return (name) => open(document.getElementById(`tab-${name}`));
}

// A bar that sets a variable of the page's style to a percentage of what is around it.
function set_up_divider(id, variable, vertical, usual) {
  const bar = document.getElementById(id);
  const [least, most] = [15, 85];
  let share = usual;
  function set(value) {
    share = clamped(value, least, most);
    document.documentElement.style.setProperty(variable, `${share}%`);
    bar.setAttribute("aria-valuenow", Math.round(share));
  }
  bar.setAttribute("aria-valuemin", least);
  bar.setAttribute("aria-valuemax", most);
  set(usual);
  // What the pointer's place is of what is around the bar, in percent.
  const place_of = (event) => {
    const around = bar.parentElement.getBoundingClientRect();
    return 100 * (vertical ? (event.clientX - around.left) / around.width
                           : (event.clientY - around.top) / around.height);
  };
  let grip = 0;  // from the share to where the bar was taken
  bar.addEventListener("pointerdown", (event) => {
    bar.setPointerCapture(event.pointerId);
    grip = place_of(event) - share;
    event.preventDefault();
    bar.focus();
  });
  bar.addEventListener("pointermove", (event) => {
    if (bar.hasPointerCapture(event.pointerId)) set(place_of(event) - grip);
  });
  bar.addEventListener("dblclick", () => set(usual));
  bar.addEventListener("keydown", (event) => {
    const back = vertical ? "ArrowLeft" : "ArrowUp", on = vertical ? "ArrowRight" : "ArrowDown";
    const to = {[back]: share - 2, [on]: share + 2, Home: least, End: most, Enter: usual}[event.key];
    if (to === undefined) return;
    event.preventDefault();
    set(to);
  });
}
