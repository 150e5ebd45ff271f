#pragma once

#include <string>

#include "parameters.h"
#include "vrllib/vrllib.h"

namespace samplefab {

using BlockFactory = FactoryArg<std::string, vrl::BB, vrl::Foundry const*>;

/// A block of SampleFab. Its classes declare ports and parameters; they are made by the factory and never copied.
class Block : public vrl::BB {
public:
    Block(Block const&) = delete;
    Block& operator=(Block const&) = delete;
    ~Block() override;
    std::string getName() const override { return kind; }

protected:
    /// The foundry may be null.
    Block(vrl::Foundry const* foundry, char const* k, char const* section);

private:
    std::string kind;
};

/// Registers each class under its kind.
template <class... Blocks>
void registerKinds(BlockFactory& factory) {
    (factory.Register<Blocks>(Blocks::kKind), ...);
}

}  // namespace samplefab
