#pragma once

#include <complex>
#include <cstddef>
#include <ostream>
#include <string>

#include "vrllib/attributes/attribute.h"
#include "vrllib/doc/texstream.h"
#include "vrllib/serialisation/value_types.h"

namespace Vorlane_v1_0::detail {

/// A block of elements and their number. It owns nothing by itself: whoever called create, or handed in the pointer,
/// has to release the block with array delete.
template <class T>
struct VRL_TEMPLATE ArrayData {
    /// No block and no elements.
    ArrayData();
    /// Takes the pointer itself; nothing is copied.
    ArrayData(T* p, std::size_t const& n);
    /// Both records then share one block.
    ArrayData(ArrayData const& other) = default;
    ArrayData& operator=(ArrayData const& other) = default;

    /// Releases the present block and allocates one of `n` elements: numbers as they come, complex numbers 0, texts
    /// empty. Passes on what the allocation throws; `values` then still points to the released block.
    void create(std::size_t const& n);

    /// The first element, or null.
    T* values;
    /// The number of elements; nothing compares it with the block.
    std::size_t count;
};

}  // namespace Vorlane_v1_0::detail

/// An attribute that represents an array of int, double, std::complex<double> or std::string.
///
/// It reserves the name and the class, and does little: the arguments of its constructor are accepted and dropped, on
/// purpose, so that name, description, unit and content are empty, and no operation reaches the elements. A derived
/// class may use `content`. Copies share the block; the destructor leaves it alone. Elements are not saved.
template <class T>
class VRL_TEMPLATE ValueArray : public Vorlane_v1_0::AttributeWithExpr {
public:
    /// The block of elements and their number.
    using data = Vorlane_v1_0::detail::ArrayData<T>;

    /// Drops all arguments.
    ValueArray(std::string const& name, data const& d, std::string const& descr = "", std::string const& units = "");
    /**@{*/
    /// Copies share the block.
    ValueArray(ValueArray const& other) = default;
    ValueArray& operator=(ValueArray const& other) = default;
    /**@}*/
    ~ValueArray() override;

    /**@{*/
    /// These three write the fixed text "/*--- array of type T */\n".
    std::ostream& operator<<(std::ostream& os) const override;
    texstream& toTex(texstream& tex) const override;
    std::ostream& toCpp(std::ostream& os, std::string const& name) const override;
    /**@}*/
    /// True: there is no range.
    bool inSpec(std::ostream& os) const override;

protected:
    /// Empty at first. Whoever creates the block releases it.
    data content;
};

namespace Vorlane_v1_0::detail {

template <class T>
ArrayData<T>::ArrayData() : values(nullptr), count(0) {}
template <class T>
ArrayData<T>::ArrayData(T* p, std::size_t const& n) : values(p), count(n) {}
template <class T>
void ArrayData<T>::create(std::size_t const& n) {
    delete[] values;
    count = n;
    values = new T[n];
}

VRL_API std::ostream& writeArrayText(std::ostream& os);

}  // namespace Vorlane_v1_0::detail

template <class T>
ValueArray<T>::ValueArray(std::string const&, data const&, std::string const&, std::string const&)
    : AttributeWithExpr("") {}
template <class T>
ValueArray<T>::~ValueArray() = default;

template <class T>
std::ostream& ValueArray<T>::operator<<(std::ostream& os) const {
    return Vorlane_v1_0::detail::writeArrayText(os);
}
template <class T>
texstream& ValueArray<T>::toTex(texstream& tex) const {
    Vorlane_v1_0::detail::writeArrayText(tex.os());
    return tex;
}
template <class T>
std::ostream& ValueArray<T>::toCpp(std::ostream& os, std::string const&) const {
    return Vorlane_v1_0::detail::writeArrayText(os);
}
template <class T>
bool ValueArray<T>::inSpec(std::ostream&) const {
    return true;
}

#define VRL_ARRAY_INSTANCES_(T)                                                                                        \
    extern template struct VRL_INSTANCE Vorlane_v1_0::detail::ArrayData<T>;                                            \
    extern template class VRL_INSTANCE ValueArray<T>;
VRL_FOR_ARRAY_TYPES(VRL_ARRAY_INSTANCES_)
#undef VRL_ARRAY_INSTANCES_
