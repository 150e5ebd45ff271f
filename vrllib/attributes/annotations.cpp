#include "vrllib/attributes/annotations.h"

#include <ostream>

#include "vrllib/core/messages.h"
#include "vrllib/serialisation/containers.h"

namespace Vorlane_v1_0 {

Annotations::Annotations() = default;
Annotations::Annotations(Annotations const& other) = default;
Annotations& Annotations::operator=(Annotations const& other) = default;
Annotations::~Annotations() = default;

VRL_DEFINE_PERSISTENCE_ROOT(Annotations)

SerFormat<Annotations> const& Annotations::serFormat() {
    // Never destroyed, like all formats and keys here: a host's static objects may still save their parameters.
    static auto const format =
        SerFormat<Annotations>("Annotations", 1)
            .member<SerialisableMap<std::string, std::string>>(1, "annotations", &Annotations::annotations);
    return format;
}

Annotations& Annotations::addAnnotation(std::string const& key, std::string const& text) {
    annotations.emplace(key, text);
    return *this;
}

Annotations& Annotations::setAnnotation(std::string const& key, std::string const& text) {
    annotations.insert_or_assign(key, text);
    return *this;
}

Annotations& Annotations::delAnnotation(std::string const& key) {
    annotations.erase(key);
    return *this;
}

Annotations& Annotations::clear() {
    annotations.clear();
    return *this;
}

std::string Annotations::getAnnotation(std::string const& key, bool mustExist) const {
    auto const found = annotations.find(key);
    if (found != annotations.end()) return found->second;
    if (!mustExist) return {};
    std::string const text = "annotation '" + key + "' not found\n";
    vrlbreaker();
    throw text;
}

std::string Annotations::getAnnotationDefault(std::string const& key, std::string const& defaultText) const {
    auto const found = annotations.find(key);
    return found == annotations.end() || found->second.empty() ? defaultText : found->second;
}

std::ostream& Annotations::operator<<(std::ostream& os) const { return os << "-X-"; }
std::ostream& operator<<(std::ostream& os, Annotations const& annotations) { return annotations.operator<<(os); }

template class Serialisable<Annotations>;

}  // namespace Vorlane_v1_0
