#pragma once

#include <utility>

#include "vrllib/base/export.h"
#include "vrllib/base/forward.h"

namespace Vorlane_v1_0 {

namespace detail {

/// What the handles on one object share.
struct HandleBlock {
    void* object;
    unsigned count;
};

/// Frees a block whose last handle went. Compiled in the library: where a compiler sees the deletion, it takes every
/// other handle for one that may use the block afterwards, and warns.
VRL_API void freeBlock(HandleBlock* block);

}  // namespace detail

/// Destroys an object whose last handle went. Classes with on-destroy callbacks go through their static destroy.
template <class T>
void ptr_destroy(T* object) {
    delete object;
}

/// @cond
template <>
VRL_API void ptr_destroy<BB>(BB* object);
template <>
VRL_API void ptr_destroy<Foundry>(Foundry* object);
template <>
VRL_API void ptr_destroy<Netlist>(Netlist* object);
template <>
VRL_API void ptr_destroy<View>(View* object);
/// @endcond

/// The reference-counting handle of the whole system.
///
/// Handles that are copies of each other share one control block; the object is destroyed with the last of them. Two
/// handles made from one plain pointer know nothing of each other and destroy it twice.
/// Threads: the count is a plain integer; an object and all its handles belong to one thread at a time.
template <class T>
class shared_ptr {
public:
    /// Holds no object, though it has a control block.
    shared_ptr() : block(new Block{nullptr, 1}) {}

    /// Takes the object over. For null the handle holds no object.
    explicit shared_ptr(T* object) : block(new Block{object, 1}) {}

    /// Shares the control block of the source, if it has one.
    shared_ptr(shared_ptr const& other) : block(other.block) {
        if (block) ++block->count;
    }

    /// Leaves the source without a control block.
    shared_ptr(shared_ptr&& other) noexcept : block(std::exchange(other.block, nullptr)) {}

    /// Releases what this handle holds, which may destroy it, and shares the control block of the source.
    shared_ptr& operator=(shared_ptr const& other) {
        if (this != &other) {
            if (other.block) ++other.block->count;  // first, since the release may run code that drops the source
            Block* const shared = other.block;
            release();
            block = shared;
        }
        return *this;
    }

    /// Releases what this handle holds and leaves the source without a control block. Itself is left alone.
    shared_ptr& operator=(shared_ptr&& other) noexcept {
        if (this != &other) {
            Block* const taken = std::exchange(other.block, nullptr);
            release();
            block = taken;
        }
        return *this;
    }

    /// Destroys the object, through ptr_destroy, if this is its last handle.
    ~shared_ptr() { release(); }

    /// The object, or null.
    T* get() const { return block ? static_cast<T*>(block->object) : nullptr; }
    /**@{*/
    /// The object, which must be there: nothing is tested.
    T* operator->() const { return get(); }
    T& operator*() const { return *get(); }
    /**@}*/

    /// Whether the handle holds an object.
    explicit operator bool() const { return get() != nullptr; }

    /// How many handles share the control block; 0 without one.
    unsigned useCount() const { return block ? block->count : 0; }

private:
    using Block = detail::HandleBlock;

    void release() {
        Block* const last = std::exchange(block, nullptr);
        if (!last || --last->count != 0) return;
        T* const object = static_cast<T*>(last->object);
        detail::freeBlock(last);
        if (object) ptr_destroy<T>(object);
    }

    Block* block;
};

}  // namespace Vorlane_v1_0
