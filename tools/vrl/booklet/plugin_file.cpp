#include "booklet/plugin_file.h"

#include <dlfcn.h>

namespace vrltool {

// A creator is an object of a class that its plug-in instantiates: its first word leads to a table in that file.
std::string fileOfCreator(void const* creator) {
    Dl_info where{};
    void const* const table = *static_cast<void const* const*>(creator);
    return dladdr(table, &where) != 0 && where.dli_fname ? where.dli_fname : "";
}

}  // namespace vrltool
