#include "foundry.h"

#include "cross_sections.h"
#include "process_flows.h"

namespace samplefab {

SampleFab::SampleFab() {
    flows.Register<ActiveFlow>(kActive);
    flows.Register<PassiveFlow>(kPassive);
    crossSections.Register<Rib>(kRib);
    crossSections.Register<Shallow>(kShallow);
    crossSections.Register<Strip>(kStrip);
    setCS(kStrip);
}

SampleFab::~SampleFab() = default;

std::string SampleFab::describe() const { return "silicon on insulator, 220 nm, in oxide"; }

}  // namespace samplefab
