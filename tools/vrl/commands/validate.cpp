#include "commands/commands.h"

namespace vrltool {

void addValidate(Grammar&) {}

}  // namespace vrltool
