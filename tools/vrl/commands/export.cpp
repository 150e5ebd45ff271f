#include "commands/commands.h"

namespace vrltool {

void addExport(Grammar&) {}

}  // namespace vrltool
