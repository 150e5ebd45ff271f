#include "exchange/document.h"

#include <charconv>
#include <map>
#include <utility>

#include "text/failure.h"
#include "text/near_names.h"
#include "text/table.h"

namespace vrltool::exchange {

namespace {

constexpr std::size_t kMostElements = 1000000;
char const* const kHint = "a netlist is a map with 'instances', 'nets' or 'connections', and 'ports'";

// The members of a netlist, of an instance, and of "vrl" in both.
std::vector<Shape> const kNetlist{{"name", "n#t"}, {"instances", "nm"},  {"nets", "nl"}, {"connections", "nm"},
                                  {"ports", "nm"}, {"placements", "nm"}, {"vrl", "nm"}};
std::vector<Shape> const kInstance{{"component", "t"}, {"settings", "nm"}, {"info", ""}, {"array", ""}, {"vrl", "m"}};
std::vector<Shape> const kNetlistExtension{
    {"kind", "t"}, {"nodes", "l", "l"}, {"boundary", "m", "l"}, {"parameters", "m", "m"}};
std::vector<Shape> const kInstanceExtension{{"foundry", "t"}, {"nameless", "b"},        {"undeclaredPorts", "l", "t"},
                                            {"origin", "m"},  {"array", "m"},           {"crossSection", "t"},
                                            {"flow", "t"},    {"ports", "m", "m"},      {"parameters", "m", "m"},
                                            {"values", "m"},  {"expressions", "m", "t"}};

/// A document that is being read.
struct Reading {
    Document& document;
    Findings& findings;
    std::size_t elements = 0;  ///< of all arrays

