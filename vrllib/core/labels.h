#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>

#include "vrllib/base/export.h"
#include "vrllib/core/enum_list.h"

// Labels are strings whose leading letters carry the meaning: the kind of a port and the polarisation of a mode are
// read from the name and have no field of their own. A null `char const*` counts as empty string.

namespace Vorlane_v1_0 {

/// The name of a port of a building block: "i" and "ci" begin an optical input, "o" an optical output.
///
/// The tests look at the first letters only, in this very case: neither at the rest nor at the port's domain.
class VRL_API PortLabel {
public:
    /**@{*/
    /// Any text makes a label, an empty one and null included.
    PortLabel(char const* text) : name(text ? text : "") {}
    PortLabel(std::string const& text) : name(text) {}
    /**@}*/

    /**@{*/
    /// The whole text. The pointer is valid until the label changes.
    std::string const& getName() const { return name; }
    operator std::string const&() const { return name; }
    operator char const*() const { return name.c_str(); }
    /**@}*/

    /// Whether the label begins with "i" or with "ci".
    bool isOpticalInput() const { return name[0] == 'i' || (name[0] == 'c' && name[1] == 'i'); }

    /// Whether the label begins with "o". There is no "co", by design.
    bool isOpticalOutput() const { return name[0] == 'o'; }

    /**@{*/
    /// Compares the texts.
    bool operator==(PortLabel const& other) const { return name == other.name; }
    bool operator!=(PortLabel const& other) const { return name != other.name; }
    /**@}*/

    /// Called as `label << os`. Writes the bare name.
    std::ostream& operator<<(std::ostream& os) const;

    /// Writes the whole name. Without it the text would go through `char const*` and end at a zero byte.
    friend std::ostream& operator<<(std::ostream& os, PortLabel const& label) { return label << os; }

private:
    std::string name;
};

/// The name of an optical mode, such as "TE0": the head is the polarisation.
///
/// The tag is a number of its creator. It goes with each copy and is otherwise neither read nor compared.
class VRL_API ModeLabel {
public:
    /**@{*/
    /// Any text makes a label, an empty one and null included.
    ModeLabel(char const* text, int tag) : name(text ? text : ""), modeTag(tag) {}
    ModeLabel(std::string const& text, int tag) : name(text), modeTag(tag) {}
    /**@}*/

    /// "TE", "TM" or "FV", or "m" for any other polarisation, then the index: "TE0", "m7".
    ModeLabel(std::size_t const& index, EnumList::Polarisation const& pol, int tag);

    /**@{*/
    /// The whole text. The pointer is valid until the label changes.
    std::string const& getName() const { return name; }
    operator std::string const&() const { return name; }
    operator char const*() const { return name.c_str(); }
    /**@}*/

    /// Reads the first two letters, in either case. Any label that begins with "t" is TM unless "e" follows.
    EnumList::Polarisation getPol() const;

    /// Appends "/inp" or "/out", whatever the name ends with. Returns the label itself.
    ModeLabel& direction(bool input);

    /**@{*/
    /// Compares the names; the tags do not count.
    bool operator==(ModeLabel const& other) const { return name == other.name; }
    bool operator!=(ModeLabel const& other) const { return name != other.name; }
    /**@}*/

    /// Called as `label << os`. Writes the bare name.
    std::ostream& operator<<(std::ostream& os) const;

    /// As for a PortLabel.
    friend std::ostream& operator<<(std::ostream& os, ModeLabel const& label) { return label << os; }

private:
    std::string name;
    [[maybe_unused]] std::int32_t modeTag;
};

}  // namespace Vorlane_v1_0
