#include "commands/commands.h"

namespace vrltool {

void addCheck(Grammar&) {}

}  // namespace vrltool
