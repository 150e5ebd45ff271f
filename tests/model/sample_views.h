#pragma once

#include <string>
#include <utility>

#include "vrllib/vrllib.h"

namespace sample {

using namespace Vorlane_v1_0;

/// A view of any class of views, under a name. It knows how many of its kind are alive.
template <class Base>
class Note : public Base {
public:
    template <class Object>
    Note(Object* object, std::string const& name) : Base(object, name) {
        ++alive;
    }
    Note(Note const& other) : Base(other) { ++alive; }
    Note& operator=(Note const&) = default;
    ~Note() override { --alive; }

    std::string describe() const override { return "a note"; }

    static inline int alive = 0;
};

using PlainNote = Note<View>;

/// A view of a T as a factory makes it: it registers itself under the name "note".
template <class T>
class TypedNote : public Note<TypeView<T>> {
public:
    explicit TypedNote(T* object) : Note<TypeView<T>>(object, "note") {}
};

}  // namespace sample
