#include "system/replace_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <map>
#include <ostream>
#include <streambuf>
#include <vector>

#include "system/large_files.h"
#include "text/failure.h"

namespace vrltool {

namespace {

std::string hintFor(int code) {
    static std::map<int, char const*> const hints{{ENOENT, "make the folder first"},
                                                  {ENOTDIR, "name a file in a folder"},
                                                  {EACCES, "name a file in a folder that you may write to"},
                                                  {EPERM, "name a file in a folder that you may write to"},
                                                  {EROFS, "name a file in a folder that you may write to"},
                                                  {ENOSPC, "make room on the disk"},
                                                  {EDQUOT, "make room on the disk"},
                                                  {EFBIG, "raise the limit of the size of files"},
                                                  {ELOOP, "name the file itself"},
                                                  {ENAMETOOLONG, "give it a shorter name"}};
    auto const found = hints.find(code);
    return found == hints.end() ? "" : found->second;
}

[[noreturn]] void failSave(std::string const& path, std::string const& step) {
    int const code = errno;
    std::string hint = hintFor(code);
    if (std::error_code none; std::filesystem::is_regular_file(path, none))
        hint += std::string(hint.empty() ? "" : "; ") + "the file is as it was before";
    throw Failure(path, step + ": " + std::strerror(code), hint);
}

/// The file that a path leads to, which need not exist: what is replaced is never a link.
std::filesystem::path target(std::filesystem::path path) {
    constexpr int kMostLinks = 40;
    std::error_code error;
    for (int links = 0; std::filesystem::is_symlink(path, error); ++links) {
        if (links == kMostLinks) {
            errno = ELOOP;
            failSave(path.string(), "cannot be replaced");
        }
        path = path.parent_path() / std::filesystem::read_symlink(path, error);
    }
    return path;
}

/// A new file beside another one, removed again unless it was put in its place. It is in the same folder, since a file
/// can only be renamed within one file system.
class Replacement {
public:
    explicit Replacement(std::filesystem::path const& path)
        : place(path.string()), name((path.parent_path() / ".vrl-XXXXXX").string()) {
        descriptor = mkostemp(name.data(), O_CLOEXEC);
        if (descriptor < 0) failSave(place, "cannot make a file in its folder");
    }
    Replacement(Replacement const&) = delete;
    Replacement& operator=(Replacement const&) = delete;
    ~Replacement() {
        if (descriptor >= 0) close(descriptor);
        if (!name.empty()) unlink(name.c_str());
    }

    void takeMode() {
        struct stat before {};
        mode_t const mask = umask(0);
        umask(mask);
        bool const exists = stat(place.c_str(), &before) == 0;
        constexpr mode_t kWritable = S_IWUSR | S_IWGRP | S_IWOTH;
        if (exists && (before.st_mode & kWritable) == 0)
            throw Failure(place, "is read-only", "give it the permission to write, or name another file");
        if (fchmod(descriptor, exists ? before.st_mode & 07777 : 0666 & ~mask) != 0)
            failSave(place, "cannot set its mode");
    }

    void write(char const* bytes, std::size_t size) {
        for (std::size_t done = 0; done < size;) {
            ssize_t const count = ::write(descriptor, bytes + done, size - done);
            if (count < 0 && errno != EINTR) failSave(place, "cannot be written");
            if (count > 0) done += static_cast<std::size_t>(count);
        }
    }

    void putInPlace() {
        if (fsync(descriptor) != 0) failSave(place, "cannot be flushed");
        int const closed = close(descriptor);
        descriptor = -1;
        if (closed != 0) failSave(place, "cannot be closed");
        if (rename(name.c_str(), place.c_str()) != 0) failSave(place, "cannot be put in its place");
        name.clear();
        flushFolder();
    }

private:
    /// Without this the rename may not outlive a loss of power. Some folders may be written and not read, and some file
    /// systems flush none: the file is in its place there, too.
    void flushFolder() const {
        auto const folder = std::filesystem::path(place).parent_path();
        int const opened = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (opened < 0) return;
        static_cast<void>(fsync(opened));
        close(opened);
    }

    std::string place;
    std::string name;
    int descriptor;
};

/// Hands what is written to a stream on to a new file, in large pieces.
class IntoFile final : public std::streambuf {
public:
    explicit IntoFile(Replacement& f) : file(f), piece(1 << 16) { restart(); }

private:
    int_type overflow(int_type c) override {
        sync();
        return traits_type::eq_int_type(c, traits_type::eof()) ? traits_type::not_eof(c)
                                                               : sputc(traits_type::to_char_type(c));
    }
    int sync() override {
        file.write(pbase(), static_cast<std::size_t>(pptr() - pbase()));
        restart();
        return 0;
    }
    void restart() { setp(piece.data(), piece.data() + piece.size()); }

    Replacement& file;
    std::vector<char> piece;
};

}  // namespace

void replaceFile(std::string const& path, std::function<void(std::ostream&)> const& fill) {
    LargeFilesFail const limit;
    struct stat status {};
    if (stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode))
        throw Failure(path, S_ISDIR(status.st_mode) ? "is a folder" : "is no regular file", "name a regular file");
    Replacement file(target(path));
    file.takeMode();
    IntoFile buffer(file);
    std::ostream out(&buffer);
    out.exceptions(std::ios::badbit);  // so that a Failure gets through the stream
    fill(out);
    out.flush();
    file.putInPlace();
}

void replaceFile(std::string const& path, std::string const& bytes) {
    replaceFile(path, [&](std::ostream& out) { out.write(bytes.data(), static_cast<std::streamsize>(bytes.size())); });
}

}  // namespace vrltool
