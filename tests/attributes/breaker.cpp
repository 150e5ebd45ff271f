#include "tests/attributes/probes.h"
#include "vrllib/core/messages.h"

namespace {

int calls = 0;

}  // namespace

// Replaces the library's own in this whole program: the loader binds the library's calls to it.
void vrlbreaker() { ++calls; }

int probes::breakerCalls() { return calls; }
