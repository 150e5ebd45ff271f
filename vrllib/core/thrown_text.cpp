#include "vrllib/core/thrown_text.h"

#include <exception>

namespace Vorlane_v1_0::detail {

std::string thrownText() {
    try {
        throw;
    } catch (std::exception const& error) {
        return error.what();
    } catch (char const* text) {
        return text ? text : "";
    } catch (std::string const& text) {
        return text;
    } catch (...) {
        return "something that is no text";
    }
}

}  // namespace Vorlane_v1_0::detail
