#include "starter/cpp_text.h"

#include <algorithm>

#include "starter/table_values.h"
#include "vrllib/vrllib.h"

namespace vrltool::starter {

namespace {

constexpr std::size_t kWidth = 120;

std::string blanks(std::size_t count) { return std::string(count, ' '); }

std::string line(std::size_t indent, std::string const& text) { return blanks(indent) + text + "\n"; }

/// The part of the name of a class in parameters.h, and of an operation of a list: add...
struct TypeWords {
    char const* type;
    char const* ranged;
    char const* plain;
};
constexpr TypeWords kTypes[] = {{"bool", "", "Bool"},
                                {"Int", "Count", "Integer"},
                                {"Double", "Number", "Double"},
                                {"Complex", "ComplexNumber", "Complex"},
                                {"String", "", "String"}};

TypeWords const& wordsOf(std::string const& type) {
    return *std::find_if(std::begin(kTypes), std::end(kTypes), [&](TypeWords const& one) { return type == one.type; });
}

/// A complex value has a type of its own where no other argument says it.
std::string value(values::Node const& node, std::string const& type) {
    return (type == "Complex" ? "std::complex<double>" : "") + cppValue(node, type);
}

std::string parameterText(std::size_t indent, TableParameter const& one) {
    TypeWords const& words = wordsOf(one.type);
    std::vector<std::string> arguments{cppString(one.name), value(one.value, one.type)};
    if (one.min.isDefined()) {
        arguments.push_back(value(one.min, one.type));
        arguments.push_back(value(one.max, one.type));
    }
    arguments.push_back(cppString(one.description));
    if (!one.unit.empty()) arguments.push_back(cppString(one.unit));
    if (!one.min.isDefined()) return callText(indent, std::string("add") + words.plain, arguments);
    if (!one.tunable) return callText(indent, std::string("addAttribute(new ") + words.ranged, arguments, ");");
    std::string const flag = *one.tunable ? "true" : "false";
    return callText(indent, std::string("addAttribute(tunable(") + flag + ", new Tunable" + words.ranged, arguments,
                    "));");
}

/// A parameter of an element, by the type of its value.
std::string settingText(values::Node const& node) {
    if (values::isString(node)) return "std::string(" + cppString(node.text) + ")";
    if (values::isList(node)) return value(node, "Complex");
    return node.kind == values::Kind::kBool ? node.text : cppValue(node, "Double");
}

std::string placeArguments(TablePlace const& place) { return cppString(place.element) + ", " + cppString(place.port); }

/// The elements of a composite, with their parameters.
std::string elementsText(TableBlock const& block) {
    std::string text = line(4, "void addElements(vrl::Foundry const* foundry) {");
    for (TableElement const& element : block.elements) {
        std::string const name = cppString(element.name);
        text += line(8, "addBB(vrl::BB::create(foundry, " + cppString(element.kind) + "), " + name + ");");
        for (auto const& [parameter, node] : element.settings)
            text += line(8, "setValue(Netlist::getBB(" + name + "), " + cppString(parameter) + ", " +
                                settingText(node) + ");");
    }
    return text + line(4, "}");
}

bool isConnected(TableBlock const& block, TablePlace const& place) {
    auto const same = [&](TablePlace const& one) { return !(one < place) && !(place < one); };
    return std::any_of(block.connections.begin(), block.connections.end(),
                       [&](auto const& net) { return std::any_of(net.begin(), net.end(), same); });
}

/// The operation that puts the node of a port on the boundary.
char const* boundaryOf(TableBlock const& block, std::string const& name) {
    auto const port =
        std::find_if(block.ports.begin(), block.ports.end(), [&](auto const& p) { return p.name == name; });
    if (port->domain != "Optics") return "setDCNode";
    return vrl::PortLabel(name).isOpticalOutput() ? "setOutputNode" : "setInputNode";
}

std::string connectionsText(TableBlock const& block) {
    std::string text = line(4, "void connect() {");
    for (auto const& net : block.connections) {
        std::vector<std::string> ports;
        for (TablePlace const& place : net) ports.push_back("{" + placeArguments(place) + "}");
        text += callText(8, "connectPorts(*this, {", ports, "});");
    }
    if (!block.outer.empty())
        text += line(8, "// The nodes of the ports outside, each list in the order of the ports.");
    for (auto const& [port, place] : block.outer) {
        std::string const node = isConnected(block, place) ? "findNode(" : "addNode(";
        text += line(8, std::string(boundaryOf(block, port)) + "(" + node + placeArguments(place) + "));");
    }
    return text + line(4, "}");
}

}  // namespace

std::string callText(std::size_t indent, std::string const& head, std::vector<std::string> const& arguments,
                     std::string const& tail) {
    bool const braces = head.back() == '{';
    std::string const opened = braces ? head : head + "(", closed = braces ? tail : ")" + tail;
    std::string text, current = blanks(indent) + opened;
    std::size_t const inner = indent + 4;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        bool const last = i + 1 == arguments.size();
        std::string const next = arguments[i] + (last ? closed : ",");
        bool const first = i == 0;
        if (current.size() + next.size() + !first > kWidth) {
            text += current + "\n";
            current = blanks(inner);
        } else if (!first) {
            current += ' ';
        }
        current += next;
    }
    return text + current + "\n";
}

std::string parametersText(std::size_t indent, std::vector<TableParameter> const& parameters) {
    std::string text;
    for (TableParameter const& one : parameters) text += parameterText(indent, one);
    return text;
}

std::string choiceText(std::size_t indent, std::string const& object, TableChoice const& choice) {
    std::string text;
    if (!choice.crossSection.empty()) text += line(indent, object + "setCS(" + cppString(choice.crossSection) + ");");
    if (!choice.flow.empty()) text += line(indent, object + "setFlow(" + cppString(choice.flow) + ");");
    return text;
}

std::string blockClass(TableBlock const& block, std::string const& className) {
    bool const composite = !block.elements.empty();
    std::string text = "class " + className + " : public vrl::" + (composite ? "CBB" : "BB") + " {\npublic:\n";
    text += line(4, "static constexpr char const* kKind = " + cppString(block.kind) + ";") + "\n";
    text += line(4, "explicit " + className + "(vrl::Foundry const* foundry) : BB(foundry)" +
                        (composite ? ", CBB(foundry)" : "") + " {");
    if (!block.description.empty())
        text += callText(8, "setAnnotation", {"\"description\"", cppString(block.description)});
    text += choiceText(8, "getCS().", block.choice);
    for (TablePort const& port : block.ports)
        text += line(8, "addPort(" + cppString(port.name) + ", vrl::EnumList::" + port.domain + ");");
    for (TablePort const& port : block.ports)
        text += choiceText(8, "getPort(" + cppString(port.name) + ")->getCS().", port.choice);
    text += parametersText(8, block.parameters);
    if (composite) text += line(8, "addElements(foundry);") + line(8, "connect();");
    text += line(4, "}");
    text += line(4, "std::string getName() const override { return kKind; }");
    if (composite) text += "\nprivate:\n" + elementsText(block) + "\n" + connectionsText(block);
    return text + "};\n";
}

}  // namespace vrltool::starter
