#include "exchange/document.h"

#include <charconv>

#include "text/failure.h"
#include "text/near_names.h"
#include "text/table.h"

namespace vrltool::exchange {

namespace {

using Shapes = std::vector<Shape>;

constexpr std::size_t kMostElements = 100000;  // of all arrays: a short line must not fill the memory
char const* const kHint = "a netlist is a map with 'instances', 'nets' or 'connections', and 'ports'";
std::pair<char const*, char const*> const kSizes[] = {{"columns", "rows"}, {"num_a", "num_b"}, {"na", "nb"}};

// The members of a netlist, of an instance, and of "vrl" in both.
Shapes const kNetlist{{"name", "n#t"}, {"instances", "nm"},  {"nets", "nl"}, {"connections", "nm"},
                      {"ports", "nm"}, {"placements", "nm"}, {"vrl", "nm"}};
Shapes const kInstance{{"component", "t"}, {"settings", "nm"}, {"array", "nm"}, {"vrl", "m"}};
Shapes const kOfNetlist{{"boundary", "m", "l"}};
Shapes const kOfInstance{{"foundry", "t"}, {"origin", "m"},     {"crossSection", "t"},
                         {"flow", "t"},    {"ports", "m", "m"}, {"values", "m"}};

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

    /// Whether the members of a map have their shapes.
    bool check(Node const& map, std::string const& of, Shapes const& shapes) {
        bool good = true;
        for (auto const& entry : map) {
            std::string const what = "'" + entry.first.Scalar() + "'" + of;
            Shape const* const shape = find(shapes, entry.first.Scalar());
            bool fits = !shape || check(entry.second, what, shape->kinds);
            if (shape && !shape->parts.empty())
                for (auto const& part : entry.second)
                    fits = fits && check(entry.second.IsMap() ? part.second : part, "a part of " + what, shape->parts);
            good = good && fits;
        }
        return good;
    }

