#include "vrllib/model/netlist_tables.h"

#include <algorithm>

namespace Vorlane_v1_0::detail {

bool NodeList::has(unsigned int node) const {
    constexpr std::size_t kFewNodes = 32;  // are searched as fast without an index
    if (mayChange || list.size() <= kFewNodes) return std::find(list.begin(), list.end(), node) != list.end();
    if (!indexed) index.insert(list.begin(), list.end());
    indexed = true;
    return index.count(node) > 0;
}

void NodeList::add(unsigned int node) {
    list.push_back(node);
    mayChange = false;
    if (indexed) index.insert(node);
}

}  // namespace Vorlane_v1_0::detail
