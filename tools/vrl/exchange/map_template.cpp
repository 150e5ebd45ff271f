#include "exchange/name_map.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include "text/near_names.h"
#include "text/table.h"

namespace vrltool::exchange {

namespace {

/// What a netlist uses of one component.
struct Used {
    std::size_t instances = 0;
    std::set<std::string> ports;
    std::map<std::string, Node> settings;  ///< with the first value that is not null
};

using Components = std::map<std::string, Used>;

void addEnd(Components& components, std::map<std::string, std::string> const& componentOf, std::string const& end) {
    auto const comma = end.rfind(',');
    std::string name = end.substr(0, comma);
    auto found = componentOf.find(name);
    if (found == componentOf.end()) found = componentOf.find(name.substr(0, name.rfind('<')));
    if (found != componentOf.end()) components[found->second].ports.insert(end.substr(comma + 1));
}

Components usedComponents(Document const& document) {
    Components components;
    std::map<std::string, std::string> componentOf;
    for (Instance const& instance : document.instances) {
        componentOf[instance.name] = instance.component.Scalar();
        Used& used = components[instance.component.Scalar()];
        ++used.instances;
        for (auto const& setting : instance.settings) {
            Node& value = used.settings.emplace(setting.first.Scalar(), setting.second).first->second;
            if (isNull(value)) value.reset(setting.second);
        }
    }
    for (Net const& net : document.nets)
        for (Node const& port : net.ports) addEnd(components, componentOf, port.Scalar());
    for (auto const& outer : document.ports) addEnd(components, componentOf, outer.second.Scalar());
    return components;
}

/// The words of a name in small letters: "sfEdgeCoupler" and "sf_edge_coupler" have the same.
std::set<std::string> wordsOf(std::string const& name) {
    std::set<std::string> words;
    std::string word;
    auto const end = [&] {
        if (word.size() > 1) words.insert(word);
        word.clear();
    };
    for (char const c : name) {
        bool const large = c >= 'A' && c <= 'Z';
        bool const letter = large || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
        if (large || !letter) end();
        if (letter) word += large ? static_cast<char>(c + 32) : c;
    }
    end();
    return words;
}

/// Up to three names that share words with a name, most of them first; without any, those that are spelt alike.
std::vector<std::string> proposals(std::string const& name, std::vector<std::string> const& known) {
    std::set<std::string> const words = wordsOf(name);
    std::vector<std::pair<int, std::string>> shared;
    for (std::string const& candidate : known) {
        int count = 0;
        for (std::string const& word : wordsOf(candidate)) count += static_cast<int>(words.count(word));
        if (count > 0) shared.emplace_back(-count, candidate);
    }
    if (shared.empty()) return nearNames(name, known);
    std::sort(shared.begin(), shared.end());
    std::vector<std::string> names;
    for (auto const& entry : shared)
        if (names.size() < 3) names.push_back(entry.second);
    return names;
}

std::string scalarText(Node const& node) {
    std::string text = written(node, Format::kYaml);
    text.pop_back();
    return text;
}

std::string nameText(std::string const& name) { return scalarText(textNode(name)); }

/// A list of names for a comment.
std::string listed(std::vector<std::string> const& names) {
    std::string text;
    for (std::string const& name : names) text += (text.empty() ? "" : ", ") + printable(name);
    return text;
}

/// Writes the map: one component after the other.
class TemplateText {
public:
    explicit TemplateText(Document const& source) : document(source) {}

    std::string write() {
        std::vector<std::string> const foundries = factoryKeys<vrl::Foundry>();
        out = "# From the names of " + printable(document.path) +
              " to ours. What is null has still to be filled in,\n" +
              "# or may stay so: a setting that is null is kept as a note.\n" +
              "# Parameters may convert: {to: length, factor: 1000}.\n" +
              "foundry: " + (foundries.empty() ? "null" : nameText(foundries.front())) +
              (foundries.size() > 1 ? "  # " + listed(foundries) : "") + "\ncomponents:";
        Components const components = usedComponents(document);
        out += components.empty() ? " {}\n" : "\n";
        for (auto const& entry : components) writeComponent(entry.first, entry.second);
        return std::move(out);
    }

private:
    void writeComponent(std::string const& name, Used const& used) {
        auto const keys = proposals(name, factoryKeys<vrl::BB>());
        FreshBlock const* const fresh = keys.empty() ? nullptr : kinds.fresh("", keys.front());
        out += "  " + nameText(name) + ":  # " + counted(used.instances, "instance") +
               "\n    key: " + (fresh ? nameText(keys.front()) : "null");
        if (keys.size() > 1) out += "  # or " + listed({keys.begin() + 1, keys.end()});
        if (keys.empty()) out += keysByPorts(used.ports.size());
        out += '\n';
        writePorts(used, fresh);
        writeParameters(used, fresh);
    }

    /// Without a near name, the keys of blocks with as many ports are what to choose from.
    std::string keysByPorts(std::size_t count) {
        std::vector<std::string> fitting;
        for (std::string const& key : factoryKeys<vrl::BB>()) {
            FreshBlock const* const fresh = kinds.fresh("", key);
            if (fresh && static_cast<std::size_t>(fresh->block->endPort() - fresh->block->beginPort()) == count)
                fitting.push_back(key);
        }
        if (fitting.empty()) return "  # one of " + listed(factoryKeys<vrl::BB>());
        return "  # of " + counted(count, "port") + ": " + listed(fitting);
    }

    /// Ports are taken in order: theirs as they are named, ours as they are declared.
    void writePorts(Used const& used, FreshBlock const* fresh) {
        if (used.ports.empty()) return;
        out += "    ports:";
        auto const ours = fresh ? portNames(*fresh->block) : std::vector<std::string>();
        bool const same = std::all_of(used.ports.begin(), used.ports.end(), [&](std::string const& port) {
            return std::find(ours.begin(), ours.end(), port) != ours.end();
        });
        out += (fresh ? "  # ours: " + listed(ours) : "") + "\n";
        std::size_t next = 0;
        for (std::string const& port : used.ports) {
            std::string const target = same ? port : next < ours.size() ? ours[next++] : "";
            out += (target.empty() ? "      # " : "      ") + nameText(port) + ": " +
                   (target.empty() ? "?" : nameText(target)) + '\n';
        }
    }

    void writeParameters(Used const& used, FreshBlock const* fresh) {
        if (used.settings.empty()) return;
        std::vector<std::string> ours;
        if (fresh)
            for (auto const& entry : fresh->parameters) ours.push_back(entry.first);
        out += "    parameters:" + (fresh ? "  # ours: " + listed(ours) : std::string()) + "\n";
        for (auto const& setting : used.settings) {
            bool const same = std::find(ours.begin(), ours.end(), setting.first) != ours.end();
            auto const near = same ? std::vector<std::string>() : proposals(setting.first, ours);
            Node const& value = setting.second;
            bool const leaf = !value.IsSequence() && !value.IsMap();
            out += "      " + nameText(setting.first) + ": " + (same ? nameText(setting.first) : "null") +
                   "  # such as " + (leaf ? printable(scalarText(value)) : kindWord(kindOf(value))) +
                   (near.empty() ? "" : "; perhaps " + listed(near)) + '\n';
        }
    }

    Document const& document;
    Kinds kinds;
    std::string out;
};

}  // namespace

std::string mapTemplate(Document const& document) { return TemplateText(document).write(); }

}  // namespace vrltool::exchange
