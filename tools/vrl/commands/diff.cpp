#include "commands/commands.h"

namespace vrltool {

void addDiff(Grammar&) {}

}  // namespace vrltool
