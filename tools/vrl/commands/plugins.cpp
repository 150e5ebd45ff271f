#include "commands/commands.h"

namespace vrltool {

void addPlugins(Grammar&) {}

}  // namespace vrltool
