#include "design/saved_object.h"

#include <ostream>
#include <utility>
#include <vector>

#include "design/stand_in.h"

namespace vrltool {

namespace {

/// What a stand-in has inside is printed only if there is any: it is a composite whatever its block was.
void printBlock(std::ostream& os, vrl::BB const& block, vrl::Netlist const* inside) {
    block.vrl::BB::operator<<(os);
    if (inside && (!isStandIn(block) || inside->beginElements() != inside->endElements()))
        inside->vrl::Netlist::operator<<(os);
}

void printChoice(std::ostream& os, vrl::Foundry::CSInfo const& choice) {
    os << "cross section: " << choice.getCSName() << "\nprocess flow: " << choice.getFlowName() << '\n';
}

/// Prints each class. Notes and choices have no printed form in the library, and a saved port has no name.
struct Printer {
    std::ostream& os;

    void operator()(std::nullptr_t) const {}
    void operator()(vrl::CBB const* composite) const {
        printBlock(os, *composite, const_cast<vrl::CBB*>(composite)->getAsNetlist());
    }
    void operator()(vrl::BB const* block) const { printBlock(os, *block, nullptr); }
    void operator()(vrl::Netlist const* netlist) const { netlist->operator<<(os); }
    void operator()(vrl::Attribute const* parameter) const { parameter->operator<<(os) << '\n'; }
    void operator()(vrl::Attributes const* list) const { list->operator<<(os); }
    void operator()(vrl::Annotations const* notes) const {
        for (auto note = notes->beginAnnotation(); note != notes->endAnnotation(); ++note)
            os << note->first << " = " << note->second << '\n';
    }
    void operator()(vrl::Foundry::CSInfo const* choice) const { printChoice(os, *choice); }
    void operator()(vrl::BB::Port const* port) const { printChoice(os, port->getCS()); }
};

struct Writer {
    vrl::SerialiserBase& serialiser;

    bool operator()(std::nullptr_t) const { return false; }
    template <class T>
    bool operator()(T* object) const {
        return object->write(&serialiser);
    }
};

struct Reader {
    vrl::DeSerialiserBase& deserialiser;

    bool operator()(std::nullptr_t) const { return false; }
    template <class T>
    bool operator()(T* object) const {
        return object->read(&deserialiser);
    }
};

}  // namespace

SavedObject::Pointer SavedObject::pointerTo(vrl::BB* block) {
    if (auto* const composite = dynamic_cast<vrl::CBB*>(block)) return composite;
    return block;
}

vrl::Netlist* SavedObject::netlist() const {
    auto* const* const composite = std::get_if<vrl::CBB*>(&object);
    return composite ? (*composite)->getAsNetlist() : as<vrl::Netlist>();
}

bool SavedObject::write(vrl::SerialiserBase& serialiser) const { return std::visit(Writer{serialiser}, object); }

bool SavedObject::read(vrl::DeSerialiserBase& deserialiser) const { return std::visit(Reader{deserialiser}, object); }

void SavedObject::print(std::ostream& os) const { std::visit(Printer{os}, object); }

void leaveToTheEnd(SavedObject object) {
    static auto& left = *new std::vector<SavedObject>;
    left.push_back(std::move(object));
}

}  // namespace vrltool
