#pragma once

#include <iosfwd>
#include <memory>
#include <variant>

#include "vrllib/vrllib.h"

namespace vrltool {

/// An object of a class that can be saved, and the ownership of it; or nothing. Copies share the object.
class SavedObject {
public:
    SavedObject() = default;
    /// Takes over an object: a block, a netlist, a parameter, a list of parameters such as a foundry, notes, a choice
    /// or a port. Null makes nothing.
    template <class T>
    explicit SavedObject(T* whole)
        : owner(whole, [](T* freed) { vrl::ptr_destroy(freed); }), object(whole ? pointerTo(whole) : Pointer()) {}

    explicit operator bool() const { return owner != nullptr; }

    /**@{*/
    /// The object as one of that class; null if it is none. A composite is a block, a netlist, a list and notes.
    vrl::BB* block() const { return as<vrl::BB>(); }
    vrl::Netlist* netlist() const;
    vrl::Attribute* parameter() const { return as<vrl::Attribute>(); }
    vrl::Attributes* list() const { return as<vrl::Attributes>(); }
    vrl::Annotations* notes() const { return as<vrl::Annotations>(); }
    vrl::Foundry::CSInfo* choice() const { return as<vrl::Foundry::CSInfo>(); }
    vrl::BB::Port* port() const { return as<vrl::BB::Port>(); }
    /**@}*/

    /**@{*/
    /// Saves the object whole in any format, and reads it back. False if that fails, or if there is none.
    bool write(vrl::SerialiserBase& serialiser) const;
    bool read(vrl::DeSerialiserBase& deserialiser) const;
    /**@}*/
    /// Prints the object as the library prints it.
    void print(std::ostream& os) const;

private:
    using Pointer = std::variant<std::nullptr_t, vrl::CBB*, vrl::BB*, vrl::Netlist*, vrl::Attribute*, vrl::Attributes*,
                                 vrl::Annotations*, vrl::Foundry::CSInfo*, vrl::BB::Port*>;

    static Pointer pointerTo(vrl::BB* block);
    template <class T>
    static Pointer pointerTo(T* whole) {
        if constexpr (std::is_base_of_v<vrl::Netlist, T>)
            return static_cast<vrl::Netlist*>(whole);
        else if constexpr (std::is_base_of_v<vrl::Attribute, T>)
            return static_cast<vrl::Attribute*>(whole);
        else if constexpr (std::is_base_of_v<vrl::Attributes, T>)
            return static_cast<vrl::Attributes*>(whole);
        else
            return whole;
    }

    template <class T>
    T* as() const {
        return std::visit(
            [](auto pointer) -> T* {
                if constexpr (std::is_convertible_v<decltype(pointer), T*>)
                    return pointer;
                else
                    return nullptr;
            },
            object);
    }

    std::shared_ptr<void> owner;
    Pointer object;
};

/// Leaves an object to the end of the process, which frees it at once: block by block that takes half as long as to
/// read it. For the last designs of a command.
void leaveToTheEnd(SavedObject object);

}  // namespace vrltool
