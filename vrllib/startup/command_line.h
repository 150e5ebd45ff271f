#pragma once

#include "vrllib/base/export.h"

/// A command line split into arguments, ready for what expects `argc` and `argv`.
///
/// Arguments are separated by white space. One that starts with a double or single quote goes to the next quote of that
/// kind, or to the end; quotes elsewhere are ordinary characters, and nothing escapes. After a closing quote one
/// character is dropped, whatever it is.
/// Bounds: what fits in 8192 bytes and 255 arguments; further input is dropped. A null line counts as empty.
/// A copy's pointers still point into the buffer of its source, by design: it is valid only while the source lives and
/// stays unchanged.
class VRL_API vrl_cmdline2args {
public:
    /// Splits a copy of the line.
    explicit vrl_cmdline2args(char const* cmdline);
    /**@{*/
    /// Copies the buffer, the count and the pointers unchanged.
    vrl_cmdline2args(vrl_cmdline2args const& other);
    vrl_cmdline2args& operator=(vrl_cmdline2args const& other);
    /**@}*/
    virtual ~vrl_cmdline2args();

    /// The number of arguments, the program name included.
    int argc() const { return count; }
    /// The arguments, with a null pointer after the last. The first is the fixed program name.
    char const* const* argv() const { return args; }
    /// One argument; `i` is not tested.
    char const* argv(int i) const { return args[i]; }

private:
    void split(char const* input);

    char text[8192];
    char const* args[256];
    int count;
};
