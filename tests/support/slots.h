#pragma once

#include <cstddef>
#include <cstring>
#include <stdexcept>
#include <type_traits>
#include <vector>

namespace vrl_test {

/// The place of a virtual operation in the table of the class that declares it, from 0. A virtual destructor takes two
/// places.
///
/// A pointer to a virtual member holds one more than the place in bytes, then the adjustment of the object.
template <class Member>
std::size_t slotOf(Member member) {
    static_assert(std::is_member_function_pointer_v<Member>);
    std::size_t parts[2];
    static_assert(sizeof parts == sizeof member);
    std::memcpy(parts, &member, sizeof parts);
    if (parts[0] % sizeof(void*) != 1) throw std::logic_error("not a virtual operation");
    return parts[0] / sizeof(void*);
}

/// The places of several operations, in the order of the arguments.
template <class... Members>
std::vector<std::size_t> slotsOf(Members... members) {
    return {slotOf(members)...};
}

}  // namespace vrl_test
