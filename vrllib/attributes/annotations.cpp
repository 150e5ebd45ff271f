#include "vrllib/attributes/annotations.h"

#include <typeinfo>
#include <utility>

#include "vrllib/core/messages.h"
#include "vrllib/serialisation/containers.h"
#include "vrllib/serialisation/kept_bytes.h"

namespace Vorlane_v1_0 {

namespace {

using detail::AnnotationBag;

/// The walks over annotations, in the form of SerialisableMap. What an object has already is only compared when it is
/// read: that is the usual case, since the constructors of blocks make their parameters.
class SerialisableAnnotations {
public:
    using WalkOf = SerialisableAnnotations;

    static bool writeTo(detail::BinaryWriter s, AnnotationBag const& bag, std::string const& name) {
        std::string const* const bytes = keptBytes(bag, s.depth());
        if (!bytes) return writeEntries(s, bag, name);
        s.writeBytes(*bytes);
        return true;
    }
    static bool writeTo(detail::AnyWriter s, AnnotationBag const& bag, std::string const& name) {
        return writeEntries(s, bag, name);
    }

    static bool readFrom(detail::BinaryReader d, AnnotationBag& bag) {
        std::string const* const bytes = keptBytes(bag, d.depth());
        return (bytes && d.skipBytes(*bytes)) || readEntries(d, bag);
    }
    static bool readFrom(detail::AnyReader d, AnnotationBag& bag) { return readEntries(d, bag); }

private:
    /// What is written of the annotations of parameters: the same bytes in all blocks of a kind. Null if there are none
    /// to keep.
    static std::string const* keptBytes(AnnotationBag const& bag, unsigned int depth) {
        using detail::KeptBytes;
        KeptBytes* const kept = bag.keptBytes();
        auto const write = [&](detail::BinaryWriter s) { return writeEntries(s, bag, ""); };
        auto const make = [&] { return KeptBytes::written(depth, write); };
        return kept ? kept->at(depth, 1, typeid(AnnotationBag), make) : nullptr;
    }

    template <class Writer>
    static bool writeEntries(Writer s, AnnotationBag const& bag, std::string const& name) {
        return detail::writeContainer(s, "Map", name, bag.view(), [s](auto const& entry) {
            return detail::writeItem(s, entry.first) && detail::writeItem(s, entry.second);
        });
    }

    /// Whatever a reader throws, the object has what was read until then.
    template <class Reader>
    static bool readEntries(Reader d, AnnotationBag& bag) {
        AnnotationBag::Map read;
        bool unchanged = false;
        try {
            bool const good = readInto(d, bag.view(), read, unchanged);
            if (!unchanged) bag.assign(std::move(read));
            return good;
        } catch (...) {
            if (!unchanged) bag.assign(std::move(read));
            throw;
        }
    }

    template <class Reader>
    static bool readInto(Reader d, AnnotationBag::Map const& present, AnnotationBag::Map& read, bool& unchanged) {
        if (!d.beginCompound("Map", 1)) return false;
        unsigned int left = d.readCount();
        auto same = present.begin();
        while (left > 0 && same != present.end() && d.skipAttributes(same->first, same->second)) ++same, --left;
        unchanged = left == 0 && same == present.end();
        if (!unchanged) read.insert(present.begin(), same);
        if (!readRest(d, left, read)) return false;
        d.endCompound();
        return true;
    }

    template <class Reader>
    static bool readRest(Reader d, unsigned int count, AnnotationBag::Map& map) {
        for (; count > 0; --count) {
            std::string key;
            if (!detail::readItem(d, key)) return false;
            if (!detail::readItem(d, map.try_emplace(map.end(), std::move(key))->second)) return false;
        }
        return true;
    }
};

}  // namespace

Annotations::Annotations() = default;
Annotations::Annotations(AnnotationBag&& bag) : annotations(std::move(bag)) {}
Annotations::Annotations(Annotations const& other) = default;
Annotations& Annotations::operator=(Annotations const& other) = default;
Annotations::~Annotations() = default;

VRL_DEFINE_PERSISTENCE_ROOT(Annotations)

SerFormat<Annotations> const& Annotations::serFormat() {
    // Never destroyed, like all formats and keys here: a host's static objects may still save their parameters.
    static auto const format = SerFormat<Annotations>("Annotations", 1)
                                   .member<SerialisableAnnotations>(1, "annotations", &Annotations::annotations);
    return format;
}

Annotations& Annotations::addAnnotation(std::string const& key, std::string const& text) {
    if (!annotations.find(key)) annotations.own().emplace(key, text);
    return *this;
}

Annotations& Annotations::setAnnotation(std::string const& key, std::string const& text) {
    annotations.own().insert_or_assign(key, text);
    return *this;
}

Annotations& Annotations::delAnnotation(std::string const& key) {
    if (annotations.find(key)) annotations.own().erase(key);
    return *this;
}

Annotations& Annotations::clear() {
    annotations.assign({});
    return *this;
}

std::string Annotations::getAnnotation(std::string const& key, bool mustExist) const {
    if (std::string const* const text = annotations.find(key)) return *text;
    if (!mustExist) return {};
    std::string const text = "annotation '" + key + "' not found\n";
    vrlbreaker();
    throw text;
}

std::string Annotations::getAnnotationDefault(std::string const& key, std::string const& defaultText) const {
    std::string const* const text = annotations.find(key);
    return text && !text->empty() ? *text : defaultText;
}

std::ostream& Annotations::operator<<(std::ostream& os) const { return os << "-X-"; }
std::ostream& operator<<(std::ostream& os, Annotations const& annotations) { return annotations.operator<<(os); }

template class Serialisable<Annotations>;

}  // namespace Vorlane_v1_0
