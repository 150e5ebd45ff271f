#include "exchange/document.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <utility>

#include "exchange/extension.h"
#include "exchange/reader.h"
#include "text/failure.h"
#include "text/near_names.h"
#include "text/table.h"

namespace vrltool::exchange {

namespace {

constexpr std::size_t kMostElements = 1000000;

Tree pairOf(Tree const& p1, Tree const& p2) {
    Tree pair = Tree::map();
    pair.add("p1", p1);
    pair.add("p2", p2);
    return pair;
}

/// Reads one document; what has not the shape is told and left out.
class DocumentReader {
public:
    DocumentReader(Document& target, Findings& found) : document(target), findings(found) {}

    void read(Tree const& tree) {
        for (Tree::Member const& member : tree.members) readMember(member);
        takePlacements();
    }

private:
    using Part = void (DocumentReader::*)(Tree const&);

    void readMember(Tree::Member const& member) {
        static std::map<std::string, Part> const parts{{"instances", &DocumentReader::readInstances},
                                                       {"connections", &DocumentReader::readConnections},
                                                       {"nets", &DocumentReader::readNets},
                                                       {"ports", &DocumentReader::readPorts},
                                                       {"placements", &DocumentReader::readPlacements},
                                                       {"name", &DocumentReader::readName},
                                                       {"vrl", &DocumentReader::readExtension}};
        auto const part = parts.find(member.name);
        if (part == parts.end())
            document.others.members.push_back(member);
        else if (!member.value.isNull())
            (this->*part->second)(member.value);
    }

    void error(Mark const& mark, std::string const& text) { findings.error(document.path, mark, text); }

    /// Whether a part is of the kind that it has to be.
    bool check(Tree const& tree, bool good, std::string const& what, std::string const& wanted) {
        if (!good) error(tree.mark, what + " is " + kindWord(tree) + ", where " + wanted + " belongs");
        return good;
    }

    void readName(Tree const& tree) {
        if (check(tree, tree.isText() || tree.isNumber(), "'name'", "a text")) document.name = tree.text;
    }

    void readExtension(Tree const& tree) {
        if (check(tree, tree.isMap(), "'vrl'", "a map"))
            document.extension = checkedExtension(tree, Extended::kNetlist, document.path, findings);
    }

    void readInstances(Tree const& tree) {
        document.instances.reserve(tree.members.size());
        for (Tree::Member const& member : tree.members) readInstance(member);
    }

    void readInstance(Tree::Member const& member) {
        Instance instance;
        if (readInstance(member, instance))
            document.instances.push_back(std::move(instance));
        else
            document.oddInstances.members.push_back(member);
    }

    bool readInstance(Tree::Member const& member, Instance& instance) {
        instance.name = member.name;
        instance.mark = member.mark;
        Tree const& tree = member.value;
        bool good = true;
        if (tree.isText()) {  // the short form
            instance.component = tree.text;
            instance.componentMark = tree.mark;
        } else if (check(tree, tree.isMap(), "instance '" + member.name + "'", "a map with 'component'")) {
            for (Tree::Member const& part : tree.members) good = readInstancePart(instance, part) && good;
        } else {
            return false;
        }
        if (good && instance.component.empty())
            error(instance.mark, "instance '" + member.name + "' names no component");
        return good && !instance.component.empty() && readSize(instance);
    }

    bool readInstancePart(Instance& instance, Tree::Member const& part) {
        std::string const what = "'" + part.name + "' of instance '" + instance.name + "'";
        Tree const& value = part.value;
        if (part.name == "component") {
            if (!check(value, value.isText(), what, "a text")) return false;
            instance.component = value.text;
            instance.componentMark = value.mark;
        } else if (part.name == "settings") {
            if (!value.isNull() && !check(value, value.isMap(), what, "a map")) return false;
            instance.settings.members = value.members;
        } else if (part.name == "info") {
            instance.info = value;
        } else if (part.name == "array") {
            instance.array = value;
        } else if (part.name == "vrl") {
            if (!check(value, value.isMap(), what, "a map")) return false;
            instance.extension = checkedExtension(value, Extended::kInstance, document.path, findings);
        } else {
            instance.others.members.push_back(part);
        }
        return true;
    }

