#include "spice/netlist.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <sstream>
#include <utility>
#include <vector>

#include "circuit/composite_ports.h"
#include "circuit/direction.h"
#include "circuit/parameters.h"
#include "design/stand_in.h"
#include "spice/names.h"
#include "text/failure.h"
#include "text/number.h"
#include "text/phrases.h"
#include "text/table.h"

namespace vrltool::spice {

namespace {

using values::Findings;

constexpr std::size_t kWidth = 100;
constexpr std::size_t kLongestStatement = 100000;  // of what is read: names stand at its beginning

/// A statement, continued over lines where it is long.
std::string statement(std::vector<std::string> const& words) {
    std::string text, line;
    for (std::string const& word : words) {
        if (!line.empty() && line.size() + 1 + word.size() > kWidth) {
            text += line + '\n';
            line = "+";
        }
        line += (line.empty() ? "" : " ") + word;
    }
    return text + line + '\n';
}

/// A parameter as SPICE has it: "length=100", with its unit for a comment.
struct Setting {
    std::string name, value, unit;
};

/// A subcircuit without an inside, in the place of a model.
struct Stub {
    std::string name;
    std::vector<std::string> pins;
    std::vector<Setting> settings;
    std::vector<std::string> comments;
};

/// How the ports of an element are called within the subcircuit of its kind.
std::vector<std::string> pinsOf(Element const& element) {
    Names names = nodeNames();
    std::vector<std::string> pins;
    for (ElementPort const& port : element.ports) pins.push_back(names.take(port.name));
    return pins;
}

class Writer {
public:
    Writer(Source const& of, Findings& list) : source(of), findings(list) {
        for (std::string const& name : source.defined) subcircuits.take(name);
    }

    Netlist write() {
        std::string const name = subcircuits.take(source.name);
        if (name != source.name)
            findings.add(Severity::kNote, source.path, {},
                         "the subcircuit of the design is called '" + name + "', not '" + printable(source.name) + "'");
        Circuit const& circuit = source.circuit;
        std::map<unsigned, std::string> nodes;
        Names names = nodeNames();
        std::vector<std::string> pins;
        addPins(circuit.inputs, "in", nodes, names, pins);
        addPins(circuit.outputs, "out", nodes, names, pins);
        addPins(circuit.dc, "dc", nodes, names, pins);
        std::string const body = bodyOf(circuit, nodes, names);
        std::vector<std::string> head{".subckt", name};
        head.insert(head.end(), pins.begin(), pins.end());
        result.nodes = nodes.size();
        result.pins = pins.size();
        result.text = "* " + printable(source.path) + ", written by vrl export\n";
        if (!source.models.empty()) result.text += ".include \"" + source.models + "\"\n";
        for (Stub const& stub : stubs) result.text += textOf(stub);
        for (std::string const& text : composites) result.text += '\n' + text;
        result.text += '\n' + statement(head) + body + ".ends " + name + '\n';
        return std::move(result);
    }

private:
    void addPins(std::vector<unsigned> const& list, std::string const& head, std::map<unsigned, std::string>& nodes,
                 Names& names, std::vector<std::string>& pins) {
        std::size_t number = 0;
        for (unsigned const node : list) {
            std::string const plain = head + std::to_string(number++);
            auto const given = source.outerNames.find(node);
            auto const [entry, isNew] = nodes.try_emplace(node);
            if (!isNew) continue;  // a node that is on the boundary twice is one pin
            std::string const& wanted = given == source.outerNames.end() ? plain : given->second.front();
            pins.push_back(entry->second = names.take(wanted));
            if (entry->second != wanted)
                findings.addName(Severity::kNote, source.path, {}, "pins with another name than in the design",
                                 entry->second);
        }
    }

    /// The instances of a circuit, some of whose nodes have names already.
    std::string bodyOf(Circuit const& circuit, std::map<unsigned, std::string>& nodes, Names& names) {
        std::string body;
        Names instances;
        for (Element const& element : circuit.elements) {
            if (!element.block) {
                findings.addName(Severity::kWarning, source.path, {}, "the netlist does not hold names without a block",
                                 element.label());
                continue;
            }
            std::vector<std::string> words{"X" + instances.take(element.label())};
            for (ElementPort const& port : element.ports) words.push_back(nodeOf(element, port, nodes, names));
            auto const settings = settingsOf(element);
            compareSections(element);
            words.push_back(subcircuitOf(element, settings));
            for (Setting const& setting : settings) words.push_back(setting.name + "=" + setting.value);
            body += statement(words);
            ++result.instances;
        }
        return body;
    }

