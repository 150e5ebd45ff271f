#include "tests/support/scenario.h"

#include <exception>
#include <iostream>
#include <map>

namespace vrl_test {

namespace {

std::map<std::string, Scenario>& scenarios() {
    static std::map<std::string, Scenario> known;
    return known;
}

int report(std::string const& text) {
    std::cerr << "thrown: " << text << std::endl;
    return 3;
}

}  // namespace

bool addScenario(std::string const& name, Scenario scenario) {
    scenarios()[name] = scenario;
    return true;
}

int runScenario(int count, char const* const* words) {
    auto const found = scenarios().find(count > 1 ? words[1] : "");
    if (found == scenarios().end()) {
        std::cerr << "unknown scenario" << std::endl;
        return 2;
    }
    try {
        found->second(Arguments(words + 2, words + count));
    } catch (char* text) {
        return report(text);
    } catch (std::string const& text) {
        return report(text);
    } catch (std::exception const& error) {
        return report(error.what());
    }
    return 0;
}

}  // namespace vrl_test
