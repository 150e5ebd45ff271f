#include "exchange/name_map.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <set>

#include "text/failure.h"
#include "text/table.h"

namespace vrltool::exchange {

namespace {

/// A map file that is being checked; each failure names a place in it.
struct MapFile {
    std::string const& path;

    [[noreturn]] void fail(Mark const& mark, std::string const& what, std::string const& hint = "") const {
        throw Failure(placeText(path, mark), what, hint);
    }

    void check(Node const& node, std::string const& what, std::string_view kinds) const {
        std::string const wrong = misfit(what, node, kinds);
        if (!wrong.empty()) fail(node.Mark(), wrong);
        if (isText(node) && node.Scalar().empty()) fail(node.Mark(), wrongKind(what, node, "a text"));
    }

    /// Checks a map of known members.
    void check(Node const& node, std::string const& what, std::string const& of,
               std::vector<Shape> const& shapes) const {
        check(node, what, "m");
        for (auto const& entry : node) {
            std::string const name = entry.first.Scalar();
            Shape const* const shape = find(shapes, name);
            if (!shape)
                fail(entry.first.Mark(), what + " has no member '" + printable(name) + "'", nearName(shapes, name));
            check(entry.second, "'" + name + "'" + of, shape->kinds);
        }
    }
};

double factorOf(Node const& entry) {
    Node const factor = member(entry, "factor");
    if (!factor.IsDefined()) return 1;
    double number = 0;
    std::string const text = factor.Scalar();
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

void checkParameter(MapFile const& file, Node const& entry, std::string const& what) {
    if (!isMap(entry)) return file.check(entry, what, "ntm");
    file.check(entry, what, " of " + what, {{"to", "t"}, {"factor", "#"}});
    double const factor = factorOf(entry);
    if (factor == 0 || !std::isfinite(factor))
        file.fail(member(entry, "factor").Mark(), "'factor' of " + what + " is 0 or no number");
    if (ourName(entry).empty())
        file.fail(entry.Mark(), what + " has no 'to'", "name the parameter of ours that it sets");
}

/// Checks the rules of one component. Two names of theirs for one of ours would have no way back.
void checkRules(MapFile const& file, ComponentRule const& rule, std::string const& of) {
    std::set<std::string> ports, parameters;
    auto const refuseTwice = [&](std::set<std::string>& taken, Node const& entry, char const* things) {
        std::string const ours = ourName(entry);
        if (!ours.empty() && !taken.insert(ours).second)
            file.fail(entry.Mark(), std::string("two ") + things + of + " lead to '" + printable(ours) + "'");
    };
    for (auto const& entry : rule.ports) {
        file.check(entry.second, "port '" + printable(entry.first.Scalar()) + "'" + of, "t");
        refuseTwice(ports, entry.second, "ports");
    }
    for (auto const& entry : rule.parameters) {
        checkParameter(file, entry.second, "parameter '" + printable(entry.first.Scalar()) + "'" + of);
        refuseTwice(parameters, entry.second, "settings");
    }
}

void readComponent(MapFile const& file, Node const& node, ComponentRule& rule) {
    static std::vector<Shape> const shapes{
        {"key", "nt"}, {"sameNames", "b"}, {"ports", "nm"}, {"parameters", "nm"}, {"defaults", "nm"}};
    if (isNull(node)) return;  // known, and without a key
    std::string const name = "'" + printable(rule.component) + "'";
    if (!isText(node)) file.check(node, "component " + name, " of " + name, shapes);
    Node const key = isText(node) ? node : member(node, "key");  // the short form is the key alone
    if (key.IsDefined()) {
        rule.key = key.Scalar();
        rule.keyMark = key.Mark();
    }
    Node const same = member(node, "sameNames");
    if (same.IsDefined()) rule.sameNames = same.Scalar() == "true";
    rule.ports.reset(member(node, "ports"));
    rule.parameters.reset(member(node, "parameters"));
    rule.defaults.reset(member(node, "defaults"));
    checkRules(file, rule, " of " + name);
}

/// Whether a rule leads to that name of ours.
Node entryFor(Node const& rules, std::string const& ours, std::string& theirs) {
    for (auto const& entry : rules) {
        if (ourName(entry.second) != ours || ours.empty()) continue;
        theirs = entry.first.Scalar();
        return entry.second;
    }
    return Node(YAML::NodeType::Undefined);
}

template <class Exists>
MappedName toOurs(Node const& rules, bool sameNames, std::string const& theirs, Exists const& exists) {
    std::string other;
    Node const rule = member(rules, theirs);
    bool const same = !rule.IsDefined() && sameNames && !entryFor(rules, theirs, other).IsDefined();
    std::string const ours = same ? theirs : ourName(rule);
    return exists(ours) ? MappedName{ours, factorOf(rule)} : MappedName();
}

MappedName toTheirs(Node const& rules, bool sameNames, std::string const& ours) {
    MappedName result;
    Node const rule = entryFor(rules, ours, result.name);
    if (rule.IsDefined())
        result.factor = factorOf(rule);
    else if (sameNames && !member(rules, ours).IsDefined())
        result.name = ours;
    return result;
}

}  // namespace

std::string ourName(Node const& entry) { return isMap(entry) ? member(entry, "to").Scalar() : entry.Scalar(); }

std::string ComponentRule::ourPort(vrl::BB& block, std::string const& theirs) const {
    return toOurs(ports, sameNames, theirs, [&](std::string const& name) { return block.getPort(name) != nullptr; })
        .name;
}

std::string ComponentRule::theirPort(std::string const& ours) const { return toTheirs(ports, sameNames, ours).name; }

MappedName ComponentRule::ourParameter(vrl::BB& block, std::string const& theirs) const {
    return toOurs(parameters, sameNames, theirs, [&](std::string const& name) { return block.find(name); });
}

MappedName ComponentRule::theirSetting(std::string const& ours) const { return toTheirs(parameters, sameNames, ours); }

ComponentRule const* NameMap::find(std::string const& component) const {
    auto const found = components.find(component);
    return found == components.end() ? nullptr : &found->second;
}

ComponentRule const* NameMap::forKey(std::string const& key) const {
    for (auto const& entry : components)
        if (!key.empty() && entry.second.key == key) return &entry.second;
    return nullptr;
}

NameMap readNameMap(std::string const& path) {
    NameMap map;
    map.path = path;
    if (path.empty()) return map;
    MapFile const file{path};
    Node const root = readFile(path);
    file.check(root, "the map", "", {{"foundry", "nt"}, {"sameNames", "b"}, {"components", "m"}});
    Node const components = member(root, "components"), foundry = member(root, "foundry");
    if (!components.IsDefined())
        file.fail(root.Mark(), "has no 'components'", "each component of the netlist has an entry there");
    map.foundry = foundry.Scalar();
    map.foundryMark = foundry.Mark();
    map.sameNames = member(root, "sameNames").Scalar() != "false";
    for (auto const& entry : components) {
        std::string const name = entry.first.Scalar();
        ComponentRule rule{name, "", entry.first.Mark(), entry.first.Mark(), map.sameNames, {}, {}, {}};
        readComponent(file, entry.second, rule);
        map.components.emplace(name, rule);
    }
    return map;
}

}  // namespace vrltool::exchange
