#include "draw/symbol_views.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <utility>

#include "design/stand_in.h"
#include "draw/symbols.h"
#include "guard/quiet_output.h"
#include "guard/thrown.h"
#include "system/process.h"
#include "text/near_names.h"
#include "text/table.h"

namespace vrltool::draw {

namespace {

constexpr char kPrefix[] = "Symbol/";
constexpr char kParameter[] = "symbol";
constexpr unsigned kPatienceSeconds = 10;
constexpr char kNamed = '=', kThrew = '!';  // begin an answer
constexpr std::size_t kLongestAnswer = 200;

using Blocks = std::map<std::string, vrl::BB*>;  // one of each kind

void takeBlocks(Circuit const& circuit, Blocks& blocks) {
    for (Element const& element : circuit.elements) {
        if (!element.block || isStandIn(*element.block)) continue;
        blocks.emplace(element.kind, element.block);
        if (element.inside) takeBlocks(*element.inside, blocks);
    }
}

std::vector<std::string> symbolViews() {
    std::vector<std::string> keys;
    using Loader = FactoryLoader<vrl::TypeView<vrl::BB>>;
    for (auto entry = Loader::begin(); entry != Loader::end(); ++entry)
        if (entry->first.rfind(kPrefix, 0) == 0) keys.push_back(entry->first);
    return keys;
}

/// A view that registered itself with a block is taken out again before it is destroyed.
std::string chosenBy(std::string const& key, std::string const& kind, vrl::BB& block) {
    std::unique_ptr<vrl::View, void (*)(vrl::View*)> const view(vrl::TypeView<vrl::BB>::create(key, &block),
                                                                &vrl::View::destroy);
    if (!view) return {};
    std::vector<std::string> names;
    for (auto entry = block.beginView(); entry != block.endView(); ++entry)
        if (entry->second == view.get()) names.push_back(entry->first);
    for (std::string const& name : names) block.RegisterView::del(name);
    vrl::Attributes const& data = view->getViewData();
    return view->applyOn(kind) && data.find(kParameter) ? data.getString(kParameter) : "";
}

/// The answers of views for all blocks, each with a zero byte after it.
std::string answersOf(std::vector<std::string> const& keys, Blocks const& blocks) {
    leaveCrashesToParent();
    QuietOutput const quiet;
    std::string answers;
    for (std::string const& key : keys)
        for (auto const& [kind, block] : blocks) {
            std::string answer;
            std::string const thrown = quietlyThrownBy([&, &of = kind, &with = *block] {
                answer = kNamed + chosenBy(key, of, with).substr(0, kLongestAnswer);
            });
            if (!thrown.empty()) answer = kThrew + thrown.substr(0, kLongestAnswer);
            answers += answer.substr(0, answer.find('\0')) + '\0';
        }
    return answers;
}

class Choice {
public:
    explicit Choice(Circuit const& circuit) { takeBlocks(circuit, blocks); }

    ChosenSymbols run() {
        if (!blocks.empty()) ask(symbolViews());
        return std::move(chosen);
    }

private:
    /// All views in one copy; each in a copy of its own if that fails.
    void ask(std::vector<std::string> const& keys) {
        if (keys.empty()) return;
        ProcessResult const copy = runCopy([&] { return answersOf(keys, blocks); }, kPatienceSeconds);
        auto const count = static_cast<std::size_t>(std::count(copy.out.begin(), copy.out.end(), '\0'));
        if (copy.fine() && count == keys.size() * blocks.size())
            take(keys, copy.out);
        else if (keys.size() > 1)
            for (std::string const& key : keys) ask({key});
        else
            warn(keys[0], copy.how() + "; its symbols are left out");
    }

    void take(std::vector<std::string> const& keys, std::string const& answers) {
        std::size_t at = 0;
        for (std::string const& key : keys)
            for (auto const& block : blocks) {
                std::size_t const end = answers.find('\0', at);
                take(key, block.first, answers.substr(at, end - at));
                at = end + 1;
            }
    }

    void take(std::string const& key, std::string const& kind, std::string const& answer) {
        if (answer.size() < 2) return;
        std::string const text = answer.substr(1);
        if (answer[0] == kThrew)
            warn(key, "threw " + printable(text) + " for the block '" + printable(kind) + "'");
        else if (findSymbol(text))
            chosen.byKind.emplace(kind, text);
        else
            warn(key, "no symbol is called '" + printable(text) + "'" + nearText(text));
    }

    static std::string nearText(std::string const& wrong) {
        std::string const near = didYouMean(wrong, symbolNames());
        return near.empty() ? near : "; " + near;
    }

    void warn(std::string const& key, std::string const& what) {
        std::string const line = "view '" + printable(key) + "': " + what;
        auto& lines = chosen.warnings;
        if (std::find(lines.begin(), lines.end(), line) == lines.end()) lines.push_back(line);
    }

    Blocks blocks;
    ChosenSymbols chosen;
};

}  // namespace

ChosenSymbols chosenSymbols(Circuit const& circuit) { return Choice(circuit).run(); }

std::map<std::string, std::string> symbolsOf(Circuit const& circuit) {
    ChosenSymbols chosen = chosenSymbols(circuit);
    for (std::string const& warning : chosen.warnings) std::cerr << "vrl: " << warning << '\n';
    return std::move(chosen.byKind);
}

}  // namespace vrltool::draw
