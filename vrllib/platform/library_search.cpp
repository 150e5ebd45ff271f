#include "vrllib/platform/library_search.h"

#include <cstdint>
#include <cstring>
#include <fstream>
#include <iterator>

#include <dlfcn.h>
#include <link.h>

#include "vrllib/platform/platform.h"

namespace Vorlane_v1_0::platform {

namespace {

constexpr char kCacheFile[] = "/etc/ld.so.cache";
constexpr char kCacheMagic[] = "glibc-ld.so.cache1.1";

// The cache of the system's loader: the magic without its zero byte, a head, then entries; the offsets of an entry
// count from the magic.
struct CacheHead {
    char magic[sizeof kCacheMagic - 1];
    std::uint32_t entries;
    std::uint32_t textSize;
    std::uint32_t unused[5];
};
struct CacheEntry {
    std::int32_t flags;
    std::uint32_t name;
    std::uint32_t path;
    std::uint32_t osVersion;
    std::uint64_t hardware;
};

std::string readCache() {
    std::ifstream file(kCacheFile, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

std::string textAt(std::string const& bytes, std::size_t offset) {
    return offset < bytes.size() ? std::string(bytes.c_str() + offset) : std::string();
}

}  // namespace

std::string cachedPath(std::string const& cache, std::string const& name) {
    auto const begin = cache.find(kCacheMagic);  // an older form may come before it
    CacheHead head;
    if (begin == std::string::npos || cache.size() - begin < sizeof head) return {};
    std::memcpy(&head, cache.data() + begin, sizeof head);
    for (std::size_t i = 0; i < head.entries; ++i) {
        std::size_t const place = begin + sizeof head + i * sizeof(CacheEntry);
        if (place + sizeof(CacheEntry) > cache.size()) return {};
        CacheEntry entry;
        std::memcpy(&entry, cache.data() + place, sizeof entry);
        if (textAt(cache, begin + entry.name) == name) return textAt(cache, begin + entry.path);
    }
    return {};
}

std::vector<std::string> searchFolders() {
    void* const program = ::dlopen(nullptr, RTLD_LAZY);
    Dl_serinfo size;
    if (!program || ::dlinfo(program, RTLD_DI_SERINFOSIZE, &size) != 0) return {};
    std::vector<char> buffer(size.dls_size);
    auto* const info = reinterpret_cast<Dl_serinfo*>(buffer.data());
    info->dls_size = size.dls_size;
    info->dls_cnt = size.dls_cnt;
    if (::dlinfo(program, RTLD_DI_SERINFO, info) != 0) return {};
    Dl_serpath const* const first = info->dls_serpath;
    std::vector<std::string> folders;
    for (unsigned i = 0; i < info->dls_cnt; ++i) folders.emplace_back((first + i)->dls_name);
    return folders;
}

std::string findLibrary(std::string const& name, std::vector<std::string> const& folders) {
    if (name.find('/') != std::string::npos) return name;
    for (auto const& searched : {folders, searchFolders()})
        for (std::string const& folder : searched)
            if (std::string path = folder + "/" + name; pathExists(path)) return path;
    static std::string const cache = readCache();
    return cachedPath(cache, name);
}

}  // namespace Vorlane_v1_0::platform
