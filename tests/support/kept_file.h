#pragma once

#include <filesystem>
#include <string>

namespace vrl_test {

/// What a file of the source tree, which keeps an expected text, holds. With VRL_REWRITE_GOLDENS=1 in the environment
/// it is given the actual text first.
std::string kept(std::string const& actual, std::filesystem::path const& path);

/// The same for one that has a placeholder in the place of a word that differs from machine to machine.
std::string kept(std::string const& actual, std::filesystem::path const& path, std::string const& word,
                 std::string const& placeholder);

}  // namespace vrl_test
