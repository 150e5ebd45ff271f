#pragma once

#include "vrllib/attributes/value_range.h"

/// The tags of distributions. They hold nothing: no numbers are drawn here, and a distribution has no parameters.
///
/// Both write " Uniform " to a document, so that a Gaussian value documents itself as uniform, by design.
class VRL_API vrlGaussianDistribution {
public:
    vrlGaussianDistribution() = default;
    vrlGaussianDistribution(vrlGaussianDistribution const&) = default;
    vrlGaussianDistribution& operator=(vrlGaussianDistribution const&) { return *this; }
    texstream& toTex(texstream& tex) const;
};
/// The tag of a uniform distribution. See vrlGaussianDistribution.
class VRL_API vrlUniformDistribution {
public:
    vrlUniformDistribution() = default;
    vrlUniformDistribution(vrlUniformDistribution const&) = default;
    vrlUniformDistribution& operator=(vrlUniformDistribution const&) { return *this; }
    texstream& toTex(texstream& tex) const;
};

/// A ranged value tagged with a statistical distribution: int, double or std::complex<double>, with V the Value of the
/// same type and D one of the two tags. It behaves as its range but for toTex, which adds the text of the tag.
template <class T, class D, class V>
class VRL_TEMPLATE ValueDistribution : public ValueRange<T, V>, public D {
public:
    /// The tag is not used.
    ValueDistribution(std::string const& name, T const& value, T const& min, T const& max, D const& d,
                      std::string const& descr = "", std::string const& units = "");
    /**@{*/
    /// Copies the range.
    ValueDistribution(ValueDistribution const& other) = default;
    ValueDistribution& operator=(ValueDistribution const& other) = default;
    /**@}*/
    ~ValueDistribution() override;

    /// Writes the range, then the text of the tag.
    texstream& toTex(texstream& tex) const override;
};

template <class T, class D, class V>
ValueDistribution<T, D, V>::ValueDistribution(std::string const& name, T const& value, T const& min, T const& max,
                                              D const&, std::string const& descr, std::string const& units)
    : ValueRange<T, V>(name, value, min, max, descr, units) {}
template <class T, class D, class V>
ValueDistribution<T, D, V>::~ValueDistribution() = default;

template <class T, class D, class V>
texstream& ValueDistribution<T, D, V>::toTex(texstream& tex) const {
    ValueRange<T, V>::toTex(tex);
    return D::toTex(tex);
}

#define VRL_DISTRIBUTION_INSTANCES_(T)                                                                                 \
    extern template class VRL_INSTANCE ValueDistribution<T, vrlGaussianDistribution, Vorlane_v1_0::Value<T>>;          \
    extern template class VRL_INSTANCE ValueDistribution<T, vrlUniformDistribution, Vorlane_v1_0::Value<T>>;
VRL_FOR_RANGED_TYPES(VRL_DISTRIBUTION_INSTANCES_)
#undef VRL_DISTRIBUTION_INSTANCES_