    /// The same for "vrl", in which nothing else is known.
    bool checkExtension(Node const& extension, Shapes const& shapes) {
        for (auto const& entry : extension)
            if (!find(shapes, entry.first.Scalar()))
                findings.add(Severity::kWarning, document.path, entry.first.Mark(),
                             "'vrl' has no member '" + entry.first.Scalar() + "'; it is left out",
                             nearName(shapes, entry.first.Scalar()));
        return check(extension, " of 'vrl'", shapes);
    }
};

/// Reads the size of an array, which is bounded before any element is made.
bool readSize(Reading& reading, Instance& instance) {
    std::string const name = "'" + instance.name.Scalar() + "'";
    ArraySize const size = instance.size = arraySizeOf(instance.given);
    if (size.columns == 0 || size.rows == 0)
        return reading.error(instance.name, "array of instance " + name + ": a count is a whole number from 1");
    bool const bounded = size.columns <= kMostElements && size.rows <= kMostElements &&
                         (size.count() == 1 || (reading.elements += size.count()) <= kMostElements);
    return bounded || reading.error(instance.name, "the arrays up to " + name + " have more than " +
                                                       std::to_string(kMostElements) + " elements");
}

bool readInstance(Reading& reading, Instance& instance) {
    Node const& given = instance.given;
    std::string const what = "instance '" + instance.name.Scalar() + "'";
    if (instance.name.Scalar().empty()) return reading.error(instance.name, "an instance has an empty name");
    if (!isString(given) && !isMap(given))
        return reading.error(given, wrongKind(what, given, "a map with 'component'"));
    if (!reading.check(given, " of " + what, kInstance)) return false;
    if (componentOf(given).Scalar().empty()) return reading.error(instance.name, what + " names no component");
    return reading.checkExtension(member(given, "vrl"), kOfInstance) && readSize(reading, instance);
}

bool checkPort(Reading& reading, Node const& node, std::string const& what) {
    std::string const is = isString(node) ? "'" + node.Scalar() + "'" : kindWord(kindOf(node));
    return (isString(node) && node.Scalar().find(',') != std::string::npos) ||
           reading.error(node, what + " is " + is + ", where \"instance,port\" belongs");
}

bool readNet(Reading& reading, Net& net) {
    bool const map = isMap(net.given);
    if (!map && !net.given.IsSequence())
        return reading.error(net.given, wrongKind("a net", net.given, "a map of 'p1' and 'p2'"));
    bool good = true;
    for (auto const& part : net.given) {
        std::string const name = map ? part.first.Scalar() : "";
        if (map && name != "p1" && name != "p2") continue;
        net.ports.push_back(map ? part.second : part);
        good = checkPort(reading, net.ports.back(), map ? "'" + name + "'" : "a port of a net") && good;
    }
    return good && (net.ports.size() >= 2 ||
                    reading.error(net.given, "a net has " + counted(net.ports.size(), "port") + " and needs two"));
}

void readNets(Reading& reading, Node const& nets) {
    if (nets.size() > 0) reading.document.asConnections = false;
    for (Node const& item : nets) {
        Net net{item, {}, false};
        net.good = readNet(reading, net);
        reading.document.nets.push_back(net);
    }
}

void readConnections(Reading& reading, Node const& connections) {
    if (isMap(connections)) reading.document.asConnections = reading.document.nets.empty();
    for (auto const& entry : connections) {
        Node const none(YAML::NodeType::Undefined);
        bool const good = checkPort(reading, entry.first, "a port") && checkPort(reading, entry.second, "a port");
        reading.document.nets.push_back({none, {entry.first, entry.second}, good});
    }
}

void readParts(Reading& reading) {
    Document& document = reading.document;
    reading.check(document.root, "", kNetlist);
    Node const extension = member(document.root, "vrl");
    if (reading.checkExtension(extension, kOfNetlist)) document.extension.reset(extension);
    for (auto const& entry : member(document.root, "instances")) {
        Instance instance{entry.first, entry.second};
        instance.good = readInstance(reading, instance);
        document.instances.push_back(instance);
    }
    for (auto const& entry : document.root) {  // in the order of the file
        if (entry.first.Scalar() == "connections" && isMap(entry.second)) readConnections(reading, entry.second);
        if (entry.first.Scalar() == "nets" && entry.second.IsSequence()) readNets(reading, entry.second);
    }
    Node const ports = member(document.root, "ports");
    if (!isMap(ports)) return;
    for (auto const& entry : ports)
        if (checkPort(reading, entry.second, "outer port '" + entry.first.Scalar() + "'"))
            document.ports.emplace_back(entry.first, entry.second);
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

/// A count of an array: 1 for null, and 0 for what is no whole number.
std::size_t countOf(Node const& node) {
    std::string const& text = node.Scalar();
    std::size_t count = 0;
    auto const end = std::from_chars(text.data(), text.data() + text.size(), count).ptr;
    if (isNull(node)) return 1;
    return kindOf(node) == Kind::kNumber && end == text.data() + text.size() ? count : 0;
}

}  // namespace

ArraySize arraySizeOf(Node const& instance) {
    for (Node const& source : {member(instance, "array"), instance})
        for (auto const& [columns, rows] : kSizes)
            if (member(source, columns).IsDefined() || member(source, rows).IsDefined())
                return {countOf(member(source, columns)), countOf(member(source, rows))};
    return {};
}

bool isArray(Node const& instance) {
    bool array = false;
    if (isMap(instance))
        for (auto const& entry : instance)
            array = array || (instancePart(entry.first.Scalar()) == InstancePart::kArray && !isNull(entry.second));
    return array;
}

std::vector<std::string> elementNames(std::string const& name, ArraySize const& size) {
    if (size.count() == 1) return {name};
    std::vector<std::string> names;
    for (std::size_t i = 0; i < size.count(); ++i)
        names.push_back(name + "<" + std::to_string(i / size.rows) + "." + std::to_string(i % size.rows) + ">");
    return names;
}

InstancePart instancePart(std::string const& name) {
    bool array = name == "array";
    for (auto const& [columns, rows] : kSizes) array = array || name == columns || name == rows;
    if (array) return InstancePart::kArray;
    return find(kInstance, name) ? InstancePart::kOwn : InstancePart::kKept;
}

Document readDocument(std::string const& path, Findings& findings) {
    Document document;
    document.path = path;
    document.root.reset(readFile(path));
    refuseOtherShapes(document.root, path);
    Reading reading{document, findings};
    readParts(reading);
    return document;
}

}  // namespace vrltool::exchange
