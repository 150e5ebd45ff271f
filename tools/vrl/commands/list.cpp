#include "commands/commands.h"

namespace vrltool {

void addList(Grammar&) {}

}  // namespace vrltool
