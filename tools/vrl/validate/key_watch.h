#pragma once

#include <string>
#include <vector>

#include "host/targets.h"

namespace vrltool::validate {

/// A key that changed hands.
struct ReplacedClass {
    std::string thing;        ///< "block 'sfBend'"
    std::string first, last;  ///< the classes, as people write them
};

/// Notes, from its making on, which keys get a second class. Registering takes memory, so a look at the factories each
/// time that memory is taken sees each class. One at a time.
class KeyWatch {
public:
    KeyWatch();
    KeyWatch(KeyWatch const&) = delete;
    KeyWatch& operator=(KeyWatch const&) = delete;
    ~KeyWatch();

    /// Takes the last look. Keys whose first class was there before the watch do not count.
    std::vector<ReplacedClass> end();

private:
    static void look();

    std::array<Creators, kTargetCount> before, seen;
    std::vector<ReplacedClass> replaced;
};

}  // namespace vrltool::validate
