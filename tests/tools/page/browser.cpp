#include "tests/tools/page/browser.h"

#include <array>
#include <stdexcept>
#include <utility>
#include <vector>

#include "system/process.h"
#include "tests/support/files.h"

namespace vrl_test {

namespace {

constexpr char kPolicy[] = "<meta http-equiv=\"Content-Security-Policy\"";

/// Runs the browser with a profile of its own, until the page has nothing more to do.
std::string browse(std::string const& address, std::string const& action, TemporaryFolder const& folder) {
    vrltool::Program program;
    program.words = {VRL_CHROMIUM,
                     "--headless=new",
                     "--no-sandbox",
                     "--disable-gpu",
                     "--disable-dev-shm-usage",
                     "--disable-extensions",
                     "--disable-background-networking",
                     "--no-first-run",
                     "--hide-scrollbars",
                     "--no-pdf-header-footer",
                     "--force-color-profile=srgb",
                     "--window-size=1400,900",
                     "--virtual-time-budget=2000",
                     "--user-data-dir=" + (folder / "profile").string(),
                     action,
                     "file://" + address};
    program.seconds = 900;
    auto const ended = vrltool::runProgram(program);
    if (!ended.fine()) throw std::runtime_error("the browser " + ended.how() + "\n" + ended.err);
    return ended.out;
}

using Replacement = std::pair<char const*, char const*>;

std::string replaced(std::string text, Replacement const& replacement) {
    auto const& [from, to] = replacement;
    std::string const old = from;
    for (auto at = text.find(old); at != std::string::npos; at = text.find(old, at + std::string(to).size()))
        text.replace(at, old.size(), to);
    return text;
}

std::string withoutTags(std::string const& html) {
    std::string text;
    bool inTag = false;
    for (char const c : html) {
        if (c == '<') inTag = true;
        if (!inTag) text += c;
        if (c == '>') inTag = false;
    }
    return text;
}

/// Without blank lines, and without what separates the last cell from nothing.
std::string inLines(std::string const& text) {
    std::string lines;
    for (std::size_t from = 0; from < text.size();) {
        auto const to = std::min(text.find('\n', from), text.size());
        std::string line = text.substr(from, to - from);
        while (!line.empty() && (line.back() == ' ' || line.back() == '|')) line.pop_back();
        if (!line.empty()) lines += line + '\n';
        from = to + 1;
    }
    return lines;
}

/// Where the element that begins at a place ends.
std::size_t endOf(std::string const& document, std::size_t from, std::string const& name) {
    std::string const opening = "<" + name, closing = "</" + name + ">";
    auto end = document.find(closing, from);
    for (auto inner = document.find(opening, from + 1); inner < end; inner = document.find(opening, inner + 1))
        end = document.find(closing, end + 1);
    return end;
}

}  // namespace

std::string documentOf(std::string const& address) {
    std::string document = browse(address, "--dump-dom", TemporaryFolder());
    for (std::string const name : {"script", "style"})
        for (auto from = document.find("<" + name); from != std::string::npos; from = document.find("<" + name, from))
            document.erase(from, document.find("</" + name + ">", from) - from);
    return document;
}

Pixels screenshotOf(std::string const& address) {
    TemporaryFolder const folder;
    std::string const file = folder / "page.png";
    browse(address, "--screenshot=" + file, folder);
    return pixelsOf(file);
}

std::string printed(std::string const& address) {
    TemporaryFolder const folder;
    std::string const file = folder / "page.pdf";
    browse(address, "--print-to-pdf=" + file, folder);
    return vrltool::runProgram({{VRL_PDFTOTEXT, "-layout", file, "-"}, "", ""}).out;
}

std::string textOf(std::string const& document, std::string const& tag) {
    auto const from = document.find("<" + tag);
    if (from == std::string::npos) return "no " + tag;
    auto const to = endOf(document, from, tag.substr(0, tag.find(' ')));
    std::string text = document.substr(from, to - from);
    for (char const* const end : {"<ul", "</tr>", "</p>", "</h1>", "</h2>", "</div>", "</li>", "</summary>", "<br>"})
        text = replaced(text, {end, (std::string("\n") + end).c_str()});
    for (char const* const end : {"</td>", "</th>"}) text = replaced(text, {end, " | "});
    text = withoutTags(text);
    for (Replacement const& entity :
         std::array<Replacement, 4>{{{"&lt;", "<"}, {"&gt;", ">"}, {"&nbsp;", " "}, {"&amp;", "&"}}})
        text = replaced(text, entity);
    return inLines(text);
}

std::string tagOf(std::string const& document, std::string const& id) {
    auto const at = document.find(" id=\"" + id + "\"");
    if (at == std::string::npos) return "no " + id;
    auto const from = document.rfind('<', at);
    return document.substr(from, document.find('>', from) + 1 - from);
}

std::string withScript(std::string page, std::string const& script) {
    auto const policy = page.find(kPolicy);
    page.erase(policy, page.find('>', policy) + 1 - policy);
    return page.insert(page.rfind("</body>"), "<script>" + script + "</script>");
}

}  // namespace vrl_test