    /// The size of an array, under one of the pairs of names that are in use.
    bool readSize(Instance& instance) {
        static std::pair<char const*, char const*> const pairs[] = {
            {"columns", "rows"}, {"num_a", "num_b"}, {"na", "nb"}};
        for (Tree const* const tree : {&instance.array, &instance.others})
            for (auto const& pair : pairs)
                if (tree->find(pair.first) || tree->find(pair.second))
                    return readCount(instance, tree->find(pair.first), instance.size.columns) &&
                           readCount(instance, tree->find(pair.second), instance.size.rows) && bounded(instance);
        return instance.array.isNull() || check(instance.array, false, "'array' of instance '" + instance.name + "'",
                                                "a map of 'columns' and 'rows'");
    }

    bool readCount(Instance const& instance, Tree const* tree, std::size_t& count) {
        if (!tree || tree->isNull()) return true;
        char const* const end = tree->text.data() + tree->text.size();
        bool const good = tree->isNumber() && std::from_chars(tree->text.data(), end, count).ptr == end && count > 0;
        if (!good) error(tree->mark, "array of instance '" + instance.name + "': a count is a whole number from 1");
        return good;
    }

    bool bounded(Instance const& instance) {
        ArraySize const& size = instance.size;
        bool const good =
            size.columns <= kMostElements && size.rows <= kMostElements && (elements += size.count()) <= kMostElements;
        if (!good)
            error(instance.mark, "the arrays up to '" + instance.name + "' have more than " +
                                     std::to_string(kMostElements) + " elements");
        return good;
    }

    bool readEnd(Tree const& tree, std::string const& what, Net& net) {
        bool const good = tree.isText() && tree.text.find(',') != std::string::npos;
        if (good)
            net.ends.push_back({tree.text, tree.mark});
        else
            error(tree.mark, what + " is " + (tree.isText() ? "'" + tree.text + "'" : kindWord(tree)) +
                                 ", where \"instance,port\" belongs");
        return good;
    }

    void readConnections(Tree const& tree) {
        if (!check(tree, tree.isMap(), "'connections'", "a map")) return;
        document.asConnections = document.nets.empty();
        for (Tree::Member const& member : tree.members) {
            Net net;
            Tree first = Tree::ofText(member.name);
            first.mark = member.mark;
            if (readEnd(first, "an end", net) && readEnd(member.value, "an end", net))
                document.nets.push_back(std::move(net));
            else
                document.oddNets.items.push_back(pairOf(first, member.value));
        }
    }

    void readNets(Tree const& tree) {
        if (!check(tree, tree.isList(), "'nets'", "a list")) return;
        if (!tree.items.empty()) document.asConnections = false;
        for (Tree const& item : tree.items)
            if (!readNet(item)) document.oddNets.items.push_back(item);
    }

    bool readNet(Tree const& tree) {
        Net net;
        bool good = true;
        if (tree.isList()) {
            for (Tree const& item : tree.items) good = readEnd(item, "an end of a net", net) && good;
        } else if (check(tree, tree.isMap(), "a net", "a map of 'p1' and 'p2'")) {
            for (Tree::Member const& member : tree.members) {
                if (member.name == "p1" || member.name == "p2")
                    good = readEnd(member.value, "'" + member.name + "'", net) && good;
                else
                    net.others.members.push_back(member);
            }
        } else {
            return false;
        }
        if (good && net.ends.size() < 2)
            error(tree.mark, "a net has " + counted(net.ends.size(), "end") + " and needs two");
        if (!good || net.ends.size() < 2) return false;
        document.nets.push_back(std::move(net));
        return true;
    }

    void readPorts(Tree const& tree) {
        if (!check(tree, tree.isMap(), "'ports'", "a map")) return;
        for (Tree::Member const& member : tree.members) {
            Net ends;
            if (readEnd(member.value, "the end of outer port '" + member.name + "'", ends))
                document.ports.push_back({member.name, member.mark, ends.ends.front()});
        }
    }

    void readPlacements(Tree const& tree) {
        if (check(tree, tree.isMap(), "'placements'", "a map")) document.strayPlacements = tree;
    }

    /// Gives each instance its placement; the rest stays behind.
    void takePlacements() {
        std::map<std::string, Instance*> named;
        for (Instance& instance : document.instances) named[instance.name] = &instance;
        Tree rest = Tree::map();
        for (Tree::Member& member : document.strayPlacements.members) {
            auto const found = named.find(member.name);
            if (found == named.end() || member.value.isNull())
                rest.members.push_back(std::move(member));
            else
                found->second->placement = std::move(member.value);
        }
        document.strayPlacements = std::move(rest);
    }

