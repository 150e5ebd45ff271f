#pragma once

namespace vrltool::booklet {

/// What LaTeX writes for a character beyond ASCII that is no Latin letter; null for what it does not know.
char const* texSymbol(char32_t character);

}  // namespace vrltool::booklet
