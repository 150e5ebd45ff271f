#pragma once

#include <string>

#include "tests/tools/page/pixels.h"

namespace vrl_test {

/// What a browser makes of a page, after its scripts have run; these are left out. `address` is the path of the file,
/// and may go on with
/// "#...". A runtime_error if the browser fails.
std::string documentOf(std::string const& address);
Pixels screenshotOf(std::string const& address);
/// The text of the page as it is printed.
std::string printed(std::string const& address);

/// The text of a part of a document, such as "aside" or "nav id=\"page-lists\"": a line for each paragraph, row and
/// entry of a list, cells separated by " | ". What is closed counts, too.
std::string textOf(std::string const& document, std::string const& tag);

/// The opening tag of the item with an id, "<g id=...>".
std::string tagOf(std::string const& document, std::string const& id);

/// A page with a script of its own at the end, and without the policy that forbids that.
std::string withScript(std::string page, std::string const& script);

}  // namespace vrl_test
