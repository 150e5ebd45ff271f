#include "vrllib/model/process_flow.h"

namespace Vorlane_v1_0 {

ProcessFlow::ProcessFlow() = default;
ProcessFlow::ProcessFlow(ProcessFlow const& other) : Attributes(other), RegisterView(other), Component(other) {}
ProcessFlow& ProcessFlow::operator=(ProcessFlow const& other) = default;
ProcessFlow::~ProcessFlow() = default;

CrossSection* ProcessFlow::createCS(double const&, double) const { return nullptr; }

}  // namespace Vorlane_v1_0
