#pragma once

#include <cstddef>
#include <list>
#include <ostream>
#include <streambuf>
#include <string>
#include <unordered_map>

#include "vrllib/model/netlist.h"

// Netlists in each other, to any depth: what would call itself once for each level goes on without the stack after
// kPlainNesting levels. Private.

namespace Vorlane_v1_0::detail {

/// How many netlists in each other are handled by plain recursion, whose order plug-ins can observe.
constexpr std::size_t kPlainNesting = 64;

/// Drops the blocks of a netlist that is being destroyed. Below kPlainNesting netlists that are being destroyed in each
/// other, the blocks wait until the stack is back at that level.
void releaseBlocks(Netlist::ElementMap& blocks);

/// Collects a text. Written to a stream that collects as well, the text moves there whole, without a copy, so that the
/// cost of a complaint does not grow with the levels that it passes.
class CollectedText final : public std::streambuf {
public:
    using Pieces = std::list<std::string>;

    /// Moves the text out.
    Pieces take() { return std::exchange(pieces, {}); }
    /// Writes a text, or moves it to a stream that collects.
    static void write(std::ostream& os, Pieces text);

protected:
    std::streamsize xsputn(char const* bytes, std::streamsize count) override;
    int_type overflow(int_type byte) override;

private:
    Pieces pieces;
};

/// One netlist whose blocks are being checked.
class NetlistCheck {
public:
    explicit NetlistCheck(Netlist const& netlist);
    NetlistCheck(NetlistCheck const&) = delete;
    NetlistCheck& operator=(NetlistCheck const&) = delete;
    ~NetlistCheck();

    /// Whether the netlist is being checked further out already: it contains itself.
    bool isInsideItself() const { return insideItself; }

    /// Checks the netlists inside this one, innermost first, if the checks are deep in each other.
    void lookAhead();

    /// Whether a block is within its ranges. If not, its complaints go to `os`.
    static bool inSpec(BB const& block, std::ostream& os);

private:
    struct Result {
        bool good;
        CollectedText::Pieces complaints;
        std::size_t uses;  // elements that have the netlist
    };
    using Results = std::unordered_map<Attributes const*, Result>;
    struct State;

    static State& state();

    Netlist const& checked;
    bool insideItself;
    Results results;
    Results* outerResults;
};

}  // namespace Vorlane_v1_0::detail
