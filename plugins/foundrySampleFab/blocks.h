#pragma once

#include "block.h"

namespace samplefab {

// The kinds that other files name.
inline constexpr char const kStraightKind[] = "sfStraight";
inline constexpr char const kPhaseModulatorKind[] = "sfPhaseModulator";

// The families of blocks, each in its own file.
void registerWaveguides(BlockFactory& factory);
void registerCouplers(BlockFactory& factory);
void registerChipEdges(BlockFactory& factory);
void registerElectroOptics(BlockFactory& factory);
void registerComposites(BlockFactory& factory);

}  // namespace samplefab
