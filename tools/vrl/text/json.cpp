#include "text/json.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <ostream>

namespace vrltool {

Json jsonHead(std::string const& name, int version) { return Json{{"format", "vrl-" + name}, {"version", version}}; }

Json jsonNumber(double value) {
    if (std::isnan(value)) return "nan";
    if (std::isinf(value)) return value > 0 ? "inf" : "-inf";
    return value;
}

void writeJson(std::ostream& os, Json const& value) {
    os << value.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

}  // namespace vrltool
