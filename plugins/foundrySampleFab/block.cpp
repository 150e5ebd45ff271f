#include "block.h"

namespace samplefab {

Block::Block(vrl::Foundry const* foundry, char const* k, char const* section) : BB(foundry), kind(k) {
    getCS().setCS(section);
}

Block::~Block() = default;

}  // namespace samplefab
