#include "text/phrases.h"

#include <algorithm>
#include <cctype>
#include <sstream>

#include "text/near_names.h"

namespace vrltool {

std::string inQuotes(std::string const& name) { return "'" + name + "'"; }

std::string lowered(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

std::string listText(std::vector<std::string> const& names, std::size_t most, char const* last) {
    std::size_t const shown = names.size() <= most ? names.size() : most - 1;
    std::size_t const parts = names.size() <= most ? shown : shown + 1;
    std::string text;
    for (std::size_t i = 0; i < parts; ++i) {
        if (i > 0) text += i + 1 == parts ? std::string(" ") + last + " " : ", ";
        text += i < shown ? names[i] : std::to_string(names.size() - shown) + " more";
    }
    return text;
}

std::string namesHint(std::string const& wrong, std::vector<std::string> const& names, std::string const& things) {
    std::string const near = didYouMean(wrong, names);
    if (!near.empty()) return near;
    return names.empty() ? "there are none" : things + ": " + listText(names);
}

std::string wrapped(std::string const& text, std::size_t indent, std::size_t width) {
    std::string const margin(indent, ' ');
    std::istringstream words(text);
    std::string lines, line, word;
    while (words >> word) {
        if (!line.empty() && indent + line.size() + 1 + word.size() > width) {
            lines += margin + line + '\n';
            line.clear();
        }
        line += (line.empty() ? "" : " ") + word;
    }
    return line.empty() ? lines : lines + margin + line + '\n';
}

}  // namespace vrltool
