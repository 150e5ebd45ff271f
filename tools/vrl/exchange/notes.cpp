#include "exchange/notes.h"

#include "exchange/tree_writer.h"

namespace vrltool::exchange::notes {

void set(vrl::Annotations& target, char const* key, Tree const& value) {
    if (!value.isNull()) target.setAnnotation(key, noteText(value));
}

Tree get(vrl::Annotations const& source, char const* key) {
    std::string const text = source.getAnnotation(key, false);
    return text.empty() ? Tree() : treeOfNote(text);
}

}  // namespace vrltool::exchange::notes
