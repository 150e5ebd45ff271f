#include "commands/commands.h"

namespace vrltool {

void addPrinted(Grammar&) {}

}  // namespace vrltool
