#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>

#include "vrllib/base/export.h"

namespace Vorlane_v1_0 {

/// A named binary object that a plug-in carries inside itself, such as a data file, and the process-wide registry of
/// them. The library calls neither.
///
/// The registry never deletes an object: it belongs to whoever registered it, and has to outlive its use.
class VRL_API Blob {
public:
    Blob();
    /// The registry does not learn of a copy.
    Blob(Blob const& other);
    /// There is nothing to assign.
    Blob& operator=(Blob const& other);
    virtual ~Blob();

    /// The first of the object's bytes.
    virtual unsigned char const* getData() const = 0;
    /// How many bytes there are.
    virtual std::size_t getSize() const = 0;

    /// Writes the bytes to a file, over one that is there. False without a message if it cannot be opened; what the
    /// system reports afterwards, such as a full disk, goes unseen.
    bool save(std::string const& fileName) const;

    /// Makes the registry, which otherwise comes with its first use.
    static void init();
    /// A taken name keeps its first object.
    static void push_back(std::string const& name, Blob* blob);
    /// The object of that name, or null.
    static Blob* find(std::string const& name);
    /// Writes "Blob's:", each name after a blank, in order, and a line end.
    static void list(std::ostream& os);
};

}  // namespace Vorlane_v1_0
