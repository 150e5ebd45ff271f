// The design: its elements in a list, and what is connected to what.

const data = JSON.parse(document.getElementById("page-data").textContent);
const elements = [];                // all of them, each composite before what is inside
const byPath = new Map();           // of equal paths the first
const byId = new Map();

function groupedBy(pairs) {
  const groups = new Map();
  for (const [key, value] of pairs || []) {
    if (!groups.has(key)) groups.set(key, []);
    groups.get(key).push(value);
  }
  return groups;
}

function addCircuit(source, parent) {
  const circuit = {
    parent,
    boundary: groupedBy(source.boundary),  // names by node
    outer: groupedBy(source.outer),        // ports of the composite by the node inside
    elements: [],
  };
  source.elements.forEach((one, place) => {
    const element = {
      id: (parent ? parent.id + "_e" : "e") + (place + 1),
      path: (parent ? parent.path + "/" : "") + one.name,
      name: one.name,
      kind: data.kinds[one.kind],
      nodes: one.nodes,
      values: one.values || [],
      circuit,
      findings: [],
    };
    circuit.elements.push(element);
    elements.push(element);
    byId.set(element.id, element);
    if (!byPath.has(element.path)) byPath.set(element.path, element);
    if (one.inside) element.inside = addCircuit(one.inside, element);
  });
  return circuit;
}

const circuit = addCircuit(data.circuit, null);
const kSeverities = ["error", "warning", "note"];
const designFindings = [];

// Each element has the findings about it, heaviest first, also those at the other end of a connection.
function distribute(findings) {
  for (const severity of kSeverities)
    for (const finding of findings.filter((each) => each.severity === severity)) {
      const about = new Set([finding.element, ...(finding.others || [])].map((path) => byPath.get(path)));
      for (const element of about) (element ? element.findings : designFindings).push(finding);
    }
}
distribute(data.findings);

// The ports at each node of a circuit.
function netsOf(owner) {
  if (!owner.nets) {
    const ends = [];
    for (const element of owner.elements)
      element.nodes.forEach((node, port) => { if (node) ends.push([node, { element, port }]); });
    owner.nets = groupedBy(ends);
  }
  return owner.nets;
}

// What is at a node: ports, names of the boundary, and the ports of the composite around it.
function endsAt(owner, node) {
  const ends = (netsOf(owner).get(node) || []).slice();
  for (const name of owner.boundary.get(node) || []) ends.push({ boundary: name });
  for (const name of owner.outer.get(node) || [])
    ends.push({ element: owner.parent, port: portNamed(owner.parent, name), around: true });
  return ends;
}

function portNamed(element, name) {
  return element.kind.ports.findIndex((port) => port.name === name);
}

// What a port is connected to, inside its composite too.
function partnersOf(element, port) {
  const node = element.nodes[port];
  const isSelf = (end) => end.element === element && end.port === port && !end.around;
  const partners = node ? endsAt(element.circuit, node).filter((end) => !isSelf(end)) : [];
  if (!element.inside) return partners;
  for (const [inner, names] of element.inside.outer)
    if (names.includes(element.kind.ports[port].name))
      for (const end of netsOf(element.inside).get(inner) || []) partners.push({ ...end, inside: true });
  return partners;
}

function ancestorsOf(element) {
  const list = [];
  for (let each = element.circuit.parent; each; each = each.circuit.parent) list.unshift(each);
  return list;
}

// The heaviest of an element and of all that is inside; null without any that counts.
function severityOf(element) {
  if (element.severity === undefined) {
    const found = new Set((element.inside?.elements || []).map(severityOf).concat(element.findings[0]?.severity));
    element.severity = found.has("error") ? "error" : found.has("warning") ? "warning" : null;
  }
  return element.severity;
}

// As people count: A2 before A10.
function inOrder(list) {
  const parts = new Map(list.map((each) => [each, each.name.split(/(\d+)/)]));
  return list.slice().sort((a, b) => {
    const [x, y] = [parts.get(a), parts.get(b)];
    const at = x.findIndex((part, place) => part !== y[place]);
    if (at < 0 || y[at] === undefined) return x.length - y.length;
    return at % 2 && +x[at] !== +y[at] ? x[at] - y[at] : x[at] < y[at] ? -1 : 1;
  });
}

function valueLine([parameter, value]) {
  return data.parameters[parameter].name + " = " + value;
}

// The elements whose path, kind or parameters have a text, in whatever case.
function found(text) {
  const wanted = text.trim().toLowerCase();
  if (!wanted) return [];
  return elements.filter((element) => {
    element.words ||= [element.path, element.kind.name, ...element.values.map(valueLine)].join("\n").toLowerCase();
    return element.words.includes(wanted);
  });
}
