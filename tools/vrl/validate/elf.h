#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vrltool::validate {

/// A name that a shared library shows to others.
struct ElfSymbol {
    std::string name;
    bool function = false;  ///< code, and not data
};

/// What the headers of a shared library say, read without loading it.
///
/// Every offset is checked against the end of the file: a truncated file, or one with wrong offsets, is an error.
struct ElfFile {
    std::string error;                 ///< why this is no shared library that can be read; empty if it is one
    std::string hint;                  ///< what to do about it, where that is not plain
    std::string machine;               ///< "x86-64, 64 bits", for comparing and for people
    std::string soname;                ///< empty without one
    std::vector<std::string> needed;   ///< the libraries that it names, in its order
    std::vector<std::string> folders;  ///< where it looks for them, as it says so: "$ORIGIN/../lib"
    std::vector<ElfSymbol> exported;   ///< the names that it defines, sorted
};

/// Reads the headers of a file, which has to be a regular one.
ElfFile readElf(std::string const& path);

/// The same for the bytes of a file. Only the head is looked at for another machine than this program's, whose layout
/// differs.
ElfFile parseElf(std::string const& bytes);

}  // namespace vrltool::validate
