#include "vrllib/core/shared_ptr.h"

void Vorlane_v1_0::detail::freeBlock(HandleBlock* block) { delete block; }
