#include "tests/support/kept_file.h"

#include <cstdlib>

#include "tests/support/files.h"

namespace vrl_test {

namespace {

bool rewrites() {
    char const* const value = std::getenv("VRL_REWRITE_GOLDENS");
    return value && std::string(value) == "1";
}

std::string replaced(std::string text, std::string const& part, std::string const& by) {
    for (auto place = text.find(part); place != std::string::npos; place = text.find(part, place + by.size()))
        text.replace(place, part.size(), by);
    return text;
}

}  // namespace

std::string kept(std::string const& actual, std::filesystem::path const& path) {
    if (rewrites()) writeFile(path, actual);
    return readFile(path);
}

std::string kept(std::string const& actual, std::filesystem::path const& path, std::string const& word,
                 std::string const& placeholder) {
    return replaced(kept(replaced(actual, word, placeholder), path), placeholder, word);
}

}  // namespace vrl_test
