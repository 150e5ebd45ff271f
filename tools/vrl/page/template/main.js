// What is chosen, the link to it in the address, and the keys of the page.

let chosen = null;

// Shows an element everywhere; null: the design.
function show(element) {
  chosen = element;
  selectItem(element);
  const item = highlight(element);
  if (item) centre(item);
  element ? showElement(element) : showDesign();
}

function select(element) {
  show(element);
  history.replaceState(null, "", element ? "#element=" + encodeURIComponent(element.path) : "#");
}

function selectNet(wire) {
  const [, around, node] = wire.id.match(/^(?:(.*)_)?n(\d+)(?:_\d+)?$/);
  show(null);
  wire.classList.add("page-reached");
  showNet(around ? byId.get(around).inside : circuit, Number(node));
}

function decoded(text) {
  try {
    return decodeURIComponent(text);
  } catch (_) {  // no such sequence of bytes
    return text;
  }
}

// "#element=PATH&search=TEXT&open=PATH&closed=PATH"; open and closed may come several times.
function followAddress() {
  let path = null;
  for (const part of location.hash.slice(1).split("&")) {
    const at = part.indexOf("=");
    const name = part.slice(0, at);
    const value = decoded(part.slice(at + 1));
    const composite = byPath.get(value);
    if (name === "element") path = value;
    if (name === "search") runSearch(value);
    if ((name === "open" || name === "closed") && composite) setOpen(composite, name === "open");
  }
  const element = byPath.get(path) || null;
  show(element);
  if (path !== null && !element) showMissing(path);
}

picture.addEventListener("click", (event) => {
  const item = event.target.closest(".element, .frame, .wire, .turn");
  if (!item) return select(null);
  if (item.classList.contains("wire")) selectNet(item);
  else if (item.classList.contains("turn")) followTurn(item);
  else select(byId.get(item.id));
});
picture.addEventListener("dblclick", (event) => {
  const element = byId.get(event.target.closest(".frame")?.id);
  if (element) setOpen(element, !isOpen(element));
});

search.addEventListener("input", () => runSearch(search.value));
search.addEventListener("keydown", (event) => {
  if (event.key === "Enter") nextHit(event.shiftKey ? -1 : 1);
});

const keys = {
  "/": () => search.focus(),
  "+": () => shown.call(zoom.scaleBy, 1.5),
  "-": () => shown.call(zoom.scaleBy, 1 / 1.5),
  "0": fitAll,
  "Escape": () => select(null),
};
document.addEventListener("keydown", (event) => {
  const typing = event.target === search && event.key !== "Escape";
  if (typing || event.ctrlKey || event.metaKey || event.altKey || !keys[event.key]) return;
  event.preventDefault();
  keys[event.key]();
});
const buttons = {
  "page-in": keys["+"],
  "page-out": keys["-"],
  "page-fit": fitAll,
  "page-open-all": () => setAllOpen(true),
  "page-close-all": () => setAllOpen(false),
};
for (const [id, action] of Object.entries(buttons)) document.getElementById(id).addEventListener("click", action);

fillTree();
fillFindings();
markFindings();
adaptZoom();
followAddress();
window.addEventListener("resize", adaptZoom);
window.addEventListener("hashchange", followAddress);