    /// A node is called after the first of its ports, unless it is a pin. What is not connected has a node of its own.
    static std::string nodeOf(Element const& element, ElementPort const& port, std::map<unsigned, std::string>& nodes,
                              Names& names) {
        std::string const wanted = element.label() + "_" + port.name;
        if (port.node == 0) return names.take(wanted);
        auto const [entry, isNew] = nodes.try_emplace(port.node);
        if (isNew) entry->second = names.take(wanted);
        return entry->second;
    }

    /// Elements of one kind are instances of one model, which knows their parameters and not their cross sections.
    void compareSections(Element const& element) {
        std::string choices = choiceText(element.block->vrl::BB::getCS());
        for (auto port = element.block->beginPort(); port != element.block->endPort(); ++port)
            choices += '\n' + choiceText(port->getCS());
        if (sectionsOf.try_emplace(element.kind, choices).first->second != choices)
            findings.addName(Severity::kNote, source.path, {},
                             "kinds whose elements differ in their cross sections, which the netlist does not hold",
                             element.kind);
    }

    static std::string choiceText(vrl::Foundry::CSInfo const& choice) {
        return choice.getCSName() + '\t' + choice.getFlowName();
    }

    std::vector<Setting> settingsOf(Element const& element) {
        std::vector<Setting> settings;
        Names names = parameterNames();
        for (Parameter const& parameter : parametersOf(*element.block)) {
            auto const lose = [&](char const* sort, Severity severity) {
                findings.addName(severity, source.path, {}, std::string("the netlist does not hold ") + sort,
                                 element.label() + "." + parameter.name);
            };
            auto const add = [&](std::string const& name, double value) {
                if (!std::isfinite(value)) return lose("numbers that are not finite", Severity::kWarning);
                std::string const head = std::isalpha(static_cast<unsigned char>(name[0])) ? "" : "p_";
                settings.push_back({names.take(head + name), numberText(value), parameter.unit});
            };
            if (auto const* const flag = std::get_if<bool>(&parameter.value))
                add(parameter.name, *flag);
            else if (auto const* const whole = std::get_if<int>(&parameter.value))
                add(parameter.name, *whole);
            else if (auto const* const number = std::get_if<double>(&parameter.value))
                add(parameter.name, *number);
            else if (auto const* const pair = std::get_if<std::complex<double>>(&parameter.value))
                add(parameter.name + "_re", pair->real()), add(parameter.name + "_im", pair->imag());
            else
                lose("parameters that are no numbers", Severity::kNote);
        }
        return settings;
    }

    /// The subcircuit that an element is an instance of, which is made at its first use.
    std::string subcircuitOf(Element const& element, std::vector<Setting> const& settings) {
        std::string const kind = element.kind.empty() ? "block" : element.kind;
        if (isDefined(kind)) return kind;
        if (auto const inside = nodesInside(element)) return compositeOf(element, kind, settings, *inside);
        if (element.inside && !isStandIn(*element.block))
            findings.addName(Severity::kWarning, source.path, {},
                             "composites whose ports do not fit the boundary inside, written without it",
                             element.label());
        Stub stub;
        stub.pins = pinsOf(element);
        stub.settings = settings;
        for (std::size_t i = 0; i < stub.pins.size(); ++i)
            stub.comments.push_back(stub.pins[i] + " " + vrl::EnumList::getName(element.ports[i].domain));
        for (Setting const& setting : settings)
            if (!setting.unit.empty() && setting.unit != "1")
                stub.comments.push_back(setting.name + " in " + setting.unit);
        std::string key = kind;
        for (std::string const& pin : stub.pins) key += '\n' + pin;
        for (Setting const& setting : settings) key += "\n=" + setting.name;
        auto const [entry, isNew] = stubNames.try_emplace(key);
        if (!isNew) return entry->second;
        stub.name = entry->second = subcircuits.take(kind);
        findings.addName(Severity::kNote, source.path, {}, "kinds without a model, written as empty subcircuits", kind);
        stubs.push_back(stub);
        return stub.name;
    }

