#pragma once

#include "vrllib/base/export.h"
#include "vrllib/base/forward.h"

/// A foundry and a block from one line of text, "foundry@bb[@arg]".
///
/// Says "Creating: " and the text in the message channel, then creates the foundry and the block; what is not available
/// is reported there and stays null, so a caller tests both. The argument is for the caller to read. Errors: without an
/// "@", throws "Format is not valid for foundry@bb[@arg]" (`char*`); an empty block name throws what BB::create throws,
/// and the foundry is then not released. An empty foundry name means the default foundry, which the destructor destroys
/// like any other, though its loader still holds it. Ownership: the destructor destroys the block, then the foundry.
/// Assignment copies the pointers too: only one of the two objects may be destroyed. Bounds: each text is cut to its
/// array. Null texts count as empty.
struct VRL_API vrl_spec2bb {
    /// Splits the string and makes both objects. `defaultArg` replaces a missing argument.
    vrl_spec2bb(char const* spec, char const* defaultArg);
    /**@{*/
    /// Copies everything, the pointers too. What the target of an assignment held is not destroyed.
    vrl_spec2bb(vrl_spec2bb const& other);
    vrl_spec2bb& operator=(vrl_spec2bb const& other);
    /**@}*/
    ~vrl_spec2bb();

    /// What is before the first "@".
    char foundryName[256];
    /// The kind of the block.
    char bbName[1024];
    /// The argument, or the default one; empty without either.
    char arg[2048];
    /// The foundry, or null.
    Vorlane_v1_0::Foundry* foundry;
    /// The block, or null.
    Vorlane_v1_0::BB* bb;
};
