#include "setting/target.h"

#include <algorithm>
#include <set>
#include <utility>

#include "circuit/parameters.h"
#include "text/failure.h"
#include "text/natural_order.h"
#include "text/pattern.h"
#include "text/phrases.h"

namespace vrltool::setting {

namespace {

// The words for a choice.
char const* const kCrossSection = "cs";
char const* const kFlow = "flow";

/// Those of the things whose name is the pattern, or, if there is none, those that it fits.
template <class Thing, class NameOf>
std::vector<Thing const*> matching(std::vector<Thing> const& things, std::string const& pattern, NameOf nameOf) {
    std::vector<Thing const*> found;
    for (Thing const& thing : things)
        if (nameOf(thing) == pattern) found.push_back(&thing);
    if (!found.empty() || !isPattern(pattern)) return found;
    for (Thing const& thing : things)
        if (fits(nameOf(thing), pattern)) found.push_back(&thing);
    return found;
}

SavedChanges::Path operator+(SavedChanges::Path path, std::vector<std::string> const& more) {
    path.insert(path.end(), more.begin(), more.end());
    return path;
}

std::string dotted(std::string const& element, std::string const& thing) {
    return element.empty() ? thing : element + "." + thing;
}

/// Whether a name is that of the choice of a port, "in0.cs".
bool isOfPort(std::string const& name) {
    auto const dot = name.find_last_of('.');
    std::string const last = dot == std::string::npos ? "" : name.substr(dot + 1);
    return last == kCrossSection || last == kFlow;
}

/// "parameter 'width'", or "port 'in0'" of "in0.cs".
std::string thingText(std::string const& name) {
    return isOfPort(name) ? "port " + inQuotes(name.substr(0, name.find_last_of('.'))) : "parameter " + inQuotes(name);
}

std::string ownerText(std::string const& element) { return element.empty() ? "the design" : inQuotes(element); }

}  // namespace

std::string Target::text() const {
    if (what == What::kParameter) return dotted(element, name);
    std::string const word = what == What::kFlow ? kFlow : kCrossSection;
    if (name.empty()) return dotted(element, word);
    return (element.empty() ? "" : element + ",") + name + "." + word;
}

Targets::Targets(Design const& design, std::string kind) : wantedKind(std::move(kind)) {
    top.list = design.object.list();
    top.block = design.object.block();
    if (top.block) {
        alone = elementOf("", 0, top.block);
        top.inside = alone.inside.get();
    } else if (vrl::Netlist* const netlist = design.object.netlist()) {
        circuit = circuitFrom(*netlist);
        top.inside = &circuit;
        top.list = netlist;
    }
    if (!top.list)
        throw Failure(design.path, "holds a '" + design.type + "', of which nothing can be set",
                      "'vrl show' shows what it holds");
    checkKind(design);
}

/// A kind that no element has is a slip.
void Targets::checkKind(Design const& design) const {
    std::set<std::string> kinds;
    for (Place const& place : elements()) kinds.insert(place.block->getName());
    if (wantedKind.empty() || kinds.count(wantedKind) > 0) return;
    throw Failure(design.path, "no element is of the kind " + inQuotes(wantedKind),
                  namesHint(wantedKind, {kinds.begin(), kinds.end()}, "the kinds"));
}

Targets::Place Targets::placeOf(Place const& outer, Element const& element) {
    static std::string const blocks = vrl::Netlist::getSerId("BBList");
    Place place;
    place.element = (outer.element.empty() ? "" : outer.element + "/") + element.label();
    place.path = outer.path + SavedChanges::Path{blocks, std::to_string(element.number)};
    place.list = place.block = element.block;
    place.inside = element.inside.get();
    return place;
}

/// Names may have slashes of their own: each of them may be the one before the name of an inner element.
void Targets::collect(Place const& at, std::string const& pattern, std::vector<Place>& found) const {
    if (!at.inside) return;
    auto const label = [](Element const& element) { return element.label(); };
    for (Element const* const element : matching(at.inside->elements, pattern, label))
        if (element->block && isWanted(*element) && !(element->isSecondName && isPattern(pattern)))
            found.push_back(placeOf(at, *element));
    for (auto slash = pattern.find('/'); slash != std::string::npos; slash = pattern.find('/', slash + 1))
        for (Element const* const element : matching(at.inside->elements, pattern.substr(0, slash), label))
            collect(placeOf(at, *element), pattern.substr(slash + 1), found);
}

void Targets::collectAll(Place const& at, std::vector<Place>& found) {
    found.push_back(at);
    if (!at.inside) return;
    for (Element const& element : at.inside->elements)
        if (element.block) collectAll(placeOf(at, element), found);
}

std::vector<Targets::Place> Targets::elements() const {
    std::vector<Place> all;
    collectAll(top, all);
    all.erase(all.begin());
    return all;
}

std::vector<Target> Targets::thingsOf(Place const& place, std::string const& name, bool portsOnly) {
    static std::string const parameters = vrl::Attributes::getSerId("attributes"), ports = vrl::BB::getSerId("ports"),
                             own = vrl::BB::getSerId("defaultCS"), ofPort = vrl::BB::Port::getSerId("currCS");
    std::vector<Target> found;
    if (!portsOnly && place.list->find(name)) {
        found.push_back({Target::What::kParameter, place.element, name,
                         place.path + SavedChanges::Path{parameters, name}, place.block, place.list->getAttribute(name),
                         nullptr});
        return found;
    }
    if (!place.block) return found;
    for (auto const what : {Target::What::kCrossSection, Target::What::kFlow}) {
        std::string const word = what == Target::What::kFlow ? kFlow : kCrossSection;
        if (!portsOnly && name == word)
            found.push_back({what, place.element, "", place.path + SavedChanges::Path{own}, place.block, nullptr,
                             &place.block->vrl::BB::getCS()});
        if (name.size() <= word.size() || name.substr(name.size() - word.size() - 1) != "." + word) continue;
        std::vector<std::string> names;
        for (auto port = place.block->beginPort(); port != place.block->endPort(); ++port)
            names.push_back(port->getName().getName());
        std::string const pattern = name.substr(0, name.size() - word.size() - 1);
        for (auto const* const port : matching(names, pattern, [](std::string const& each) { return each; }))
            found.push_back({what, place.element, *port, place.path + SavedChanges::Path{ports, *port, ofPort},
                             place.block, nullptr, &place.block->getPort(*port)->getCS()});
    }
    return found;
}

/// Names may have dots, commas and equals signs of their own: each of them may be the one that separates.
std::vector<Targets::Reading> Targets::readingsOf(std::string const& word) const {
    std::vector<Reading> readings;
    for (auto equals = word.find('='); equals != std::string::npos; equals = word.find('=', equals + 1)) {
        std::string const left = word.substr(0, equals), value = word.substr(equals + 1);
        if (wantedKind.empty()) readings.push_back({"", left, value, {top}});
        for (auto dot = left.find_first_of(".,"); dot != std::string::npos; dot = left.find_first_of(".,", dot + 1)) {
            Reading reading{left.substr(0, dot), left.substr(dot), value, {}};
            collect(top, reading.elements, reading.places);
            std::stable_sort(reading.places.begin(), reading.places.end(),
                             [](Place const& a, Place const& b) { return naturallyLess(a.element, b.element); });
            if (!reading.places.empty()) readings.push_back(std::move(reading));
        }
    }
    return readings;
}

Assignment Targets::assignmentOf(std::string const& word, Reading const& reading) const {
    bool const separated = !reading.elements.empty();
    std::string const name = separated ? reading.thing.substr(1) : reading.thing;
    Assignment assignment{word, reading.value, {}, thingText(name), {}};
    std::set<SavedChanges::Path> seen;
    for (Place const& place : reading.places) {
        if (!seen.insert(place.path).second) continue;  // two names of one element
        auto const things = thingsOf(place, name, separated && reading.thing[0] == ',');
        assignment.targets.insert(assignment.targets.end(), things.begin(), things.end());
        if (things.empty()) assignment.without.push_back(place.element);
    }
    return assignment;
}

Assignment Targets::find(std::string const& word) const {
    std::vector<Assignment> found;
    for (Reading const& reading : readingsOf(word)) {
        found.push_back(assignmentOf(word, reading));
        if (found.back().targets.empty()) found.pop_back();
    }
    if (found.empty()) failUnknown(word);
    if (found.size() == 1) return found.front();
    auto const meaning = [](Assignment const& assignment) {
        Target const& target = assignment.targets.front();
        return inQuotes(target.name) + " of " + ownerText(target.element) + " as " + inQuotes(assignment.value);
    };
    throw Failure(word, "can be read in two ways: " + meaning(found[0]) + ", or " + meaning(found[1]),
                  "rename one of them");
}

/// Says which part of the word is wrong: the last reading whose elements exist is most likely the intended one.
void Targets::failUnknown(std::string const& word) const {
    char const* const form = "write it as ELEMENT.PARAMETER=VALUE, or PARAMETER=VALUE of the design";
    auto const equals = word.find('=');
    if (equals == std::string::npos) throw Failure(word.empty() ? "''" : word, "has no value", form);
    if (equals == 0 || word[equals - 1] == '.') throw Failure(word, "names no parameter", form);
    Reading best{"", word.substr(0, equals), "", {top}};
    for (Reading const& reading : readingsOf(word))
        if (!reading.elements.empty() && reading.value.size() >= best.value.size()) best = reading;
    auto const dot = best.thing.find_last_of('.');
    if (best.elements.empty() && top.inside && dot != std::string::npos) failElement(word, best.thing.substr(0, dot));
    bool const ofPort = !best.elements.empty() && best.thing[0] == ',';
    if (!best.elements.empty()) best.thing.erase(0, 1);
    bool const isChoice = isOfPort(best.thing);
    if (ofPort && !isChoice)
        throw Failure(word, "names a port, of which only '.cs' and '.flow' can be set", "write ELEMENT,PORT.cs=NAME");
    if (isChoice && best.places.front().block)
        failPort(word, best.places.front(), best.thing.substr(0, best.thing.find_last_of('.')));
    std::vector<Place> named;
    if (best.elements.empty()) collect(top, best.thing, named);
    if (!named.empty())
        throw Failure(word, inQuotes(best.thing) + " is an element", "write " + best.thing + ".PARAMETER=VALUE");
    failParameter(word, best);
}

void Targets::failElement(std::string const& word, std::string const& element) const {
    std::vector<std::string> names;
    for (Place const& place : elements())
        if (wantedKind.empty() || place.block->getName() == wantedKind) names.push_back(place.element);
    std::sort(names.begin(), names.end(), naturallyLess);
    std::string const kind = wantedKind.empty() ? "" : " of the kind " + inQuotes(wantedKind);
    std::string const what = isPattern(element) ? "no element" + kind + " fits " + inQuotes(element)
                             : kind.empty()     ? "there is no element " + inQuotes(element)
                                                : inQuotes(element) + " is no element" + kind;
    throw Failure(word, what, namesHint(element, names, kind.empty() ? "the elements" : "those of the kind"));
}

void Targets::failPort(std::string const& word, Place const& place, std::string const& port) {
    std::vector<std::string> names;
    for (auto each = place.block->beginPort(); each != place.block->endPort(); ++each)
        names.push_back(each->getName().getName());
    throw Failure(word, ownerText(place.element) + " has no port " + inQuotes(port),
                  namesHint(port, names, "its ports"));
}

void Targets::failParameter(std::string const& word, Reading const& reading) {
    std::set<std::string> names;
    for (Place const& place : reading.places)
        for (ListedParameter const& listed : listedParameters(*place.list)) names.insert(listed.name);
    if (names.empty() && reading.places.front().element.empty())
        throw Failure(word, "the design has no parameters of its own", "write it as ELEMENT.PARAMETER=VALUE");
    std::size_t const count = reading.places.size();
    std::string const owner = count > 1 ? "none of the " + std::to_string(count) + " elements that fit has a parameter "
                                        : ownerText(reading.places.front().element) + " has no parameter ";
    throw Failure(word, owner + inQuotes(reading.thing),
                  namesHint(reading.thing, {names.begin(), names.end()}, "the parameters"));
}

std::vector<std::string> Targets::words() const {
    std::vector<Place> all;
    collectAll(top, all);
    std::vector<std::string> words;
    for (Place const& place : all) {
        for (ListedParameter const& listed : listedParameters(*place.list))
            words.push_back(dotted(place.element, listed.name) + "=");
        if (place.block) words.push_back(dotted(place.element, kCrossSection) + std::string("="));
    }
    return words;
}

}  // namespace vrltool::setting
