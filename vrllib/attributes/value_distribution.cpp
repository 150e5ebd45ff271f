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
VRL_FOR_RANGED_TYPES(VRL_DISTRIBUTION_INSTANCES_)
#undef VRL_DISTRIBUTION_INSTANCES_
