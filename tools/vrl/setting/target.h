#pragma once

#include <string>
#include <vector>

#include "circuit/circuit.h"
#include "design/design.h"
#include "design/saved_changes.h"

namespace vrltool::setting {

/// Something of a design that can be set: a parameter, or a name in the choice of a block or of one of its ports.
struct Target {
    enum class What { kParameter, kCrossSection, kFlow };
    What what;
    std::string element;      ///< "arms/lower"; empty for the design itself
    std::string name;         ///< of the parameter, or of the port; empty for a block's own choice
    SavedChanges::Path path;  ///< to the parameter or the choice in the file
    vrl::BB* block = nullptr;
    vrl::Attribute* parameter = nullptr;
    vrl::Foundry::CSInfo* choice = nullptr;

    /// As it is written on the command line: "arms/lower.width", "bend,out0.cs".
    std::string text() const;
};

/// What a word of the command line asks for.
struct Assignment {
    std::string word;
    std::string value;
    std::vector<Target> targets;
    std::string missing;               ///< what some elements lack: "parameter 'width'" or "port 'in7'"
    std::vector<std::string> without;  ///< those elements
};

/// The elements of a design, in which targets are found.
class Targets {
public:
    /// With a kind, of elements those of the kind only.
    explicit Targets(Design const& design, std::string kind = "");

    /// What "ELEMENT.PARAMETER=VALUE" asks for. A Failure with near names if there is nothing of those names, and one
    /// with both readings if it can be read in two ways.
    Assignment find(std::string const& word) const;

    /// The words with which an assignment can begin, up to the value, for the completion.
    std::vector<std::string> words() const;

private:
    /// An element, or the design itself.
    struct Place {
        std::string element;
        SavedChanges::Path path;
        vrl::Attributes* list = nullptr;
        vrl::BB* block = nullptr;
        Circuit const* inside = nullptr;
    };
    struct Reading {
        std::string elements, thing, value;
        std::vector<Place> places;
    };

    static Place placeOf(Place const& outer, Element const& element);
    void collect(Place const& at, std::string const& pattern, std::vector<Place>& found) const;
    static void collectAll(Place const& at, std::vector<Place>& found);
    std::vector<Place> elements() const;
    bool isWanted(Element const& element) const { return wantedKind.empty() || element.kind == wantedKind; }
    void checkKind(Design const& design) const;
    static std::vector<Target> thingsOf(Place const& place, std::string const& name, bool portsOnly);
    std::vector<Reading> readingsOf(std::string const& word) const;
    Assignment assignmentOf(std::string const& word, Reading const& reading) const;
    [[noreturn]] void failUnknown(std::string const& word) const;
    [[noreturn]] void failElement(std::string const& word, std::string const& element) const;
    [[noreturn]] static void failPort(std::string const& word, Place const& place, std::string const& port);
    [[noreturn]] static void failParameter(std::string const& word, Reading const& reading);

    std::string wantedKind;  ///< empty for all
    Circuit circuit;
    Element alone;
    Place top;
};

}  // namespace vrltool::setting
