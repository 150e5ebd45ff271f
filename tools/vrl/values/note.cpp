#include "values/note.h"

namespace vrltool::values {

void setNote(vrl::Annotations& target, Node const& value) {
    target.setAnnotation(kNote, written(value, Format::kLine));
}

Node note(vrl::Annotations const& source) { return valueOfLine(source.getAnnotation(kNote, false)); }

bool hasNote(vrl::Annotations const& source) { return !source.getAnnotation(kNote, false).empty(); }

}  // namespace vrltool::values
