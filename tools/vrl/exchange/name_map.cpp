#include "exchange/name_map.h"

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
        bool const empty = isText(node) && node.Scalar().empty();
        std::string const wrong = empty ? wrongKind(what, node, "a text") : misfit(what, node, kinds);
        if (!wrong.empty()) fail(node.Mark(), wrong);
    }

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
    std::string const text = member(entry, "factor").Scalar();
    double number = text.empty();
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

void checkParameter(MapFile const& file, Node const& entry, std::string const& what) {
    if (!isMap(entry)) return file.check(entry, what, "ntm");
    file.check(entry, what, " of " + what, {{"to", "t"}, {"factor", "#"}});
    if (factorOf(entry) == 0 || !std::isfinite(factorOf(entry)))
        file.fail(member(entry, "factor").Mark(), "'factor' of " + what + " is 0 or no number");
    if (ourName(entry).empty())
        file.fail(entry.Mark(), what + " has no 'to'", "name the parameter of ours that it sets");
}

/// Checks the ports or parameters of a component. Two names of theirs for one of ours would have no way back.
void checkRules(MapFile const& file, Node const& rules, bool ports, std::string const& of) {
    std::set<std::string> taken;
    for (auto const& entry : rules) {
        std::string const what = (ports ? "port '" : "parameter '") + printable(entry.first.Scalar()) + "'" + of;
        ports ? file.check(entry.second, what, "t") : checkParameter(file, entry.second, what);
        std::string const ours = ourName(entry.second), things = ports ? "two ports" : "two settings";
        if (!ours.empty() && !taken.insert(ours).second)
            file.fail(entry.second.Mark(), things + of + " lead to '" + printable(ours) + "'");
    }
}

void readComponent(MapFile const& file, Node const& node, ComponentRule& rule) {
    static std::vector<Shape> const shapes{
        {"key", "nt"}, {"sameNames", "b"}, {"ports", "nm"}, {"parameters", "nm"}, {"defaults", "nm"}};
    std::string const name = "'" + printable(rule.component) + "'";
    if (!isText(node) && !isNull(node)) file.check(node, "component " + name, " of " + name, shapes);
    Node const key = isMap(node) ? member(node, "key") : node;  // the short form is the key alone, or null for none yet
    rule.key = key.Scalar();
    if (!isNull(key)) rule.keyMark = key.Mark();
    Node const same = member(node, "sameNames");
    if (same.IsDefined()) rule.sameNames = same.Scalar() == "true";
    rule.ports.reset(member(node, "ports"));
    rule.parameters.reset(member(node, "parameters"));
    rule.defaults.reset(member(node, "defaults"));
    checkRules(file, rule.ports, true, " of " + name);
    checkRules(file, rule.parameters, false, " of " + name);
}

/// The name of theirs that leads to one of ours; empty if there is none.
std::string leadingTo(Node const& rules, std::string const& ours) {
    for (auto const& entry : rules)
        if (!ours.empty() && ourName(entry.second) == ours) return entry.first.Scalar();
    return {};
}

template <class Exists>
MappedName toOurs(Node const& rules, bool sameNames, std::string const& theirs, Exists const& exists) {
    Node const rule = member(rules, theirs);
    bool const same = !rule.IsDefined() && sameNames && leadingTo(rules, theirs).empty();
    std::string const ours = same ? theirs : ourName(rule);
    return exists(ours) ? MappedName{ours, factorOf(rule)} : MappedName();
}

MappedName toTheirs(Node const& rules, bool sameNames, std::string const& ours) {
    std::string const theirs = leadingTo(rules, ours);
    if (!theirs.empty()) return {theirs, factorOf(member(rules, theirs))};
    return {sameNames && !member(rules, ours).IsDefined() ? ours : ""};
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
        ComponentRule rule(name);
        rule.mark = rule.keyMark = entry.first.Mark();
        rule.sameNames = map.sameNames;
        readComponent(file, entry.second, rule);
        map.components.emplace(name, rule);
    }
    return map;
}

}  // namespace vrltool::exchange
