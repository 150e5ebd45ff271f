#include "commands/commands.h"

namespace vrltool {

void addDoc(Grammar&) {}

}  // namespace vrltool
