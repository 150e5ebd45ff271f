#include "guard/thrown.h"

#include <cxxabi.h>

#include <cstdlib>
#include <exception>
#include <memory>
#include <typeinfo>

namespace vrltool {

namespace {

struct Thrown {
    std::string text;
    bool isMessage;
};

std::string currentType() {
    std::type_info const* const type = abi::__cxa_current_exception_type();
    if (!type) return "something of an unknown type";
    std::unique_ptr<char, decltype(&std::free)> const name(abi::__cxa_demangle(type->name(), nullptr, nullptr, nullptr),
                                                           &std::free);
    return std::string("a value of type ") + (name ? name.get() : type->name());
}

Thrown thrown() {
    try {
        throw;
    } catch (std::exception const& error) {
        return {error.what(), true};
    } catch (std::string const& text) {
        return {text, true};
    } catch (char const* text) {
        return text ? Thrown{text, true} : Thrown{"a null pointer to characters", false};
    } catch (...) {
        return {currentType(), false};
    }
}

}  // namespace

std::string thrownMessage() {
    Thrown const what = thrown();
    return what.isMessage ? what.text : "a plug-in threw " + what.text;
}

std::string thrownText() {
    Thrown const what = thrown();
    return what.isMessage ? "'" + what.text.substr(0, what.text.find('\n')) + "'" : what.text;
}

}  // namespace vrltool
