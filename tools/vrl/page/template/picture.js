// The picture: where it is looked at, what is chosen in it, and which composites are closed.

const picture = document.getElementById("page-picture");
const view = document.getElementById("page-view");
const box = picture.viewBox.baseVal;
const kLegible = 1;      // pixels for a point at which all text is read with ease
const kFar = 0.35;       // at which small text is not
const kFarther = 0.15;   // at which no text is

const zoom = d3.zoom().clickDistance(4).on("zoom", showTransform);
const shown = d3.select(picture).call(zoom).on("dblclick.zoom", null);

function drawn(element) {
  return document.getElementById(element.id);
}

// Pixels for a point while everything is shown.
function fitScale() {
  return Math.min(picture.clientWidth / box.width, picture.clientHeight / box.height) || 1;
}

function showTransform() {
  const transform = d3.zoomTransform(picture);
  view.setAttribute("transform", transform);
  const scale = transform.k * fitScale();
  picture.classList.toggle("page-far", scale < kFar);
  picture.classList.toggle("page-farther", scale < kFarther);
  if (places.length && !waiting) waiting = requestAnimationFrame(showNear);
}

// Of a large picture, texts and ports are shown only where somebody looks; all of them would take seconds.
const near = new Set();
const places = picture.classList.contains("page-sparse") ? placesOf(view.children) : [];
let waiting = 0;

function placesOf(items) {
  return [...items].filter((item) => !item.classList.contains("wire")).map((item) => {
    const shape = item.querySelector("rect, text, path");
    const start = shape?.getAttribute("d")?.match(/^M(-?\d+),(-?\d+)/) || [];
    const side = (name, other) => Number(shape?.getAttribute(name) ?? other ?? 0);
    return { item, x: side("x", start[1]), y: side("y", start[2]), width: side("width"), height: side("height") };
  });
}

function showNear() {
  waiting = 0;
  const transform = d3.zoomTransform(picture);
  const scale = transform.k * fitScale();
  const [midX, midY] = transform.invert([box.x + box.width / 2, box.y + box.height / 2]);
  const [reachX, reachY] = [picture.clientWidth / scale, picture.clientHeight / scale];
  for (const { item, x, y, width, height } of places) {
    const isNear = scale >= kFarther && x < midX + reachX && x + width > midX - reachX &&
      y < midY + reachY && y + height > midY - reachY;
    if (isNear === near.has(item)) continue;
    item.classList.toggle("page-near", isNear);
    isNear ? near.add(item) : near.delete(item);
  }
}

function adaptZoom() {
  zoom.scaleExtent([0.5, Math.max(8 / fitScale(), 4)]);
  showTransform();
}

function bodyOf(item) {
  const rect = item.querySelector(":scope > .body") || item;
  return rect.getBBox();
}

// Brings an item to the middle, at a scale at which it is legible and as a whole in sight.
function centre(item) {
  const body = bodyOf(item);
  const fit = fitScale();
  const most = 0.9 * Math.min(picture.clientWidth / fit / body.width, picture.clientHeight / fit / body.height);
  const scale = Math.min(Math.max(d3.zoomTransform(picture).k, kLegible / fit), most);
  const x = box.x + box.width / 2 - scale * (body.x + body.width / 2);
  const y = box.y + box.height / 2 - scale * (body.y + body.height / 2);
  shown.call(zoom.transform, d3.zoomIdentity.translate(x, y).scale(scale));
}

function fitAll() {
  shown.call(zoom.transform, d3.zoomIdentity);
}

function clearClass(name) {
  for (const item of view.querySelectorAll("." + name)) item.classList.remove(name);
}

// The element itself, or the innermost composite around it that is drawn; null if neither is.
function drawnAround(element) {
  for (let each = element; each; each = each.circuit.parent) {
    const item = drawn(each);
    if (item) return item;
  }
  return null;
}

function highlight(element) {
  clearClass("page-chosen");
  clearClass("page-reached");
  const item = element && drawnAround(element);
  if (!item) return null;
  item.classList.add("page-chosen");
  for (const wire of view.querySelectorAll(`[data-ends~="${item.id}"]`)) wire.classList.add("page-reached");
  return item;
}

function highlightHits(hits) {
  clearClass("page-hit");
  for (const hit of hits) drawn(hit)?.classList.add("page-hit");
}

// Whether the picture has the inside of an element.
function isFrame(element) {
  return Boolean(drawn(element)?.classList.contains("frame"));
}

// What is inside a frame comes after it, with ids that begin with its own; the names of its ports stay in sight.
function insideOf(frame) {
  let group = document.getElementById(frame.id + "_inside");
  if (group) return group;
  group = document.createElementNS(picture.namespaceURI, "g");
  group.id = frame.id + "_inside";
  const inside = [];
  for (let next = frame.nextElementSibling; next?.id.startsWith(frame.id + "_"); next = next.nextElementSibling)
    if (!next.classList.contains("edge") || next.id.lastIndexOf("_") !== frame.id.length) inside.push(next);
  frame.after(group);
  appendAll(group, inside);
  return group;
}

function coverOf(frame, name) {
  const body = frame.querySelector(":scope > .body");
  const { x, y, width, height } = boxOf(body);
  const scale = Math.max(1, Math.min((0.8 * width) / (7 * Math.max(name.length, 1)), height / 40));
  const text = document.createElementNS(picture.namespaceURI, "text");
  text.setAttribute("class", "name page-cover");
  text.setAttribute("text-anchor", "middle");
  text.setAttribute("transform", `translate(${x + width / 2} ${y + height / 2 + 4 * scale}) scale(${scale})`);
  text.textContent = name;
  return text;
}

// Shows or hides the inside of a composite; its place stays as large as the inside.
function showInside(element, open) {
  if (!isFrame(element)) return;
  const frame = drawn(element);
  insideOf(frame).setAttribute("display", open ? "inline" : "none");
  frame.classList.toggle("page-closed", !open);
  if (!open && !frame.querySelector(":scope > .page-cover")) frame.append(coverOf(frame, element.name));
}

// A wire that goes on in another row has a turn in each, all with the same number: the next one comes to the middle.
function followTurn(turn) {
  const number = turn.id.match(/^.*turn\d+/)[0];
  const all = [...view.querySelectorAll(".turn")].filter((each) => each.id === number || each.id.startsWith(number + "_"));
  centre(all[(all.indexOf(turn) + 1) % all.length]);
}

// The box of a body; that of a rectangle is known without laying out the picture.
function boxOf(body) {
  if (body.localName !== "rect") return body.getBBox();
  const side = (name) => Number(body.getAttribute(name));
  return { x: side("x"), y: side("y"), width: side("width"), height: side("height") };
}

// A dot at the corner of each block that has errors or warnings.
function markFindings() {
  for (const element of elements) {
    const severity = severityOf(element);
    const body = severity && drawn(element)?.querySelector(":scope > .body");
    if (!body) continue;
    const mark = document.createElementNS(picture.namespaceURI, "circle");
    mark.setAttribute("class", "page-mark " + severity);
    const { x, y, width } = boxOf(body);
    mark.setAttribute("cx", x + width);
    mark.setAttribute("cy", y);
    mark.setAttribute("r", 5);
    body.parentNode.append(mark);
  }
}
