#include "validate/heap.h"

#include <malloc.h>
#include <sys/mman.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

#if defined(__SANITIZE_ADDRESS__)
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

// Replaces operator new and operator delete of the whole program. Unless the heap is watched, they do what those of the
// run-time library do.

namespace vrltool::validate {

namespace {

constexpr std::size_t kBorder = 64;  // on each side of a block; keeps its alignment
constexpr unsigned char kPattern = 0xB5;
constexpr std::size_t kPlaces = std::size_t{1} << 21;  // of the table; only the used part of it takes memory
constexpr std::size_t kMostBlocks = kPlaces / 2;
constexpr std::size_t kGroup = 256;  // places that are looked through together

/// A block in use; without an address, a free place of the table.
struct Block {
    unsigned char* address;
    std::size_t size;
    void const* caller;
    bool damaged;
};

/// All that is known of the heap. It takes no memory with operator new.
struct Watch {
    std::atomic_flag busy = ATOMIC_FLAG_INIT;
    Block* table = nullptr;
    std::size_t blocks = 0, asked = 0, taken = 0;
    std::array<bool, kPlaces / kGroup> used{};  ///< the groups that ever had a block
    std::array<Overrun, 256> damaged{};         ///< what was found, and not yet returned
    std::size_t damagedCount = 0;
    HeapListener listener = nullptr;
    bool listening = false;
};

Watch watch;
std::atomic<bool> watching{false};

class Lock {
public:
    Lock() {
        while (watch.busy.test_and_set(std::memory_order_acquire)) {
        }
    }
    Lock(Lock const&) = delete;
    Lock& operator=(Lock const&) = delete;
    ~Lock() { watch.busy.clear(std::memory_order_release); }
};

// By address, so that neighbours are in one page of the table.
std::size_t firstPlace(void const* address) { return (reinterpret_cast<std::uintptr_t>(address) >> 4) % kPlaces; }
std::size_t after(std::size_t place) { return (place + 1) % kPlaces; }

/// The place of a block, or the free one where it belongs.
std::size_t placeOf(void const* address) {
    std::size_t place = firstPlace(address);
    while (watch.table[place].address && watch.table[place].address != address) place = after(place);
    return place;
}

/// Empties a place, and moves up those that are found through it only.
void removeAt(std::size_t hole) {
    for (std::size_t place = after(hole); watch.table[place].address; place = after(place)) {
        std::size_t const wanted = firstPlace(watch.table[place].address);
        bool const stays = hole <= place ? hole < wanted && wanted <= place : hole < wanted || wanted <= place;
        if (stays) continue;
        watch.table[hole] = watch.table[place];
        hole = place;
    }
    watch.table[hole].address = nullptr;
}

// All of its bytes are those of the pattern if the first is, and each is as the one before it.
bool isWhole(unsigned char const* border) {
    return border[0] == kPattern && std::memcmp(border, border + 1, kBorder - 1) == 0;
}

/// Notes a block that is damaged, once.
void noteDamage(Block& block) {
    bool const whole = isWhole(block.address - kBorder) && isWhole(block.address + block.size);
    if (whole || block.damaged || watch.damagedCount == watch.damaged.size()) return;
    block.damaged = true;
    watch.damaged[watch.damagedCount++] = {block.size, block.caller};
}

void noteDamageInUse() {
    Lock const lock;
    for (std::size_t group = 0; watching && group < watch.used.size(); ++group) {
        if (!watch.used[group]) continue;
        for (std::size_t place = group * kGroup; place < (group + 1) * kGroup; ++place)
            if (watch.table[place].address) noteDamage(watch.table[place]);
    }
}

/// What the run-time library takes for a block, and what it adds for itself.
std::size_t takenFor(void* base) {
#if defined(__SANITIZE_ADDRESS__)
    return malloc_usable_size(base);
#else
    return malloc_usable_size(base) + sizeof(std::size_t);
#endif
}

void* takeWatched(std::size_t size, void const* caller) {
    Lock const lock;
    if (size > SIZE_MAX - 2 * kBorder || watch.blocks == kMostBlocks) return std::malloc(size);
    auto* const base = static_cast<unsigned char*>(std::malloc(size + 2 * kBorder));
    if (!base) return nullptr;
    std::memset(base, kPattern, kBorder);
    std::memset(base + kBorder + size, kPattern, kBorder);
    std::size_t const place = placeOf(base + kBorder);
    watch.table[place] = {base + kBorder, size, caller, false};
    watch.used[place / kGroup] = true;
    ++watch.blocks;
    watch.asked += size;
    watch.taken += takenFor(base);
    return base + kBorder;
}

void callListener() {
    if (!watch.listener || watch.listening) return;
    watch.listening = true;
    watch.listener();
    watch.listening = false;
}

void* take(std::size_t size, void const* caller) {
    if (!watching) return std::malloc(size != 0 ? size : 1);
    callListener();
    return takeWatched(size, caller);
}

void* takeOrThrow(std::size_t size, void const* caller) {
    for (;;) {
        if (void* const block = take(size, caller)) return block;
        std::new_handler const handler = std::get_new_handler();
        if (!handler) throw std::bad_alloc();
        handler();
    }
}

void* takeOrNull(std::size_t size, void const* caller) noexcept {
    try {
        return takeOrThrow(size, caller);
    } catch (std::bad_alloc const&) {
        return nullptr;
    }
}

/// What was taken before the watch began is in no table.
void* forgotten(void* address) {
    Lock const lock;
    std::size_t const place = placeOf(address);
    Block& block = watch.table[place];
    if (!block.address) return address;
    noteDamage(block);
    unsigned char* const base = block.address - kBorder;
    --watch.blocks;
    watch.asked -= block.size;
    watch.taken -= takenFor(base);
    removeAt(place);
    return base;
}

void release(void* address) noexcept { std::free(watching && address ? forgotten(address) : address); }

}  // namespace

void watchHeap() {
    void* const table = mmap(nullptr, kPlaces * sizeof(Block), PROT_READ | PROT_WRITE,
                             MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (table == MAP_FAILED) return;
    watch.table = static_cast<Block*>(table);
    watching = true;
}

std::vector<Overrun> overrunsSoFar() {
    noteDamageInUse();
    std::vector<Overrun> overruns(watch.damaged.data(), watch.damaged.data() + watch.damagedCount);
    watch.damagedCount = 0;
    return overruns;
}

std::size_t heapInUse() {
#if defined(__SANITIZE_ADDRESS__)
    std::size_t const all = __sanitizer_get_current_allocated_bytes();
#else
    auto const system = mallinfo2();
    std::size_t const all = system.uordblks + system.hblkhd;
#endif
    return all - watch.taken + watch.asked;
}

void setHeapListener(HeapListener listener) { watch.listener = listener; }

}  // namespace vrltool::validate

using vrltool::validate::release;
using vrltool::validate::takeOrNull;
using vrltool::validate::takeOrThrow;

void* operator new(std::size_t size) { return takeOrThrow(size, __builtin_return_address(0)); }
void* operator new[](std::size_t size) { return takeOrThrow(size, __builtin_return_address(0)); }
void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
    return takeOrNull(size, __builtin_return_address(0));
}
void* operator new[](std::size_t size, std::nothrow_t const&) noexcept {
    return takeOrNull(size, __builtin_return_address(0));
}
void operator delete(void* block) noexcept { release(block); }
void operator delete[](void* block) noexcept { release(block); }
void operator delete(void* block, std::size_t) noexcept { release(block); }
void operator delete[](void* block, std::size_t) noexcept { release(block); }
void operator delete(void* block, std::nothrow_t const&) noexcept { release(block); }
void operator delete[](void* block, std::nothrow_t const&) noexcept { release(block); }
