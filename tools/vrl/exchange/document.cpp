#include "exchange/document.h"

#include <charconv>
#include <utility>

#include "text/failure.h"
#include "text/near_names.h"
#include "text/table.h"

namespace vrltool::exchange {

namespace {

using Shapes = std::vector<Shape>;

constexpr std::size_t kMostElements = 100000;  // of all arrays: a short line must not fill the memory
char const* const kHint = "a netlist is a map with 'instances', 'nets' or 'connections', and 'ports'";

// The members of a netlist, of an instance, and of "vrl" in both.
Shapes const kNetlist{{"name", "n#t"}, {"instances", "nm"},  {"nets", "nl"}, {"connections", "nm"},
                      {"ports", "nm"}, {"placements", "nm"}, {"vrl", "nm"}};
Shapes const kInstance{{"component", "t"}, {"settings", "nm"}, {"info", ""}, {"array", ""}, {"vrl", "m"}};
Shapes const kOfNetlist{{"kind", "t"}, {"nodes", "l", "l"}, {"boundary", "m", "l"}, {"parameters", "m", "m"}};
Shapes const kOfInstance{{"foundry", "t"}, {"nameless", "b"},        {"undeclaredPorts", "l", "t"},
                         {"origin", "m"},  {"array", "m"},           {"crossSection", "t"},
                         {"flow", "t"},    {"ports", "m", "m"},      {"parameters", "m", "m"},
                         {"values", "m"},  {"expressions", "m", "t"}};

/// A document that is being read.
struct Reading {
    Document& document;
    Findings& findings;
    std::size_t elements = 0;  ///< of all arrays

    bool error(Node const& node, std::string const& text) {
        findings.add(Severity::kError, document.path, node.Mark(), text);
        return false;
    }
    /// Whether a node is of one of the kinds; otherwise it is an error.
    bool check(Node const& node, std::string const& what, std::string_view kinds) {
        std::string const wrong = misfit(what, node, kinds);
        return wrong.empty() || error(node, wrong);
    }
    Node newMap() const { return newBeside(document.root, YAML::NodeType::Map); }

