#include "commands/commands.h"

namespace vrltool {

void addExplain(Grammar&) {}

}  // namespace vrltool
