#include <algorithm>
#include <utility>

#include "exchange/netlist_builder.h"
#include "text/near_names.h"
#include "text/table.h"

// The joining of elements: which end a text leads to, and what is wrong with it if it leads to none.

namespace vrltool::exchange {

namespace {

constexpr std::size_t kMostHints = 20;

std::string trimmed(std::string const& text) {
    auto const first = text.find_first_not_of(" \t");
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

Tree treeOfNet(Net const& net) {
    if (net.ends.size() == 2) return treeFrom(net);
    Tree list = Tree::list();
    for (EndName const& end : net.ends) list.items.push_back(Tree::ofText(end.text));
    return list;
}

}  // namespace

NetlistBuilder::Built const* NetlistBuilder::element(std::string const& name) const {
    auto found = byName.find(name);
    static std::string const only = "<0.0>";  // the one element of an array of one
    if (found == byName.end() && name.size() > only.size() && name.substr(name.size() - only.size()) == only) {
        std::string const bare = name.substr(0, name.size() - only.size());
        if (arrays.count(bare)) found = byName.find(bare);
    }
    return found == byName.end() ? nullptr : &built[found->second];
}

bool NetlistBuilder::isUndeclared(Built const& one, std::string const& port) const {
    Tree const* const names = one.instance->extension.find("undeclaredPorts");
    return names && !port.empty() &&
           std::any_of(names->items.begin(), names->items.end(), [&](Tree const& name) { return name.text == port; });
}

/// The port of ours, or an empty text.
std::string NetlistBuilder::portOf(Built const& one, std::string const& theirs) const {
    std::string const ours = ourPort(*one.rule, *one.block, theirs);
    return ours.empty() && isUndeclared(one, theirs) ? theirs : ours;
}

/// Follows an end; what leads nowhere is told. Names may hold commas, so each of them is tried, the last one first.
NetlistBuilder::Reached NetlistBuilder::reach(EndName const& end, Joints::End& reached) {
    for (auto comma = end.text.rfind(','); comma != std::string::npos && comma > 0;
         comma = end.text.rfind(',', comma - 1)) {
        std::string const name = end.text.substr(0, comma);
        Built const* const found = element(name);
        std::string const port = found ? portOf(*found, trimmed(end.text.substr(comma + 1))) : "";
        if (!port.empty()) {
            reached = {static_cast<std::size_t>(found - built.data()), port};
            return Reached::kEnd;
        }
        if (leftOutNames.count(name) || document.oddInstances.find(name.substr(0, name.find('<'))))
            return Reached::kLeftOut;
    }
    tellUnreached(end);
    return Reached::kNothing;
}

std::vector<std::string> NetlistBuilder::theirPorts(Built const& one) const {
    std::vector<std::string> names;
    for (auto port = one.block->beginPort(); port != one.block->endPort(); ++port) {
        std::string const theirs = theirPort(*one.rule, port->getName().getName());
        if (!theirs.empty()) names.push_back(theirs);
    }
    return names;
}

void NetlistBuilder::tellUnreached(EndName const& end) {
    auto const comma = end.text.rfind(',');
    std::string const name = end.text.substr(0, comma);
    std::string const port = trimmed(end.text.substr(comma + 1));
    bool const mayHint = hints++ < kMostHints;
    if (Built const* const found = element(name)) {
        auto const names = theirPorts(*found);
        std::string hint = didYouMean(port, names);
        if (hint.empty() && names.size() <= 12)
            for (std::string const& known : names) hint += (hint.empty() ? "its ports are '" : "', '") + known;
        if (hint.compare(0, 3, "its") == 0) hint += "'";
        findings.error(document.path, end.mark,
                       "'" + name + "' (" + found->rule->component + ") has no port '" + port + "'", hint);
    } else if (arrays.count(name)) {
        Instance const& array = *arrays.at(name);
        findings.error(document.path, end.mark,
                       "'" + name + "' is an array: name one of '" + arrayName(array, 0, 0) + "' to '" +
                           arrayName(array, array.size.columns - 1, array.size.rows - 1) + "'");
    } else {
        std::vector<std::string> names;
        if (mayHint)
            for (Instance const& instance : document.instances) names.push_back(instance.name);
        findings.error(document.path, end.mark, "there is no instance '" + name + "'", didYouMean(name, names));
    }
}

void NetlistBuilder::use(std::size_t place, Mark const& mark) {
    if (uses.size() <= place) uses.resize(joints.size());
    if (++uses[place].count == 2) uses[place].second = mark;
}

void NetlistBuilder::joinNets() {
    for (Net const& net : document.nets) joinNet(net);
}

void NetlistBuilder::joinNet(Net const& net) {
    std::vector<Joints::End> ends;
    for (EndName const& end : net.ends) {
        Joints::End reached;
        if (reach(end, reached) == Reached::kEnd) ends.push_back(reached);
    }
    if (ends.size() < net.ends.size() || joinsItself(net, ends)) {
        leftNets.items.push_back(treeOfNet(net));
        ++result.leftOut;
        return;
    }
    for (std::size_t i = 1; i < ends.size(); ++i) joinPair(ends[i - 1], net.ends[i - 1], ends[i], net.ends[i]);
    ++result.nets;
    keepNetMembers(net, ends);
}

bool NetlistBuilder::joinsItself(Net const& net, std::vector<Joints::End> const& ends) {
    auto const twin = std::adjacent_find(ends.begin(), ends.end());
    if (twin == ends.end()) return false;
    EndName const& end = net.ends[static_cast<std::size_t>(twin - ends.begin()) + 1];
    findings.error(document.path, end.mark, "'" + end.text + "' is joined with itself");
    return true;
}

void NetlistBuilder::joinPair(Joints::End const& a, EndName const& aName, Joints::End const& b, EndName const& bName) {
    std::size_t const first = joints.place(a), second = joints.place(b);
    if (!pairs.insert(std::minmax(first, second)).second) {
        ++twice;
    } else {
        joints.join(first, second);
        use(first, aName.mark);
        use(second, bName.mark);
    }
}

/// Nodes that an export names because nets and ports do not tell them, or would seem wrong.
void NetlistBuilder::joinMeantNodes() {
    Tree const* const lists = document.extension.find("nodes");
    if (!lists) return;
    for (Tree const& list : lists->items) {
        std::size_t first = joints.size();
        for (Tree const& end : list.items) {
            Joints::End reached;
            if (reach({end.text, end.mark}, reached) != Reached::kEnd) continue;
            std::size_t const place = joints.place(reached);
            meant.insert(place);
            first = std::min(first, place);
            joints.join(first, place);
        }
    }
}

void NetlistBuilder::reachPorts() {
    std::map<std::size_t, OuterPort const*> taken;
    for (OuterPort const& port : document.ports) {
        Joints::End reached;
        Tree entry = Tree::list();
        if (reach(port.end, reached) != Reached::kEnd) {
            entry.items = {Tree::ofText(port.name), Tree::ofText(port.end.text)};
            outerPorts.items.push_back(std::move(entry));
            ++result.leftOut;
            continue;
        }
        entry = endTree(reached);
        entry.items.insert(entry.items.begin(), Tree::ofText(port.name));
        outerPorts.items.push_back(std::move(entry));
        std::size_t const place = joints.place(reached);
        auto const first = taken.emplace(place, &port);
        if (first.second)
            use(place, port.end.mark);
        else
            findings.warning(document.path, port.mark,
                             "outer port '" + port.name + "' is the end of '" + first.first->second->name + "', too");
        ports.emplace_back(&port, place);
        ++result.ports;
    }
}

/// Light has one way from port to port: an optical end that is used twice is told. Wires may branch.
void NetlistBuilder::tellSharedEnds() {
    std::size_t branches = 0;
    uses.resize(joints.size());
    for (std::size_t place = 0; place < joints.size(); ++place) {
        if (uses[place].count < 2 || meant.count(place)) continue;
        if (domainOf(place) != vrl::EnumList::Optics) {
            ++branches;
            continue;
        }
        auto const& end = joints.at(place);
        Built const& one = built[end.first];
        findings.warning(document.path, uses[place].second,
                         "'" + one.name + "," + theirPort(*one.rule, end.second) + "' is used " +
                             std::to_string(uses[place].count) + " times; all that it joins becomes one node");
    }
    if (branches > 0)
        findings.note(document.path, {},
                      counted(branches, "electrical end is", "electrical ends are") + " used more than once");
}

}  // namespace vrltool::exchange