    bool isDefined(std::string const& kind) const { return source.defined.count(lowered(kind)) > 0; }

    std::string compositeOf(Element const& element, std::string const& kind, std::vector<Setting> const& settings,
                            std::map<std::string, unsigned> const& inside) {
        std::map<unsigned, std::string> nodes;
        Names names = nodeNames();
        std::vector<std::string> rest;
        std::string connections;
        for (ElementPort const& port : element.ports) {
            auto const found = inside.find(port.name);
            auto const [entry, isNew] = nodes.try_emplace(found == inside.end() ? 0 : found->second);
            std::string const pin = names.take(port.name);
            if (isNew)
                entry->second = pin;
            else if (found != inside.end())
                connections += "R" + pin + ' ' + pin + ' ' + entry->second + " 1e-06\n";  // two pins at one node
            rest.push_back(pin);
        }
        for (Setting const& setting : settings) rest.push_back(setting.name + "=" + setting.value);
        nodes.erase(0);
        std::size_t const before = result.instances;
        std::string const body = bodyOf(*element.inside, nodes, names) + connections;
        std::string key = kind + '\n' + body;
        for (ElementPort const& port : element.ports) key += '\n' + port.name;
        auto const [entry, isNew] = compositeNames.try_emplace(key);
        if (!isNew) {
            result.instances = before;
            return entry->second;
        }
        entry->second = subcircuits.take(kind);
        rest.insert(rest.begin(), {".subckt", entry->second});
        composites.push_back(statement(rest) + body + ".ends " + entry->second + '\n');
        return entry->second;
    }

    static std::string textOf(Stub const& stub) {
        std::vector<std::string> comment{"*"}, head{".subckt", stub.name};
        std::string comments;
        for (std::string const& part : stub.comments) comments += (comments.empty() ? "" : ", ") + part;
        head.insert(head.end(), stub.pins.begin(), stub.pins.end());
        for (Setting const& setting : stub.settings) head.push_back(setting.name + "=" + setting.value);
        return "\n* " + printable(comments) + '\n' + statement(head) + ".ends " + stub.name + '\n';
    }

    Source const& source;
    Findings& findings;
    Netlist result;
    Names subcircuits;
    std::map<std::string, std::string> stubNames, compositeNames;  ///< by all that makes two of them equal
    std::map<std::string, std::string> sectionsOf;                 ///< the choices of the first element of a kind
    std::vector<Stub> stubs;
    std::vector<std::string> composites;  ///< each after those that it uses
};

}  // namespace

std::set<std::string> subcircuitsIn(std::string const& path) {
    char const* const hint = "name a file of SPICE with the models of kinds";
    bool const plain = std::all_of(path.begin(), path.end(), [](unsigned char c) { return c >= 0x20 && c != '"'; });
    if (!plain) throw Failure(printable(path), "has a name that no netlist of SPICE can include", "rename it");
    if (!std::filesystem::is_regular_file(path)) throw Failure(path, "is not a regular file", hint);
    std::ifstream file(path);
    std::set<std::string> names;
    std::string statement;
    auto const take = [&] {
        std::replace(statement.begin(), statement.end(), '(', ' ');
        std::istringstream words(statement);
        std::string word, name;
        if (words >> word >> name && word == ".subckt") names.insert(name);
        statement.clear();
    };
    for (std::string line; std::getline(file, line);) {
        line = lowered(line);
        auto const begin = line.find_first_not_of(" \t");
        bool const continued = begin != std::string::npos && line[begin] == '+';
        if (!continued) take();
        if (statement.size() < kLongestStatement) statement += ' ' + (continued ? line.substr(begin + 1) : line);
    }
    take();
    if (!file.eof()) throw Failure(path, "cannot be read", hint);
    return names;
}

Netlist netlistOf(Source const& source, values::Findings& findings) { return Writer(source, findings).write(); }

}  // namespace vrltool::spice