    /// The members of a map that have one of the shapes; `others` gets those of other names. `good` becomes false for
    /// what has not its shape.
    Node parts(Node const& map, Shapes const& shapes, std::string const& of, Node others, bool& good) {
        Node result = newMap();
        for (auto const& entry : map) {
            std::string const what = "'" + entry.first.Scalar() + "'" + of;
            Shape const* const shape = find(shapes, entry.first.Scalar());
            bool fits = shape && check(entry.second, what, shape->kinds);
            for (auto const& part : entry.second)
                fits = fits && check(entry.second.IsMap() ? part.second : part, "a part of " + what, shape->parts);
            if (fits || !shape) (shape ? result : others).force_insert(entry.first, entry.second);
            good = good && (fits || !shape);
        }
        return result;
    }
};

/// The members of "vrl" that are known and well formed.
Node readExtension(Reading& reading, Node const& extension, Shapes const& shapes) {
    bool good = true;
    Node const unknown = reading.newMap(), known = reading.parts(extension, shapes, " of 'vrl'", unknown, good);
    for (auto const& entry : unknown)
        reading.findings.add(Severity::kWarning, reading.document.path, entry.first.Mark(),
                             "'vrl' has no member '" + entry.first.Scalar() + "'; it is left out",
                             nearName(shapes, entry.first.Scalar()));
    return known;
}

/// The size of an array, under one of the pairs of names that are in use. It is bounded before any element is made.
bool readSize(Reading& reading, Instance& instance, Node const& array) {
    static std::pair<char const*, char const*> const pairs[] = {{"columns", "rows"}, {"num_a", "num_b"}, {"na", "nb"}};
    std::string const name = "instance '" + instance.name.Scalar() + "'";
    auto const count = [&](Node const& node, std::size_t& size) {
        std::string const& text = node.Scalar();
        bool const number = kindOf(node) == Kind::kNumber;
        auto const end = std::from_chars(text.data(), text.data() + text.size(), size).ptr;
        return isNull(node) || (number && end == text.data() + text.size() && size > 0) ||
               reading.error(node, "array of " + name + ": a count is a whole number from 1");
    };
    for (Node const& source : {array, instance.others})
        for (auto const& pair : pairs) {
            Node const columns = member(source, pair.first), rows = member(source, pair.second);
            if (!columns.IsDefined() && !rows.IsDefined()) continue;
            if (!count(columns, instance.columns) || !count(rows, instance.rows)) return false;
            bool const bounded = instance.columns <= kMostElements && instance.rows <= kMostElements &&
                                 (reading.elements += instance.columns * instance.rows) <= kMostElements;
            return bounded ||
                   reading.error(instance.name, "the arrays up to '" + instance.name.Scalar() + "' have more than " +
                                                    std::to_string(kMostElements) + " elements");
        }
    return isNull(array) ||
           reading.error(array, wrongKind("'array' of " + name, array, "a map of 'columns' and 'rows'"));
}

bool readInstance(Reading& reading, Instance& instance) {
    Node const& given = instance.given;
    std::string const what = "instance '" + instance.name.Scalar() + "'";
    bool good = isText(given) || isMap(given) || reading.error(given, wrongKind(what, given, "a map with 'component'"));
    if (!good) return false;
    Node const parts = reading.parts(given, kInstance, " of " + what, instance.others, good);
    instance.component.reset(isText(given) ? given : member(parts, "component"));  // the short form is the component
    instance.settings.reset(isMap(member(parts, "settings")) ? member(parts, "settings") : reading.newMap());
    instance.extension.reset(readExtension(reading, member(parts, "vrl"), kOfInstance));
    bool const named = !instance.component.Scalar().empty();
    if (good && !named) reading.error(instance.name, what + " names no component");
    return good && named && readSize(reading, instance, member(given, "array"));
}

bool checkPort(Reading& reading, Node const& node, std::string const& what) {
    std::string const is = isText(node) ? "'" + node.Scalar() + "'" : kindWord(kindOf(node));
    return (isText(node) && node.Scalar().find(',') != std::string::npos) ||
           reading.error(node, what + " is " + is + ", where \"instance,port\" belongs");
}

bool readNet(Reading& reading, Net& net) {
    bool good = isMap(net.given) || net.given.IsSequence() ||
                reading.error(net.given, wrongKind("a net", net.given, "a map of 'p1' and 'p2'"));
    for (auto const& part : net.given) {
        bool const map = isMap(net.given);
        std::string const name = map ? part.first.Scalar() : "";
        Node const& port = map ? part.second : part;
        if (map && name != "p1" && name != "p2") {
            net.others.force_insert(part.first, port);
            continue;
        }
        good = checkPort(reading, port, map ? "'" + name + "'" : "an end of a net") && good;
        net.ports.push_back(port);
    }
    return good && (net.ports.size() >= 2 ||
                    reading.error(net.given, "a net has " + counted(net.ports.size(), "end") + " and needs two"));
}

void addNet(Reading& reading, bool good, Net const& net) {
    if (good)
        reading.document.nets.push_back(net);
    else
        reading.document.oddNets.push_back(net.given);
}

void readNets(Reading& reading, Node const& nets) {
    if (nets.size() > 0) reading.document.asConnections = false;
    for (Node const& item : nets) {
        Net net{item, {}, reading.newMap()};
        bool const good = readNet(reading, net);
        addNet(reading, good, net);
    }
}

void readConnections(Reading& reading, Node const& connections) {
    if (isMap(connections)) reading.document.asConnections = reading.document.nets.empty();
    for (auto const& entry : connections) {
        Node const &p1 = entry.first, &p2 = entry.second;
        Net net{reading.newMap(), {p1, p2}, reading.newMap()};
        net.given.force_insert("p1", p1);
        net.given.force_insert("p2", p2);
        addNet(reading, checkPort(reading, p1, "an end") && checkPort(reading, p2, "an end"), net);
    }
}

void readParts(Reading& reading) {
    Document& document = reading.document;
    bool good = true;
    Node const parts = reading.parts(document.root, kNetlist, "", document.others, good);
    document.name = member(parts, "name").Scalar();
    document.extension.reset(readExtension(reading, member(parts, "vrl"), kOfNetlist));
    std::map<std::string, Node> placed;
    for (auto const& entry : member(parts, "placements")) placed.emplace(entry.first.Scalar(), entry.second);
    for (auto const& entry : member(parts, "instances")) {
        Instance instance{entry.first, entry.second, {}, {}, {}, reading.newMap(), {}};
        if (!readInstance(reading, instance)) {
            document.oddInstances.force_insert(entry.first, entry.second);
            continue;
        }
        auto const place = placed.find(entry.first.Scalar());
        if (place != placed.end() && !isNull(place->second)) instance.placement.reset(place->second);
        if (!isNull(instance.placement)) placed.erase(place);
        document.instances.push_back(instance);
    }
    for (auto const& entry : member(parts, "placements"))
        if (placed.count(entry.first.Scalar())) document.placements.force_insert(entry.first, entry.second);
    for (auto const& entry : parts) {  // in the order of the file
        if (entry.first.Scalar() == "connections") readConnections(reading, entry.second);
        if (entry.first.Scalar() == "nets") readNets(reading, entry.second);
    }
    for (auto const& entry : member(parts, "ports"))
        if (checkPort(reading, entry.second, "the end of outer port '" + entry.first.Scalar() + "'"))
            document.ports.force_insert(entry.first, entry.second);
}

/// Fails for a file that holds no netlist, or several under names.
void refuseOtherShapes(Node const& root, std::string const& path) {
    if (!isMap(root)) throw Failure(path, std::string("holds ") + kindWord(kindOf(root)) + " and no netlist", kHint);
    Node const instances = member(root, "instances");
    if (instances.IsDefined() && !isMap(instances) && !isNull(instances))
        throw Failure(placeText(path, instances.Mark()), wrongKind("'instances'", instances, "a map of names"), kHint);
    if (instances.IsDefined()) return;
    std::string inner;
    std::vector<std::string> names;
    for (auto const& entry : root) {
        names.push_back(entry.first.Scalar());
        if (member(entry.second, "instances").IsDefined())
            inner += (inner.empty() ? "'" : ", '") + printable(names.back()) + "'";
    }
    if (!inner.empty()) throw Failure(path, "holds netlists by name: " + inner, "give each of them a file of its own");
    auto const near = nearNames("instances", names);
    throw Failure(path, "has no 'instances'", near.empty() ? kHint : "is '" + near.front() + "' meant for it?");
}

}  // namespace

std::vector<std::string> elementNames(std::string const& name, std::size_t columns, std::size_t rows) {
    if (columns * rows == 1) return {name};
    std::vector<std::string> names;
    for (std::size_t i = 0; i < columns * rows; ++i)
        names.push_back(name + "<" + std::to_string(i / rows) + "." + std::to_string(i % rows) + ">");
    return names;
}

Document readDocument(std::string const& path, Findings& findings) {
    Document document;
    document.path = path;
    document.root.reset(readFile(path));
    refuseOtherShapes(document.root, path);
    Reading reading{document, findings};
    for (Node* const map : {&document.ports, &document.others, &document.placements, &document.oddInstances})
        map->reset(reading.newMap());
    document.oddNets.reset(newBeside(document.root, YAML::NodeType::Sequence));
    readParts(reading);
    return document;
}

}  // namespace vrltool::exchange
