#pragma once

#include <cstddef>
#include <iosfwd>
#include <map>
#include <string>

#include "vrllib/attributes/annotation_bag.h"
#include "vrllib/base/export.h"
#include "vrllib/serialisation/persistence.h"

// Parameters, their words:
//
// annotation  a string under a key. A parameter's name, description and unit are annotations under reserved keys
// attribute   a named parameter (Attribute and its descendants); a value holds one typed value, a range has bounds
// list        the named attributes of a design object (Attributes)
// gate        do_setValue, the overridable operation that every typed setting passes

namespace Vorlane_v1_0 {

namespace detail {
class SavedParameter;
}

/// A bag of free text notes under unique keys, ordered by key.
class VRL_API Annotations {
public:
    /// The texts by key.
    using AnnotationMap = detail::AnnotationBag::Map;
    /**@{*/
    /// Valid until the annotation is removed.
    using iterator = AnnotationMap::iterator;
    using const_iterator = AnnotationMap::const_iterator;
    /**@}*/

    Annotations();
    /// Copies the notes and the serialisation register as it is.
    Annotations(Annotations const& other);
    Annotations& operator=(Annotations const& other);
    virtual ~Annotations();
    VRL_PERSISTENT_ROOT(Annotations)

public:
    /// A taken key keeps its first text.
    Annotations& addAnnotation(std::string const& key, std::string const& text);
    /// A taken key gets the new text.
    Annotations& setAnnotation(std::string const& key, std::string const& text);
    /// An absent key is no error.
    Annotations& delAnnotation(std::string const& key);
    /// Erases all annotations, the reserved ones of a parameter included.
    Annotations& clear();

    /// The text of the key. For an absent key it returns an empty string, or with `mustExist` throws the `std::string`
    /// "annotation 'KEY' not found\n".
    std::string getAnnotation(std::string const& key, bool mustExist) const;
    /// The text of the key if it is present and not empty, otherwise `defaultText`: a stored empty string counts as
    /// absent here, though getAnnotation treats it as present.
    std::string getAnnotationDefault(std::string const& key, std::string const& defaultText) const;

    std::size_t size() const { return annotations.view().size(); }
    /**@{*/
    /// The annotations, in order of the keys.
    iterator begin() { return annotations.own().begin(); }
    iterator end() { return annotations.own().end(); }
    const_iterator begin() const { return list().begin(); }
    const_iterator end() const { return list().end(); }
    iterator beginAnnotation() { return begin(); }
    iterator endAnnotation() { return end(); }
    const_iterator beginAnnotation() const { return begin(); }
    const_iterator endAnnotation() const { return end(); }
    /**@}*/
    /// All annotations; valid as long as this object.
    AnnotationMap const& list() const { return annotations.own(); }

    /// Writes "-X-", whatever the annotations are.
    std::ostream& operator<<(std::ostream& os) const;

protected:
    /// Those annotations.
    explicit Annotations(detail::AnnotationBag&& bag);

private:
    friend class detail::SavedParameter;

    mutable detail::AnnotationBag annotations;  // what it hands out stays valid, so even a look may make its own map
    SerRegister serRegister;
    SerrDoneFlag serDone;
};

/// Writes the annotations by their operator<<.
VRL_API std::ostream& operator<<(std::ostream& os, Annotations const& annotations);

extern template class VRL_INSTANCE Serialisable<Annotations>;

}  // namespace Vorlane_v1_0
