#include "draw/selection.h"

#include <algorithm>
#include <deque>

#include "draw/ports.h"
#include "text/failure.h"
#include "text/near_names.h"
#include "text/table.h"

namespace vrltool::draw {

namespace {

/// Elements in the order in which a walk along the connections meets them.
class Walk {
public:
    explicit Walk(Circuit const& walked) : circuit(walked), met(walked.elements.size()) {}

    /// Meets an element and everything within a number of connections of what was met with it.
    void from(std::vector<std::size_t> const& starts, std::size_t hops) {
        std::deque<std::size_t> border;
        for (std::size_t const start : starts) meet(start, border);
        for (; hops > 0 && !border.empty(); --hops) {
            std::deque<std::size_t> next;
            for (std::size_t const element : border)
                for (ElementPort const& port : circuit.elements[element].ports) meetPorts(port.node, next);
            border.swap(next);
        }
    }

    std::vector<std::size_t> const& order() const { return inOrder; }

private:
    // An electrical net of many ports, such as a common ground, makes no neighbours; nor is it drawn as a wire.
    bool leadsOn(std::vector<PortPlace> const& ports) const {
        return ports.size() == 2 || std::any_of(ports.begin(), ports.end(), [&](PortPlace const& port) {
                   return boundarySide(circuit.elements[port.element].ports[port.port]) != Side::kBelow;
               });
    }

    /// Each node leads on once, whatever number of ports is there.
    void meetPorts(unsigned node, std::deque<std::size_t>& border) {
        if (!metNodes.insert(node).second) return;
        auto const found = circuit.nodes.find(node);
        if (found == circuit.nodes.end() || !leadsOn(found->second)) return;
        for (PortPlace const& port : found->second) meet(port.element, border);
    }

    void meet(std::size_t element, std::deque<std::size_t>& border) {
        if (met[element]) return;
        met[element] = true;
        inOrder.push_back(element);
        border.push_back(element);
    }

    Circuit const& circuit;
    std::vector<bool> met;
    std::set<unsigned> metNodes;
    std::vector<std::size_t> inOrder;
};

/// Says of a path such as "arms/upper" why it is not taken.
void refuseWhatIsInside(Circuit const& circuit, std::string const& path) {
    for (Element const& element : circuit.elements) {
        std::string const composite = element.label();
        if (!isComposite(element) || path.compare(0, composite.size() + 1, composite + "/") != 0) continue;
        std::string const name = printable(composite);
        throw Failure("'" + printable(path) + "'", "is inside '" + name + "', and --around takes top-level elements",
                      "'--around \"" + name + "\" --depth 1' draws that with its inside");
    }
}

std::size_t elementNamed(Circuit const& circuit, std::string const& name) {
    auto const& elements = circuit.elements;
    auto const found =
        std::find_if(elements.begin(), elements.end(), [&](Element const& e) { return e.label() == name; });
    if (found != elements.end()) return static_cast<std::size_t>(found - elements.begin());
    refuseWhatIsInside(circuit, name);
    std::vector<std::string> names;
    for (Element const& element : elements) names.push_back(element.label());
    throw Failure("'" + printable(name) + "'", "the circuit has no element of that name", didYouMean(name, names));
}

std::vector<std::size_t> elementsAtInputs(Circuit const& circuit) {
    std::vector<std::size_t> result;
    for (unsigned const node : circuit.inputs) {
        auto const ports = circuit.nodes.find(node);
        if (ports == circuit.nodes.end()) continue;
        for (PortPlace const& port : ports->second) result.push_back(port.element);
    }
    return result;
}

std::vector<std::size_t> chosen(Circuit const& circuit, Picture const& picture) {
    Walk walk(circuit);
    if (!picture.around.empty()) {
        walk.from({elementNamed(circuit, picture.around)}, picture.hops);
        return walk.order();
    }
    std::size_t const all = circuit.elements.size();
    walk.from(elementsAtInputs(circuit), all);
    for (std::size_t element = 0; element < all; ++element) walk.from({element}, all);
    return walk.order();
}

/// A stand-in for a block that is no composite has an inside, but nothing in it.
bool hasInside(Element const& element) {
    return element.inside && !(isUnknown(element) && element.inside->elements.empty());
}

/// The insides of the shown elements, and their insides, layer by layer.
std::vector<Circuit const*> insides(Circuit const& circuit, std::vector<bool> const& shown) {
    std::vector<Circuit const*> result;
    for (std::size_t i = 0; i < circuit.elements.size(); ++i)
        if (shown[i] && hasInside(circuit.elements[i])) result.push_back(circuit.elements[i].inside.get());
    for (std::size_t i = 0; i < result.size(); ++i)
        for (Element const& element : result[i]->elements)
            if (hasInside(element)) result.push_back(element.inside.get());
    return result;
}

/// Opens insides while there is room. Returns how many stay closed.
std::size_t openInsides(Selection& selection, std::vector<Circuit const*> const& all, std::size_t room) {
    std::size_t closed = 0;
    std::set<Circuit const*> unreachable;
    for (Circuit const* inside : all) {
        bool const fits = unreachable.count(inside) == 0 && inside->elements.size() <= room;
        if (fits) {
            selection.open.insert(inside);
            room -= inside->elements.size();
            continue;
        }
        ++closed;
        for (Element const& element : inside->elements) unreachable.insert(element.inside.get());
    }
    return closed;
}

void noteHidden(Selection& selection, std::size_t count, std::size_t all, std::string const& why) {
    if (count > 0)
        selection.notes.push_back("hidden: " + std::to_string(count) + " of " + counted(all, "element") + ", " + why);
}

}  // namespace

Selection selectionOf(Circuit const& circuit, Picture const& picture) {
    Selection selection;
    std::size_t const all = circuit.elements.size();
    auto order = chosen(circuit, picture);
    noteHidden(selection, all - order.size(), all,
               "more than " + counted(picture.hops, "hop") + " from '" + printable(picture.around) + "'");
    std::size_t const limit = picture.max == 0 ? static_cast<std::size_t>(-1) : picture.max;
    std::string const past = "past the limit of " + std::to_string(limit);
    if (order.size() > limit) {
        noteHidden(selection, order.size() - limit, all, past);
        order.resize(limit);
    }
    selection.shown.assign(all, false);
    for (std::size_t const element : order) selection.shown[element] = true;
    std::size_t const closed = openInsides(selection, insides(circuit, selection.shown), limit - order.size());
    if (closed > 0) selection.notes.push_back("closed: " + counted(closed, "composite") + ", " + past);
    if (all == 0) selection.notes.push_back("the circuit has no elements");
    if (!circuit.danglingConnections.empty())
        selection.notes.push_back("left out: " + counted(circuit.danglingConnections.size(), "connection") +
                                  " of missing elements");
    return selection;
}

}  // namespace vrltool::draw
