#include <algorithm>
#include <map>
#include <set>

#include "circuit/direction.h"
#include "starter/block_table.h"
#include "starter/table_values.h"
#include "text/near_names.h"
#include "text/phrases.h"
#include "text/table.h"

// Whether the netlists in a table fit its blocks.

namespace vrltool::starter {

using namespace values;

namespace {

using Blocks = std::map<std::string, TableBlock const*>;

std::string quoted(std::string const& name) { return inQuotes(printable(name)); }

/// Whether a composite contains a kind, at any depth; one that is entered already is not looked through again.
bool contains(Blocks const& blocks, std::string const& kind, std::string const& wanted,
              std::set<std::string>& entered) {
    auto const found = blocks.find(kind);
    if (found == blocks.end() || !entered.insert(kind).second) return false;
    auto const& elements = found->second->elements;
    return std::any_of(elements.begin(), elements.end(), [&](TableElement const& element) {
        return element.kind == wanted || contains(blocks, element.kind, wanted, entered);
    });
}

/// The checks of one composite.
class Composite {
public:
    Composite(TableBlock const& checked, Node const& as, Blocks const& all, std::string const& file, Findings& to)
        : block(checked), given(as), blocks(all), path(file), findings(to) {}

    void check() {
        for (auto const& [name, element] : mapOf(member(given, "elements"))) checkElement(name, element);
        for (auto const& net : listOf(member(given, "connections"))) checkConnection(net.second);
        for (auto const& [port, inside] : mapOf(member(given, "outer"))) checkOuter(port, inside);
        checkComplete();
    }

private:
    void error(Mark const& mark, std::string const& text, std::string const& hint = "") {
        findings.add(Severity::kError, path, mark, text, hint);
    }

    TableElement const* elementOf(std::string const& name) const {
        auto const& all = block.elements;
        auto const found = std::find_if(all.begin(), all.end(), [&](auto const& one) { return one.name == name; });
        return found == all.end() ? nullptr : &*found;
    }

    static TablePort const* portOf(TableBlock const& of, std::string const& name) {
        auto const found =
            std::find_if(of.ports.begin(), of.ports.end(), [&](auto const& p) { return p.name == name; });
        return found == of.ports.end() ? nullptr : &*found;
    }

    void checkElement(Node const& name, Node const& element) {
        Node const& kind = isMap(element) ? member(element, "kind") : element;
        if (!kind.isDefined()) return;
        auto const found = blocks.find(kind.text);
        if (found == blocks.end()) {
            std::vector<std::string> kinds;
            for (auto const& entry : blocks) kinds.push_back(entry.first);
            return error(kind.mark, "the table has no block " + quoted(kind.text), didYouMean(kind.text, kinds));
        }
        std::set<std::string> entered;
        if (kind.text == block.kind || contains(blocks, kind.text, block.kind, entered))
            return error(kind.mark, quoted(block.kind) + " contains itself through the element " + quoted(name.text));
        for (auto const& [parameter, value] : mapOf(member(element, "parameters")))
            checkSetting(*found->second, parameter, value);
    }

    void checkSetting(TableBlock const& kind, Node const& name, Node const& value) {
        auto const& all = kind.parameters;
        auto const found = std::find_if(all.begin(), all.end(), [&](auto const& one) { return one.name == name.text; });
        if (found == all.end()) return error(name.mark, quoted(kind.kind) + " has no parameter " + quoted(name.text));
        std::string const what = "the value of " + quoted(name.text);
        if (std::string const why = whyNoValue(value, found->type, false); !why.empty())
            return error(value.mark, what + " " + why);
        bool const outside = found->min.isDefined() &&
                             (numberOf(value) < numberOf(found->min) || numberOf(value) > numberOf(found->max));
        if (outside) error(value.mark, what + " is outside of its range");
    }

    /// The port that "element,port" names, or null; reported if there is none.
    TablePort const* checkedPort(Node const& text) {
        auto const comma = text.text.rfind(',');
        if (comma == std::string::npos)
            return error(text.mark, quoted(text.text) + " names no port", "write \"element,port\""), nullptr;
        std::string const element = text.text.substr(0, comma), port = text.text.substr(comma + 1);
        TableElement const* const found = elementOf(element);
        if (!found) return error(text.mark, quoted(block.kind) + " has no element " + quoted(element)), nullptr;
        auto const kind = blocks.find(found->kind);
        if (kind == blocks.end()) return nullptr;
        TablePort const* const declared = portOf(*kind->second, port);
        if (!declared) error(text.mark, quoted(found->kind) + " has no port " + quoted(port));
        return declared;
    }

    void checkConnection(Node const& net) {
        if (net.size() < 2) return error(net.mark, "a connection of fewer than two ports");
        std::string domain;
        for (auto const& entry : net) {
            Node const& port = entry.second;
            TablePort const* const declared = checkedPort(port);
            if (!declared) continue;
            if (!nets.emplace(port.text, &net).second)
                error(port.mark, quoted(port.text) + " is connected twice",
                      "write all ports of a node in one connection");
            if (!domain.empty() && domain != declared->domain)
                error(port.mark, quoted(port.text) + " is " + declared->domain + ", connected with " + domain);
            domain = declared->domain;
        }
    }

    void checkOuter(Node const& name, Node const& inside) {
        TablePort const* const own = portOf(block, name.text);
        if (!own) return error(name.mark, quoted(block.kind) + " has no port " + quoted(name.text));
        bool const electrical = own->domain == "DC" || own->domain == "RF";
        if (!electrical && (own->domain != "Optics" || directionOf(name.text) == Direction::kNone))
            error(name.mark, quoted(name.text) + " is no input, output or electrical port, so it has no place inside",
                  "only these are on the boundary of a netlist");
        TablePort const* const declared = checkedPort(inside);
        if (!declared) return;
        if (declared->domain != own->domain)
            error(inside.mark, quoted(name.text) + " is " + own->domain + ", and " + quoted(inside.text) + " is " +
                                   declared->domain);
        auto const net = nets.find(inside.text);
        std::string const node = net == nets.end() ? inside.text : placeText("", net->second->mark);
        if (!nodes.insert(node).second)
            error(inside.mark, "the node of " + quoted(inside.text) + " is that of another port outside");
    }

    void checkComplete() {
        if (block.elements.empty()) {
            for (char const* const name : {"connections", "outer"})
                if (Node const& node = member(given, name); node.size() > 0)
                    error(node.mark, quoted(block.kind) + " has '" + name + "' and no elements");
            return;
        }
        for (auto const& [name, port] : mapOf(member(given, "ports")))
            if (!member(member(given, "outer"), name.text).isDefined())
                error(name.mark, "the port " + quoted(name.text) + " of a composite is not in its 'outer'");
    }

    TableBlock const& block;
    Node const& given;
    Blocks const& blocks;
    std::string const& path;
    Findings& findings;
    std::map<std::string, Node const*> nets = {};  ///< by their ports
    std::set<std::string> nodes = {};              ///< that have a port outside
};

}  // namespace

void checkComposites(BlockTable const& table, Node const& root, std::string const& path, Findings& findings) {
    Blocks blocks;
    for (TableBlock const& block : table.blocks) blocks.emplace(block.kind, &block);
    Node const& given = member(root, "blocks");
    for (TableBlock const& block : table.blocks)
        Composite(block, member(given, block.kind), blocks, path, findings).check();
}

}  // namespace vrltool::starter
