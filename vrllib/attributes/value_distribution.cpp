#include "vrllib/attributes/value_distribution.h"

namespace {

texstream& writeTag(texstream& tex) {
    tex.os() << " Uniform ";
    return tex;
}

}  // namespace

texstream& vrlGaussianDistribution::toTex(texstream& tex) const { return writeTag(tex); }
texstream& vrlUniformDistribution::toTex(texstream& tex) const { return writeTag(tex); }

#define VRL_DISTRIBUTION_INSTANCES_(T)                                                                                 \
    template class ValueDistribution<T, vrlGaussianDistribution, Vorlane_v1_0::Value<T>>;                              \
    template class ValueDistribution<T, vrlUniformDistribution, Vorlane_v1_0::Value<T>>;
VRL_DISTRIBUTION_INSTANCES_(int)
VRL_DISTRIBUTION_INSTANCES_(double)
VRL_DISTRIBUTION_INSTANCES_(std::complex<double>)
#undef VRL_DISTRIBUTION_INSTANCES_
