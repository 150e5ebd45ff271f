#pragma once

#include "diff/matching.h"

namespace vrltool::diff {

/// Matches elements of one kind that keep some of their connections to matched parts, and have lost or won others.
///
/// On a net that both sides share, an element without a match is a candidate for one of B if each is the only one there
/// with its kind and port. The candidates are rated by their ports: those that lead to the same net against those that
/// lead to another one. A pair is matched if at least as many speak for it as against it, and each is the other's best
/// candidate, without a connection. Each match may lead to more, so that this goes along chains.
/// Cost: linear in the connections; a net with very many ports says little of any of them and is looked at once.
void matchByKeptConnections(Wiring const& a, Wiring const& b, Matching& matching);

}  // namespace vrltool::diff
