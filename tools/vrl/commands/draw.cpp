#include "commands/commands.h"

namespace vrltool {

void addDraw(Grammar&) {}

}  // namespace vrltool
