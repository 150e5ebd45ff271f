#include "exchange/document.h"

#include <charconv>
#include <map>

#include "text/failure.h"
#include "text/near_names.h"
#include "text/table.h"

namespace vrltool::exchange {

namespace {

constexpr std::size_t kOneElement = 1024;  // bytes of an instance that are kept with each element of an array
char const* const kHint = "a netlist is a map with 'instances', 'nets' or 'connections', and 'ports'";
std::pair<char const*, char const*> const kSizes[] = {{"columns", "rows"}, {"num_a", "num_b"}, {"na", "nb"}};

// The members of a netlist, of an instance, and of "vrl" in both.
Shapes const kNetlist{{"name", "n#t"}, {"instances", "nm"},  {"nets", "nl"}, {"connections", "nm"},
                      {"ports", "nm"}, {"placements", "nm"}, {"vrl", "nm"},  {"*", ""}};
Shapes const kInstance{{"component", "t"}, {"settings", "nm"}, {"array", "nm"}, {"vrl", "m"}, {"*", ""}};
Shapes const kOfNetlist{{"boundary", "m", {{"*", "l"}}}};
Shapes const kOfInstance{
    {"foundry", "t"}, {"origin", "m"}, {"crossSection", "t"}, {"flow", "t"}, {"ports", "m", {{"*", "m"}}},
    {"values", "m"}};

/// A document that is being read.
struct Reading {
    Document& document;
    Findings& findings;
    std::size_t const most;    ///< elements that arrays may make
    std::size_t elements = 0;  ///< of all arrays

    bool error(Node const& node, std::string const& text, std::string const& hint = "") {
        findings.add(Severity::kError, document.path, node.mark, text, hint);
        return false;
    }