    Document& document;
    Findings& findings;
    std::size_t elements = 0;
};

/// Whether a file holds netlists under names, and which.
std::string innerNetlists(Tree const& tree) {
    std::string names;
    for (Tree::Member const& member : tree.members)
        if (member.value.find("instances")) names += (names.empty() ? "'" : ", '") + printable(member.name) + "'";
    return names;
}

void refuseOtherShapes(Tree const& tree, std::string const& path) {
    std::string const cure = "a netlist is a map with 'instances', 'nets' or 'connections', and 'ports'";
    if (!tree.isMap()) throw Failure(path, std::string("holds ") + kindWord(tree) + " and no netlist", cure);
    Tree const* const instances = tree.find("instances");
    std::string const inner = instances ? "" : innerNetlists(tree);
    if (!inner.empty()) throw Failure(path, "holds netlists by name: " + inner, "give each of them a file of its own");
    if (!instances) {
        std::vector<std::string> names;
        for (Tree::Member const& member : tree.members) names.push_back(member.name);
        auto const near = nearNames("instances", names);
        throw Failure(path, "has no 'instances'", near.empty() ? cure : "is '" + near.front() + "' meant for it?");
    }
    if (!instances->isMap() && !instances->isNull())
        throw Failure(placeText(path, instances->mark),
                      std::string("'instances' is ") + kindWord(*instances) + ", where a map of names belongs", cure);
}

void addUnlessEmpty(Tree& map, char const* name, Tree const& value) {
    if (!value.isNull() && !(value.isMap() && value.members.empty())) map.add(name, value);
}

Tree treeOfNets(Document const& document) {
    Tree nets = document.asConnections ? Tree::map() : Tree::list();
    for (Net const& net : document.nets) {
        if (document.asConnections) {
            nets.add(net.ends[0].text, Tree::ofText(net.ends[1].text));
            continue;
        }
        nets.items.push_back(treeFrom(net));
    }
    nets.items.insert(nets.items.end(), document.oddNets.items.begin(), document.oddNets.items.end());
    return nets;
}

}  // namespace

Document documentFrom(Tree const& tree, std::string const& path, Findings& findings) {
    refuseOtherShapes(tree, path);
    Document document;
    document.path = path;
    DocumentReader(document, findings).read(tree);
    return document;
}

Tree treeFrom(Instance const& instance) {
    Tree tree = Tree::map();
    tree.add("component", Tree::ofText(instance.component));
    if (!instance.info.isNull()) tree.add("info", instance.info);
    tree.add("settings", instance.settings);
    if (!instance.array.isNull()) tree.add("array", instance.array);
    for (Tree::Member const& other : instance.others.members) tree.members.push_back(other);
    addUnlessEmpty(tree, "vrl", instance.extension);
    return tree;
}

Tree treeFrom(Net const& net) {
    Tree pair = pairOf(Tree::ofText(net.ends[0].text), Tree::ofText(net.ends[1].text));
    for (Tree::Member const& other : net.others.members) pair.members.push_back(other);
    return pair;
}

Tree treeFrom(Document const& document) {
    Tree tree = Tree::map();
    if (!document.name.empty()) tree.add("name", Tree::ofText(document.name));
    Tree instances = Tree::map();
    Tree placements = document.strayPlacements;
    for (Instance const& instance : document.instances) {
        instances.add(instance.name, treeFrom(instance));
        if (!instance.placement.isNull()) placements.add(instance.name, instance.placement);
    }
    for (Tree::Member const& odd : document.oddInstances.members) instances.members.push_back(odd);
    tree.add("instances", std::move(instances));
    tree.add(document.asConnections ? "connections" : "nets", treeOfNets(document));
    addUnlessEmpty(tree, "placements", placements);
    Tree ports = Tree::map();
    for (OuterPort const& port : document.ports) ports.add(port.name, Tree::ofText(port.end.text));
    tree.add("ports", std::move(ports));
    for (Tree::Member const& other : document.others.members) tree.members.push_back(other);
    addUnlessEmpty(tree, "vrl", document.extension);
    return tree;
}

std::string arrayName(Instance const& instance, std::size_t column, std::size_t row) {
    if (instance.size.count() == 1) return instance.name;
    return instance.name + "<" + std::to_string(column) + "." + std::to_string(row) + ">";
}

}  // namespace vrltool::exchange
