#include "draw/text_width.h"

#include "text/utf8.h"

namespace vrltool::draw {

namespace {

// Hundredths of the size of the font, of the printable characters of ASCII in order.
constexpr int kWidths[] = {32, 41, 46, 84, 64, 96, 78, 28, 40, 40, 50, 84, 32, 37,  32, 34, 64, 64, 64,
                           64, 64, 64, 64, 64, 64, 64, 34, 34, 84, 84, 84, 54, 100, 69, 69, 70, 78, 64,
                           58, 78, 76, 30, 30, 66, 56, 87, 75, 79, 61, 79, 70, 64,  62, 74, 69, 99, 69,
                           62, 69, 40, 34, 40, 84, 50, 50, 62, 64, 55, 64, 62, 36,  64, 64, 28, 28, 58,
                           28, 98, 64, 62, 64, 64, 42, 53, 40, 64, 60, 82, 60, 60,  53, 64, 34, 64, 84};
constexpr int kBoldWidths[] = {35, 46,  53, 84, 70, 101, 88, 31,  46, 46, 53, 84, 38, 42,  38, 37, 70, 70,  70,
                               70, 70,  70, 70, 70, 70,  70, 40,  40, 84, 84, 84, 59, 100, 78, 77, 74, 84,  69,
                               69, 83,  84, 38, 38, 78,  64, 100, 84, 86, 74, 86, 78, 73,  69, 82, 78, 111, 78,
                               73, 73,  46, 37, 46, 84,  50, 50,  68, 72, 60, 72, 68, 44,  72, 72, 35, 35,  67,
                               35, 105, 72, 69, 72, 72,  50, 60,  48, 72, 66, 93, 65, 66,  59, 72, 37, 72,  84};
constexpr int kOther = 80;
constexpr int kWide = 110;  // from the scripts of East Asia on

int widthOf(char32_t character, bool bold) {
    if (character >= ' ' && character <= '~') return (bold ? kBoldWidths : kWidths)[character - ' '];
    return character < 0x1100 || (character >= 0x2000 && character < 0x2E80) ? kOther : kWide;
}

}  // namespace

int textWidth(std::string const& text, int points, bool bold) {
    int hundredths = 0;
    for (Character const& character : charactersOf(text)) hundredths += widthOf(character.number, bold);
    return (hundredths * points + 99) / 100;
}

}  // namespace vrltool::draw
