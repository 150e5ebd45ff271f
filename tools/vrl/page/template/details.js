// What is to be said of an element, of a net, or of the design as a whole. All text of a design becomes text nodes.

const details = document.getElementById("page-details");

// One after the other: a call takes no more than some ten thousands of them.
function appendAll(parent, children) {
  for (const child of children) parent.append(child);
}

// Children are nodes, texts and lists of them.
function make(name, properties, ...children) {
  const node = document.createElement(name);
  for (const [key, value] of Object.entries(properties || {}))
    key in node ? (node[key] = value) : node.setAttribute(key, value);
  appendAll(node, children.flat());
  return node;
}

function faint(text) {
  return make("span", { className: "page-faint" }, text);
}

function link(text, action) {
  const button = make("button", { type: "button", className: "page-link" }, text);
  button.addEventListener("click", action);
  return button;
}

function elementLink(element, text) {
  return link(text || element.path, () => select(element));
}

function counted(count, word) {
  return count + " " + word + (count === 1 ? "" : "s");
}

function headed(title, content) {
  const all = [content].flat();
  return all.length ? [make("h2", {}, title), ...all] : [];
}

function showDetails(...content) {
  details.replaceChildren();
  appendAll(details, content.flat());
}

function table(headings, rows) {
  const head = make("tr", {}, ...headings.map((heading) => make("th", { scope: "col" }, heading)));
  return make("table", {}, make("thead", {}, head), make("tbody", {}, rows));
}

function row(...cells) {
  return make("tr", {}, ...cells.map((cell) => make("td", {}, cell)));
}

function valueRow([place, value]) {
  const parameter = data.parameters[place];
  const differs = parameter.default !== undefined && parameter.default !== value;
  const more = [parameter.description, parameter.range && "range " + parameter.range].filter(Boolean).join("; ");
  const cell = make("span", { className: differs ? "page-differs" : "" }, value);
  const line = row([parameter.name], [cell, ...(differs ? [make("br"), faint("default " + parameter.default)] : [])]);
  if (more) line.title = more;
  return line;
}

function values(list) {
  return list.length ? headed("Parameters", table(["parameter", "value"], list.map(valueRow))) : [];
}

function endText(end) {
  if (end.boundary !== undefined) return end.boundary;
  const port = end.element.kind.ports[end.port];
  return end.element.path + "," + (port ? port.name : "?");
}

function endLine(end) {
  const word = end.inside ? " inside" : end.around ? " of the composite" : "";
  const text = end.boundary !== undefined ? "boundary: " + end.boundary : elementLink(end.element, endText(end));
  return make("div", {}, text, word ? faint(word) : "");
}

function portRow(element, port, place) {
  const partners = partnersOf(element, place);
  const isOpen = partners.every((end) => end.inside);
  const name = port.name + (port.declared === false ? "?" : "");
  const node = element.nodes[place] ? faint("node " + element.nodes[place]) : "";
  return row([name], [port.domain], [isOpen ? make("div", {}, faint("open")) : "", ...partners.map(endLine), node]);
}

function ports(element) {
  const list = element.kind.ports;
  if (!list.length) return [];
  return headed("Ports", table(["port", "domain", "connected to"],
    list.map((port, place) => portRow(element, port, place))));
}

function placeText(finding) {
  return (finding.element || "the design") + (finding.port ? "," + finding.port : "");
}

function findingBlock(finding, withPlace) {
  const target = byPath.get(finding.element);
  const place = target ? elementLink(target, placeText(finding)) : placeText(finding);
  return make("div", { className: "page-finding" },
    make("p", {},
      make("span", { className: "page-severity " + finding.severity }, finding.severity), " ",
      ...(withPlace ? [place, ": "] : finding.port ? [finding.port + ": "] : []),
      finding.what, " ", faint("[" + finding.rule + "]")),
    make("p", { className: "page-faint" }, finding.hint || ""),
    ...(finding.reason ? [make("p", { className: "page-faint" }, "excepted: " + finding.reason)] : []));
}

function findingBlocks(list, path) {
  return headed("Findings", list.map((finding) => findingBlock(finding, finding.element !== path)));
}

function kindLine(element) {
  const kind = element.kind;
  if (!kind.name) return "no block";
  return kind.name + (kind.foundry ? " of " + kind.foundry : "") + (kind.loaded === false ? " (not loaded)" : "");
}

function insideLines(element) {
  if (!element.inside) return [];
  const text = "Composite of " + counted(element.inside.elements.length, "element");
  if (!isFrame(element)) return [make("p", {}, text)];
  return [make("p", {}, text + " ", link(isOpen(element) ? "close" : "open", () => setOpen(element, !isOpen(element))))];
}

function showElement(element) {
  const parent = element.circuit.parent;
  showDetails(
    make("h1", {}, element.name),
    (parent ? [make("p", {}, faint("inside "), elementLink(parent))] : []),
    make("p", {}, kindLine(element)),
    (element.kind.description ? [make("p", { className: "page-faint" }, element.kind.description)] : []),
    insideLines(element),
    (drawn(element) ? [] : [make("p", { className: "page-faint" }, "Not in the picture.")]),
    findingBlocks(element.findings, element.path), values(element.values), ports(element));
}

function showNet(owner, node) {
  showDetails(make("h1", {}, "N" + node),
    make("p", {}, owner.parent ? "A net inside " + owner.parent.path : "A net"),
    headed("Connects", endsAt(owner, node).map(endLine)));
}

function showDesign() {
  const top = circuit.elements.length;
  const inside = elements.length - top;
  showDetails(
    make("h1", {}, data.title),
    make("p", {}, `${data.file}: ${data.type} of ${counted(top, "element")}` + (inside ? `, ${inside} inside composites` : "")),
    data.notes.map((note) => make("p", { className: "page-faint" }, note)),
    make("p", { className: "page-faint" },
      "Click a block, a wire or an element of the list. Drag and turn the wheel to look around; keys: " +
      "/ searches, + - 0 zoom, arrows walk along the elements."),
    (data.failure ? [make("p", {}, "Not checked: " + data.failure)] : []),
    findingBlocks(designFindings, undefined), values(data.values));
}

function showMissing(path) {
  showDetails(make("h1", {}, path), make("p", {}, "The design has no element of this name."));
}
