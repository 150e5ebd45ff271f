#pragma once

#include <cstdint>
#include <cstdio>

#include <sys/stat.h>
#include <unistd.h>

namespace Vorlane_v1_0::platform {

/// An open file, closed with this object.
class File {
public:
    explicit File(int number) : descriptor(number) {}
    File(File const&) = delete;
    File& operator=(File const&) = delete;
    ~File() {
        if (descriptor >= 0) ::close(descriptor);
    }

    explicit operator bool() const { return descriptor >= 0; }
    int number() const { return descriptor; }

    /// Fills a buffer from a place in the file. False if not all of it could be read.
    bool readAt(std::uint64_t offset, void* target, std::size_t size) const {
        return ::pread(descriptor, target, size, static_cast<off_t>(offset)) == static_cast<ssize_t>(size);
    }

    /// Hands the file over to a stream; null if that fails.
    std::FILE* toStream(char const* mode) {
        std::FILE* const stream = ::fdopen(descriptor, mode);
        if (stream) descriptor = -1;
        return stream;
    }

private:
    int descriptor;
};

}  // namespace Vorlane_v1_0::platform