    bool error(Mark const& mark, std::string const& text) {
        findings.add(Severity::kError, document.path, mark, text);
        return false;
    }
    /// Whether a node is of one of the kinds; otherwise it is an error.
    bool check(Node const& node, std::string const& what, std::string_view kinds) {
        std::string const wrong = misfit(what, node, kinds);
        return wrong.empty() || error(node.Mark(), wrong);
    }
    Node newMap() const { return newBeside(document.root, YAML::NodeType::Map); }
};

/// The members of "vrl" that are known and well formed.
Node readExtension(Reading& reading, Node const& extension, std::vector<Shape> const& shapes) {
    Node good = reading.newMap();
    for (auto const& entry : extension) {
        std::string const name = entry.first.Scalar(), what = "'" + name + "' of 'vrl'";
        Shape const* const shape = find(shapes, name);
        if (!shape)
            reading.findings.add(Severity::kWarning, reading.document.path, entry.first.Mark(),
                                 "'vrl' has no member '" + name + "'; it is left out", nearName(shapes, name));
        bool fits = shape && reading.check(entry.second, what, shape->kinds);
        for (auto const& part : entry.second)
            fits = fits && reading.check(entry.second.IsMap() ? part.second : part, "a part of " + what, shape->parts);
        if (fits) good.force_insert(entry.first, entry.second);
    }
    return good;
}

bool readCount(Reading& reading, Instance const& instance, Node const& node, std::size_t& count) {
    if (isNull(node)) return true;
    std::string const& text = node.Scalar();
    char const* const end = text.data() + text.size();
    bool const number = kindOf(node) == Kind::kNumber;
    return (number && std::from_chars(text.data(), end, count).ptr == end && count > 0) ||
           reading.error(node.Mark(), "array of instance '" + instance.name + "': a count is a whole number from 1");
}

/// The size of an array, under one of the pairs of names that are in use. It is bounded before any element is made.
bool readSize(Reading& reading, Instance& instance) {
    static std::pair<char const*, char const*> const pairs[] = {{"columns", "rows"}, {"num_a", "num_b"}, {"na", "nb"}};
    for (Node const& source : {instance.array, instance.others})
        for (auto const& pair : pairs) {
            Node const columns = member(source, pair.first), rows = member(source, pair.second);
            if (!columns.IsDefined() && !rows.IsDefined()) continue;
            return readCount(reading, instance, columns, instance.columns) &&
                   readCount(reading, instance, rows, instance.rows) &&
                   ((instance.columns <= kMostElements && instance.rows <= kMostElements &&
                     (reading.elements += instance.columns * instance.rows) <= kMostElements) ||
                    reading.error(instance.mark, "the arrays up to '" + instance.name + "' have more than " +
                                                     std::to_string(kMostElements) + " elements"));
        }
    std::string const what = "'array' of instance '" + instance.name + "'";
    return isNull(instance.array) ||
           reading.error(instance.array.Mark(), wrongKind(what, instance.array, "a map of 'columns' and 'rows'"));
}

bool readInstance(Reading& reading, Instance& instance) {
    Node const& given = instance.given;
    std::string const what = "instance '" + instance.name + "'";
    bool good =
        isText(given) || isMap(given) || reading.error(given.Mark(), wrongKind(what, given, "a map with 'component'"));
    if (!good) return false;
    for (auto const& part : given) {
        Shape const* const shape = find(kInstance, part.first.Scalar());
        if (!shape) instance.others.force_insert(part.first, part.second);
        if (shape) good = reading.check(part.second, "'" + part.first.Scalar() + "' of " + what, shape->kinds) && good;
    }
    instance.component.reset(isText(given) ? given : member(given, "component"));  // the short form is the component
    instance.settings.reset(isMap(member(given, "settings")) ? member(given, "settings") : reading.newMap());
    instance.info.reset(member(given, "info"));
    instance.array.reset(member(given, "array"));
    instance.extension.reset(readExtension(reading, member(given, "vrl"), kInstanceExtension));
    good = good && (!instance.component.Scalar().empty() || reading.error(instance.mark, what + " names no component"));
    return good && readSize(reading, instance);
}

void readInstances(Reading& reading, Node const& node) {
    for (auto const& entry : node) {
        Instance instance;
        instance.name = entry.first.Scalar();
        instance.mark = entry.first.Mark();
        instance.given.reset(entry.second);
        instance.others.reset(reading.newMap());
        if (readInstance(reading, instance))
            reading.document.instances.push_back(instance);
        else
            reading.document.oddInstances.force_insert(entry.first, entry.second);
    }
}

bool checkPort(Reading& reading, Node const& node, std::string const& what) {
    std::string const is = isText(node) ? "'" + node.Scalar() + "'" : kindWord(kindOf(node));
    return (isText(node) && node.Scalar().find(',') != std::string::npos) ||
           reading.error(node.Mark(), what + " is " + is + ", where \"instance,port\" belongs");
}

void addNet(Reading& reading, bool good, Net const& net) {
    if (good)
        reading.document.nets.push_back(net);
    else
        reading.document.oddNets.push_back(net.given);
}

void readConnections(Reading& reading, Node const& node) {
    reading.document.asConnections = reading.document.nets.empty();
    for (auto const& entry : node) {
        Net net{reading.newMap(), {entry.first, entry.second}, reading.newMap()};
        net.given.force_insert("p1", entry.first);
        net.given.force_insert("p2", entry.second);
        addNet(reading, checkPort(reading, entry.first, "an end") && checkPort(reading, entry.second, "an end"), net);
    }
}

bool readNet(Reading& reading, Net& net) {
    bool good = true;
    auto const read = [&](Node const& port, std::string const& what) {
        good = checkPort(reading, port, what) && good;
        net.ports.push_back(port);
    };
    if (!net.given.IsSequence() && !isMap(net.given))
        return reading.error(net.given.Mark(), wrongKind("a net", net.given, "a map of 'p1' and 'p2'"));
    for (auto const& part : net.given) {
        std::string const name = isMap(net.given) ? part.first.Scalar() : "";
        if (net.given.IsSequence())
            read(part, "an end of a net");
        else if (name == "p1" || name == "p2")
            read(part.second, "'" + name + "'");
        else
            net.others.force_insert(part.first, part.second);
    }
    return good &&
           (net.ports.size() >= 2 ||
            reading.error(net.given.Mark(), "a net has " + counted(net.ports.size(), "end") + " and needs two"));
}

void readNets(Reading& reading, Node const& node) {
    if (node.size() > 0) reading.document.asConnections = false;
    for (Node const& item : node) {
        Net net{item, {}, reading.newMap()};
        bool const good = readNet(reading, net);
        addNet(reading, good, net);
    }
}

void readPorts(Reading& reading, Node const& node) {
    for (auto const& entry : node)
        if (checkPort(reading, entry.second, "the end of outer port '" + entry.first.Scalar() + "'"))
            reading.document.ports.force_insert(entry.first, entry.second);
}

/// Gives each instance its placement.
void readPlacements(Reading& reading, Node const& node) {
    std::map<std::string, Instance*> named;
    for (Instance& instance : reading.document.instances) named[instance.name] = &instance;
    for (auto const& entry : node) {
        auto const found = named.find(entry.first.Scalar());
        if (found == named.end() || isNull(entry.second))
            reading.document.placements.force_insert(entry.first, entry.second);
        else
            found->second->placement.reset(entry.second);
    }
}

void readParts(Reading& reading) {
    Document& document = reading.document;
    Node good = reading.newMap();
    for (auto const& entry : document.root) {
        std::string const name = entry.first.Scalar();
        Shape const* const shape = find(kNetlist, name);
        if (!shape) document.others.force_insert(entry.first, entry.second);
        if (!shape || !reading.check(entry.second, "'" + name + "'", shape->kinds)) continue;
        good.force_insert(entry.first, entry.second);
        if (name == "connections" && !isNull(entry.second)) readConnections(reading, entry.second);
        if (name == "nets") readNets(reading, entry.second);
    }
    document.name = member(good, "name").Scalar();
    readInstances(reading, member(good, "instances"));
    readPorts(reading, member(good, "ports"));
    readPlacements(reading, member(good, "placements"));
    document.extension.reset(readExtension(reading, member(good, "vrl"), kNetlistExtension));
}

/// Fails for a file that holds no netlist, or several under names.
void refuseOtherShapes(Node const& root, std::string const& path) {
    if (!isMap(root)) throw Failure(path, std::string("holds ") + kindWord(kindOf(root)) + " and no netlist", kHint);
    Node const instances = member(root, "instances");
    if (isMap(instances) || (instances.IsDefined() && isNull(instances))) return;
    if (instances.IsDefined())
        throw Failure(placeText(path, instances.Mark()), wrongKind("'instances'", instances, "a map of names"), kHint);
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

std::vector<std::string> Instance::elementNames() const {
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
