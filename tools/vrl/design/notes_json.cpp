#include "design/notes_json.h"

#include <nlohmann/json.hpp>

#include "values/note.h"

namespace vrltool {

Json noteJson(std::string const& key, std::string const& text) {
    if (key != values::kNote) return text;
    values::Node const value = values::valueOfLine(text);
    if (isNull(value)) return text;
    Json json = Json::parse(written(value, values::Format::kJson), nullptr, false);  // a number may be too great
    return json.is_discarded() ? Json(text) : json;
}

Json notesJson(vrl::Annotations const& notes) {
    Json json = Json::object();
    for (auto note = notes.beginAnnotation(); note != notes.endAnnotation(); ++note)
        json[note->first] = noteJson(note->first, note->second);
    return json;
}

}  // namespace vrltool
