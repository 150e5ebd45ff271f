#include "booklet/tex_symbols.h"

#include <algorithm>
#include <iterator>

namespace vrltool::booklet {

namespace {

struct Symbol {
    char32_t character;
    char const* tex;
};

// In order of the characters.
constexpr Symbol kSymbols[] = {
    {0x00A0, "\\nobreakspace{}"},
    {0x00A1, "\\textexclamdown{}"},
    {0x00A2, "\\textcent{}"},
    {0x00A3, "\\textsterling{}"},
    {0x00A7, "\\textsection{}"},
    {0x00A9, "\\textcopyright{}"},
    {0x00AB, "\\guillemotleft{}"},
    {0x00AC, "\\ensuremath{\\neg}"},
    {0x00AD, "\\-"},
    {0x00AE, "\\textregistered{}"},
    {0x00B0, "\\textdegree{}"},
    {0x00B1, "\\ensuremath{\\pm}"},
    {0x00B2, "\\ensuremath{{}^2}"},
    {0x00B3, "\\ensuremath{{}^3}"},
    {0x00B5, "\\textmu{}"},
    {0x00B6, "\\textparagraph{}"},
    {0x00B7, "\\textperiodcentered{}"},
    {0x00B9, "\\ensuremath{{}^1}"},
    {0x00BB, "\\guillemotright{}"},
    {0x00BC, "\\textonequarter{}"},
    {0x00BD, "\\textonehalf{}"},
    {0x00BE, "\\textthreequarters{}"},
    {0x00BF, "\\textquestiondown{}"},
    {0x00D7, "\\ensuremath{\\times}"},
    {0x00F7, "\\ensuremath{\\div}"},
    {0x0393, "\\ensuremath{\\Gamma}"},
    {0x0394, "\\ensuremath{\\Delta}"},
    {0x0398, "\\ensuremath{\\Theta}"},
    {0x039B, "\\ensuremath{\\Lambda}"},
    {0x039E, "\\ensuremath{\\Xi}"},
    {0x03A0, "\\ensuremath{\\Pi}"},
    {0x03A3, "\\ensuremath{\\Sigma}"},
    {0x03A6, "\\ensuremath{\\Phi}"},
    {0x03A8, "\\ensuremath{\\Psi}"},
    {0x03A9, "\\ensuremath{\\Omega}"},
    {0x03B1, "\\ensuremath{\\alpha}"},
    {0x03B2, "\\ensuremath{\\beta}"},
    {0x03B3, "\\ensuremath{\\gamma}"},
    {0x03B4, "\\ensuremath{\\delta}"},
    {0x03B5, "\\ensuremath{\\varepsilon}"},
    {0x03B6, "\\ensuremath{\\zeta}"},
    {0x03B7, "\\ensuremath{\\eta}"},
    {0x03B8, "\\ensuremath{\\theta}"},
    {0x03B9, "\\ensuremath{\\iota}"},
    {0x03BA, "\\ensuremath{\\kappa}"},
    {0x03BB, "\\ensuremath{\\lambda}"},
    {0x03BC, "\\textmu{}"},
    {0x03BD, "\\ensuremath{\\nu}"},
    {0x03BE, "\\ensuremath{\\xi}"},
    {0x03C0, "\\ensuremath{\\pi}"},
    {0x03C1, "\\ensuremath{\\rho}"},
    {0x03C3, "\\ensuremath{\\sigma}"},
    {0x03C4, "\\ensuremath{\\tau}"},
    {0x03C6, "\\ensuremath{\\varphi}"},
    {0x03C7, "\\ensuremath{\\chi}"},
    {0x03C8, "\\ensuremath{\\psi}"},
    {0x03C9, "\\ensuremath{\\omega}"},
    {0x2009, "\\,"},
    {0x2010, "-{}"},
    {0x2013, "\\textendash{}"},
    {0x2014, "\\textemdash{}"},
    {0x2018, "\\textquoteleft{}"},
    {0x2019, "\\textquoteright{}"},
    {0x201C, "\\textquotedblleft{}"},
    {0x201D, "\\textquotedblright{}"},
    {0x201E, "\\quotedblbase{}"},
    {0x2022, "\\textbullet{}"},
    {0x2026, "\\textellipsis{}"},
    {0x202F, "\\,"},
    {0x2070, "\\ensuremath{{}^0}"},
    {0x2074, "\\ensuremath{{}^4}"},
    {0x2075, "\\ensuremath{{}^5}"},
    {0x2076, "\\ensuremath{{}^6}"},
    {0x2077, "\\ensuremath{{}^7}"},
    {0x2078, "\\ensuremath{{}^8}"},
    {0x2079, "\\ensuremath{{}^9}"},
    {0x207B, "\\ensuremath{{}^-}"},
    {0x20AC, "\\texteuro{}"},
    {0x2122, "\\texttrademark{}"},
    {0x2126, "\\ensuremath{\\Omega}"},
    {0x212B, "\\r{A}"},
    {0x2190, "\\ensuremath{\\leftarrow}"},
    {0x2192, "\\ensuremath{\\rightarrow}"},
    {0x2202, "\\ensuremath{\\partial}"},
    {0x2208, "\\ensuremath{\\in}"},
    {0x2212, "\\ensuremath{-}"},
    {0x221A, "\\ensuremath{\\surd}"},
    {0x221E, "\\ensuremath{\\infty}"},
    {0x2248, "\\ensuremath{\\approx}"},
    {0x2260, "\\ensuremath{\\neq}"},
    {0x2264, "\\ensuremath{\\leq}"},
    {0x2265, "\\ensuremath{\\geq}"},
};

}  // namespace

char const* texSymbol(char32_t character) {
    auto const found = std::lower_bound(std::begin(kSymbols), std::end(kSymbols), character,
                                        [](Symbol const& s, char32_t wanted) { return s.character < wanted; });
    return found != std::end(kSymbols) && found->character == character ? found->tex : nullptr;
}

}  // namespace vrltool::booklet
