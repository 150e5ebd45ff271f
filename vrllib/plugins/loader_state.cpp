#include "vrllib/plugins/loader_state.h"

#include <utility>

namespace Vorlane_v1_0::detail {

LoaderState& loaderState() {
    static auto* const made = new LoaderState;
    return *made;
}

bool takeLoad() {
    unsigned* const left = loaderState().loadsLeft;
    if (!left) return true;
    if (*left > 0) --*left;
    return *left > 0;
}

LoadLineScope::LoadLineScope(LoadLine line) : previous(loaderState().line) {
    auto& lines = loaderState().report.lines;
    lines.push_back(std::move(line));
    loaderState().line = lines.size() - 1;
}

}  // namespace Vorlane_v1_0::detail
