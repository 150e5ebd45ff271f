#include "vrllib/core/labels.h"

#include <cctype>
#include <ostream>

namespace Vorlane_v1_0 {

namespace {

char const* prefix(EnumList::Polarisation pol) {
    switch (pol) {
    case EnumList::TE:
        return "TE";
    case EnumList::TM:
        return "TM";
    case EnumList::FV:
        return "FV";
    default:
        return "m";
    }
}

char lower(char letter) { return static_cast<char>(std::tolower(static_cast<unsigned char>(letter))); }

}  // namespace

std::ostream& PortLabel::operator<<(std::ostream& os) const { return os << name; }

ModeLabel::ModeLabel(std::size_t const& index, EnumList::Polarisation const& pol, int tag)
    : name(prefix(pol) + std::to_string(index)), modeTag(tag) {}

EnumList::Polarisation ModeLabel::getPol() const {
    char const* const text = name.c_str();
    // A first letter that is "f" or "t" is not the terminator, so there is a second byte to look at.
    switch (lower(text[0])) {
    case 'f':
        return lower(text[1]) == 'v' ? EnumList::FV : EnumList::UnknownPol;
    case 't':
        return lower(text[1]) == 'e' ? EnumList::TE : EnumList::TM;
    default:
        return EnumList::UnknownPol;
    }
}

ModeLabel& ModeLabel::direction(bool input) {
    name += input ? "/inp" : "/out";
    return *this;
}

std::ostream& ModeLabel::operator<<(std::ostream& os) const { return os << name; }

}  // namespace Vorlane_v1_0
