#include "commands/commands.h"

namespace vrltool {

void addImport(Grammar&) {}

}  // namespace vrltool