    /// Whether a map has its shape. Members that it does not know are only reported.
    bool check(Node const& map, std::string const& what, Shapes const& shapes) {
        bool good = true;
        for (Misfit const& misfit : misfits(map, what, shapes)) {
            good = good && misfit.unknown;
            findings.add(misfit.unknown ? Severity::kWarning : Severity::kError, document.path, misfit.mark,
                         misfit.text + (misfit.unknown ? "; it is left out" : ""), misfit.hint);
        }
        return good;
    }
};

/// Reads the size of an array, which is bounded before any element is made: a short line must not fill the memory.
bool readSize(Reading& reading, Instance& instance) {
    std::string const name = "'" + instance.name.text + "'";
    ArraySize const size = instance.size = arraySizeOf(instance.given);
    if (size.columns == 0 || size.rows == 0)
        return reading.error(instance.name, "array of instance " + name + ": a count is a whole number from 1");
    if (size.columns == 1 && size.rows == 1) return true;
    std::size_t const most = reading.most, each = 1 + written(instance.given, Format::kLine).size() / kOneElement;
    bool const bounded = size.columns <= most && size.rows <= most / size.columns && size.count() <= most / each &&
                         (reading.elements += size.count() * each) <= most;
    std::string const bytes = each > 1 ? ", of which each counts as " + std::to_string(each) + " for its settings" : "";
    return bounded ||
           reading.error(instance.name,
                         "the arrays up to " + name + " have more than " + std::to_string(most) + " elements" + bytes,
                         "--max-elements raises the limit");
}

bool readInstance(Reading& reading, Instance& instance) {
    std::string const what = "instance '" + instance.name.text + "'";
    if (instance.name.text.empty()) return reading.error(instance.name, "an instance has an empty name");
    if (!isString(instance.given) && !isMap(instance.given))
        return reading.error(instance.given, wrongKind(what, instance.given, "a map with 'component'"));
    if (!reading.check(instance.given, what, kInstance)) return false;
    if (componentOf(instance.given).text.empty()) return reading.error(instance.name, what + " names no component");
    return reading.check(member(instance.given, "vrl"), "'vrl'", kOfInstance) && readSize(reading, instance);
}

bool checkPort(Reading& reading, Node const& node, std::string const& what) {
    std::string const is = isString(node) ? "'" + node.text + "'" : kindWord(node.kind);
    return (isString(node) && node.text.find(',') != std::string::npos) ||
           reading.error(node, what + " is " + is + ", where \"instance,port\" belongs");
}

void readNet(Reading& reading, Node const& given) {
    Net net{given};
    bool good = true;
    for (auto const& [name, port] : given) {
        if (isMap(given) && name.text != "p1" && name.text != "p2") continue;
        net.ports.push_back(port);
        good = checkPort(reading, net.ports.back(), "a port of a net") && good;
    }
    if (good && net.ports.size() < 2)
        good = reading.error(given, "a net has " + counted(net.ports.size(), "port") + " and needs two");
    if (!good) net.ports.clear();
    reading.document.nets.push_back(net);
}

/// Reads connections as nets.
void readConnections(Reading& reading, Node const& connections) {
    for (auto const& [first, second] : connections) {
        Node pair = newMap({{"p1", first}});
        pair.add("p2", second);
        readNet(reading, pair);
    }
}

void readParts(Reading& reading) {
    Document& document = reading.document;
    reading.check(document.root, "the netlist", kNetlist);
    Node const extension = member(document.root, "vrl");
    if (reading.check(extension, "'vrl'", kOfNetlist)) document.extension = extension;
    for (auto const& entry : mapOf(member(document.root, "instances"))) {
        Instance instance{entry.first, entry.second};
        instance.good = readInstance(reading, instance);
        document.instances.push_back(instance);
    }
    for (auto const& entry : document.root) {  // in the order of the file
        if (entry.first.text == "connections") readConnections(reading, mapOf(entry.second));
        if (entry.first.text == "nets")
            for (auto const& net : listOf(entry.second)) readNet(reading, net.second);
    }
    for (auto const& entry : mapOf(member(document.root, "ports")))
        if (checkPort(reading, entry.second, "outer port '" + entry.first.text + "'"))
            document.ports.emplace_back(entry.first, entry.second);
}

/// Fails for a file that holds no netlist, or several under names.
void refuseOtherShapes(Node const& root, std::string const& path) {
    if (!isMap(root)) throw Failure(path, std::string("holds ") + kindWord(root.kind) + " and no netlist", kHint);
    if (member(root, "instances").isDefined()) return;
    std::vector<std::string> names;
    for (auto const& entry : root) names.push_back(entry.first.text);
    auto const near = nearNames("instances", names);
    throw Failure(path, "has no 'instances'", near.empty() ? kHint : "is '" + near.front() + "' meant for it?");
}

/// 0 for what is no whole number.
std::size_t countOf(Node const& node) {
    std::size_t count = 0;
    char const *const begin = node.text.data(), *const end = begin + node.text.size();
    if (isNull(node)) return 1;
    return std::from_chars(begin, end, count).ptr == end ? count : 0;
}

}  // namespace

ArraySize arraySizeOf(Node const& instance) {
    for (Node const& source : {member(instance, "array"), instance})
        for (auto const& [columns, rows] : kSizes)
            if (member(source, columns).isDefined() || member(source, rows).isDefined())
                return {countOf(member(source, columns)), countOf(member(source, rows))};
    return {};
}

bool isArray(Node const& instance) {
    for (auto const& entry : mapOf(instance))
        if (instancePart(entry.first.text) == InstancePart::kArray && !isNull(entry.second)) return true;
    return false;
}

std::vector<std::string> elementNames(std::string const& name, ArraySize const& size) {
    if (size.count() == 1) return {name};
    std::vector<std::string> names;
    for (std::size_t i = 0; i < size.count(); ++i)
        names.push_back(name + "<" + std::to_string(i / size.rows) + "." + std::to_string(i % size.rows) + ">");
    return names;
}

std::vector<std::string> elementNames(std::string const& name, Node const& instance) {
    constexpr std::size_t kMost = 1000000;
    ArraySize const size = arraySizeOf(instance);
    bool const bounded = size.columns > 0 && size.columns <= kMost && size.rows <= kMost / size.columns;
    return bounded ? elementNames(name, size) : std::vector<std::string>();
}

std::vector<std::string> portsOf(Node const& net) {
    std::vector<std::string> ports;
    for (auto const& [name, port] : net)
        if (isString(port) && (isList(net) || name.text == "p1" || name.text == "p2")) ports.push_back(port.text);
    return ports;
}

InstancePart instancePart(std::string const& name) {
    static std::map<std::string_view, InstancePart> const known = [] {
        std::map<std::string_view, InstancePart> parts;
        for (Shape const& shape : kInstance)
            if (!shape.kinds.empty()) parts[shape.name] = InstancePart::kOwn;
        for (auto const& [columns, rows] : kSizes)
            for (std::string_view const word : {"array", columns, rows}) parts[word] = InstancePart::kArray;
        return parts;
    }();
    auto const found = known.find(name);
    return found == known.end() ? InstancePart::kKept : found->second;
}

Document readDocument(std::string const& path, Findings& findings, DocumentLimits const& limits) {
    Document document;
    document.path = path;
    document.root = readFile(path, limits.values);
    refuseOtherShapes(document.root, path);
    Reading reading{document, findings, limits.elements};
    readParts(reading);
    return document;
}

}  // namespace vrltool::exchange
