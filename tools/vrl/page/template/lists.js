// The lists at the left: the tree of elements, the findings, and what a search found.

const tree = document.getElementById("page-tree");
const search = document.getElementById("page-search");
const rows = new Map();      // the items of the tree that exist, by element
const closed = new Set();    // composites
const kStartClosed = 500;    // elements, past which composites are closed at first
const kAtOnce = 200;         // entries of a list that are made in one go

let hits = [];
let hit = -1;

function isOpen(element) {
  return !closed.has(element);
}

// Fills a list, the first entries at once and more at a click.
function fill(list, entries, toNode) {
  appendAll(list, entries.slice(0, kAtOnce).map(toNode));
  const rest = entries.slice(kAtOnce);
  if (!rest.length) return;
  const more = make(list.localName === "ol" ? "li" : "p", {});
  more.append(link(rest.length + " more", () => { more.remove(); fill(list, rest, toNode); }));
  list.append(more);
}

function treeItem(element) {
  const severity = severityOf(element);
  const turner = make("span", { className: "page-turner" });
  const line = make("div", { className: "page-row" }, turner,
    ...(severity ? [make("span", { className: "page-dot " + severity, title: severity })] : []),
    make("span", {}, element.name), " ", faint(element.kind.name));
  const item = make("li", { role: "treeitem", tabIndex: -1, "aria-selected": "false" }, line);
  item.element = element;
  rows.set(element, item);
  if (element.inside) showTurner(item);
  return item;
}

// Whether a composite is open, and if it is, the items inside, which are made then.
function showTurner(item) {
  const open = isOpen(item.element);
  item.setAttribute("aria-expanded", open);
  item.querySelector(".page-turner").textContent = open ? "\u25be" : "\u25b8";
  let group = item.querySelector(":scope > ul");
  if (open && !group) {
    group = make("ul", { role: "group" });
    appendAll(group, inOrder(item.element.inside.elements).map(treeItem));
    item.append(group);
  }
  if (group) group.hidden = !open;
}

function setOpen(element, open) {
  if (!element.inside || isOpen(element) === open) return;
  open ? closed.delete(element) : closed.add(element);
  showInside(element, open);
  if (rows.has(element)) showTurner(rows.get(element));
  if (chosen === element) showElement(element);
}

function setAllOpen(open) {
  for (const element of elements) setOpen(element, open);
}

// Makes the item of an element, which needs all around it to be open.
function itemOf(element) {
  for (const composite of ancestorsOf(element)) setOpen(composite, true);
  return rows.get(element);
}

function selectItem(element) {
  for (const item of tree.querySelectorAll("[aria-selected=true]")) item.setAttribute("aria-selected", "false");
  for (const item of tree.querySelectorAll("[tabindex='0']")) item.tabIndex = -1;
  const item = element ? itemOf(element) : tree.firstElementChild;
  if (!item) return;
  item.tabIndex = 0;
  if (!element) return;
  item.setAttribute("aria-selected", "true");
  item.querySelector(".page-row").scrollIntoView({ block: "nearest" });
}

function focusItem(item) {
  if (item) item.focus();
}

function visibleItems() {
  return [...tree.querySelectorAll("li")].filter((item) => !item.parentElement.closest("ul[hidden]"));
}

function step(item, by) {
  const all = visibleItems();
  focusItem(all[all.indexOf(item) + by]);
}

const treeKeys = {
  ArrowDown: (item) => step(item, 1),
  ArrowUp: (item) => step(item, -1),
  Home: () => focusItem(tree.firstElementChild),
  End: () => focusItem(visibleItems().pop()),
  Enter: (item) => select(item.element),
  " ": (item) => select(item.element),
  ArrowRight(item) {
    if (!item.element.inside) return;
    if (isOpen(item.element)) focusItem(item.querySelector("li"));
    else setOpen(item.element, true);
  },
  ArrowLeft(item) {
    if (item.element.inside && isOpen(item.element)) setOpen(item.element, false);
    else focusItem(item.parentElement.closest("li"));
  },
};

function fillTree() {
  if (elements.length > kStartClosed)
    for (const element of elements)
      if (element.inside) {
        closed.add(element);
        showInside(element, false);
      }
  appendAll(tree, inOrder(circuit.elements).map(treeItem));
  document.getElementById("page-element-count").textContent = "Elements (" + elements.length + ")";
  tree.addEventListener("click", (event) => {
    const item = event.target.closest("li");
    if (!item) return;
    if (event.target.closest(".page-turner") && item.element.inside) setOpen(item.element, !isOpen(item.element));
    else select(item.element);
  });
  tree.addEventListener("keydown", (event) => {
    const item = event.target.closest("li");
    if (!item || !treeKeys[event.key]) return;
    event.preventDefault();
    event.stopPropagation();
    treeKeys[event.key](item);
  });
}

// The findings of one rule; more than a few are made when they are wanted.
function findingGroup(name, list) {
  const kFew = 5;
  const severity = list[0].severity;
  const group = make("details", {}, make("summary", {},
    make("span", { className: "page-severity " + severity }, severity),
    ` ${name}: ${data.titles[list[0].rule]} (${list.length})`));
  const fillOnce = () => { if (group.children.length === 1) fill(group, list, (one) => findingBlock(one, true)); };
  group.addEventListener("toggle", fillOnce);
  if (list.length <= kFew) {
    fillOnce();
    group.open = true;
  }
  return group;
}

function fillFindings() {
  const place = document.getElementById("page-findings");
  for (const severity of kSeverities) {
    const groups = groupedBy(data.findings.filter((f) => f.severity === severity).map((f) => [f.rule, f]));
    for (const rule of [...groups.keys()].sort()) place.append(findingGroup(rule, groups.get(rule)));
  }
  if (data.failure) place.append(make("p", {}, "Not checked: " + data.failure));
  else if (!data.findings.length) place.append(make("p", {}, "No findings"));
  if (data.excepted.length) {
    const group = make("details", {}, make("summary", {}, `excepted (${data.excepted.length})`));
    fill(group, data.excepted, (one) => findingBlock(one, true));
    place.append(group);
  }
  document.getElementById("page-finding-count").textContent = "Findings (" + data.findings.length + ")";
}

function showHitCount() {
  const text = !search.value.trim() ? "" : !hits.length ? "Nothing found"
    : hit < 0 ? counted(hits.length, "element") : `${hit + 1} of ${counted(hits.length, "element")}`;
  document.getElementById("page-hit-count").textContent = text;
}

function runSearch(text) {
  search.value = text;
  hits = found(text);
  hit = -1;
  const list = document.getElementById("page-hits");
  list.replaceChildren();
  fill(list, hits, (element) => make("li", {}, elementLink(element), " ", faint(element.kind.name)));
  highlightHits(hits);
  showHitCount();
}

function nextHit(by) {
  if (!hits.length) return;
  hit = hit < 0 && by < 0 ? hits.length - 1 : (hit + by + hits.length) % hits.length;
  showHitCount();
  select(hits[hit]);
}
