#pragma once

#include <iosfwd>
#include <map>
#include <string>

#include "circuit/outer_names.h"
#include "design/design.h"
#include "overview/defaults.h"
#include "overview/places.h"
#include "text/json.h"

namespace vrltool::overview {

/// All of one element of a design: its kind, its parameters with ranges and defaults, its ports with what they are
/// connected to and, of a composite, where they lead inside. It refers to the design.
class ElementPage {
public:
    /// `path` is that of the element, "arms/upper"; a block that was saved alone has that of its kind. A Failure
    /// reports a wrong one, with near ones.
    ElementPage(Design const& design, std::string const& path);

    void write(std::ostream& os) const;
    Json json() const;

private:
    bool find(Circuit const& in, std::string const& rest, Element const* outer);
    void writeFacts(std::ostream& os) const;
    void writeParameters(std::ostream& os) const;
    void writePorts(std::ostream& os) const;
    void writeInside(std::ostream& os) const;
    void writeNote(std::ostream& os) const;
    /// What is at the node of a port besides it: the places of the boundary, and other ports.
    std::vector<std::string> partners(ElementPort const& port) const;
    std::vector<BoundaryPlace> boundaryPlaces(unsigned node) const;
    /// The node inside to which a port leads; 0 for none.
    unsigned nodeInside(ElementPort const& port) const;
    Json defaultsJson() const;
    Json connectionJson(ElementPort const& port) const;

    std::string path;
    std::string pathInside;  ///< "arms/", before the names of the elements inside
    Circuit root;
    OuterNames outerNames;             ///< of the root
    Circuit const* circuit = nullptr;  ///< in which the element is
    Element const* element = nullptr;
    std::map<std::string, unsigned> inside;    ///< nodesInside(*element), if there are any
    Element const* fresh = nullptr;            ///< a new element of the kind; null for one that cannot be made
    std::map<std::string, std::string> usual;  ///< its properties
    Defaults defaults;
};

}  // namespace vrltool::overview
