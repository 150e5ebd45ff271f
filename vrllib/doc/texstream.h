#pragma once

#include <cstdint>
#include <fstream>
#include <ostream>
#include <string>

#include "vrllib/base/forward.h"

/// A LaTeX source file that is being written: the target of every toTex.
///
/// It owns the file and a sectioning base that callers shift, so that a part of a document can be nested in another. It
/// does not run LaTeX. The lines end in a bare line feed on every system.
/// Ownership: the destructor closes the file, without the footer.
/// Errors: nothing throws or prints; failures show in the state of os() only. A null string counts as empty.
/// Threads: one thread at a time.
class VRL_API texstream {
public:
    /// Opens the file for writing, emptied. If that fails, os() has failed and all writing does nothing.
    texstream(char const* fileName, bool writeHeader);
    texstream(texstream const&) = delete;
    texstream& operator=(texstream const&) = delete;
    ~texstream();

    /**@{*/
    /// Where callers write their text, unescaped.
    std::ostream& os() { return out; }
    operator std::ostream&() { return out; }
    /**@}*/

    /// Writes the preamble, "\begin{document}" included. Returns this texstream.
    texstream& header();

    /// Writes "\end{document}\n". Returns this texstream.
    texstream& footer();

    /// Closes the file, with the footer if asked for. A second call does nothing; what is written later is lost.
    void close(bool writeFooter);

    /**@{*/
    /// Both are close(true); they produce no other format.
    void pdf();
    void rtf();
    /**@}*/

    /**@{*/
    /// Shift the sectioning base by one level, without bounds. Return this texstream.
    texstream& docHdrInc();
    texstream& docHdrDec();
    /**@}*/

    /// Writes a sectioning command: from chapter (0) over subparagraph (5) to textbf (6), emph for any other level.
    ///
    /// The level counts from the sectioning base. The title goes through id2tex. Returns this texstream.
    texstream& docHeader(std::string const& title, int level);

    /**@{*/
    /// Writes "\label{", the prefix, id2ref(name), "} ". Returns this texstream.
    texstream& label(char const* prefix, char const* name);
    texstream& label(char const* prefix, std::string name);
    /**@}*/

    /**@{*/
    /// Writes "\ref{", the prefix, id2ref(name), "} ". Returns this texstream.
    texstream& ref(char const* prefix, char const* name);
    texstream& ref(char const* prefix, std::string name);
    /**@}*/

    /// A copy with a backslash before each "$" and "_". No other special character of LaTeX is treated.
    static std::string id2tex(std::string const& id);

    /// A copy without any "$" and "_".
    static std::string id2ref(std::string const& id);

private:
    std::int32_t docHdr = 0;
    std::string fileName;
    bool isOpen = true;  ///< until close, also if the file could not be opened
    std::ofstream out;
};
