#pragma once

#include <array>
#include <map>
#include <string>
#include <typeinfo>
#include <vector>

#include "vrllib/core/factory_types.h"
#include "vrllib/plugins/load_report.h"

// Which library registered which key. Private.

namespace Vorlane_v1_0::detail {

/// The keys of the seven factories with the types of their creators, as they were when this was last asked. The type
/// distinguishes a new creator from the one before, and its address is in the file that contains the code.
class RegisteredKeys {
public:
    /// Takes over what the factories hold now.
    void update();

    /// As update, and returns what came or changed hands, by target and key. A key that is registered again from the
    /// same file has not changed hands.
    std::vector<LoadedKey> takeChanges();

private:
    using Known = std::map<std::string, std::type_info const*>;

    /// Adds the differences to `changes` unless it is null.
    void compareAll(std::vector<LoadedKey>* changes);
    template <class... T>
    void compareEach(TypeList<T...>, std::vector<LoadedKey>* changes);
    template <class T>
    void compare(LoadTarget target, std::vector<LoadedKey>* changes);

    std::array<Known, 7> known;
};

}  // namespace Vorlane_v1_0::detail
