#include "Host/Sheet/Lettering.h"

#include "Host/Sheet/Letters.h"

#include <OpenImageIO/imagebufalgo.h>

#include <array>
#include <vector>

namespace Kerovane::Host {

namespace {

/// Pixels of the picture for one of a letter.
constexpr int kScale = 2;
constexpr int kGap = 1; ///< between letters

/// Letters.txt holds the characters from the blank on, 16 abreast, in bands with a line between.
constexpr std::size_t kLetterRows = 9;
constexpr std::size_t kLetterColumns = 5;
constexpr std::size_t kAbreast = 16;
constexpr unsigned char kFirst = ' ';
constexpr unsigned char kBox = 0x7f; ///< for what has no letter

static_assert(kLineHeight > static_cast<int>(kLetterRows) * kScale, "lines stand apart");

/// Rows of '#' where there is ink and '.' where there is none, all of the same length.
using Letter = std::array<std::string_view, kLetterRows>;

std::vector<std::string_view> Lines(std::string_view text) {
    std::vector<std::string_view> lines;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = text.find('\n', start);
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

Letter LetterOf(unsigned char character) {
    static const std::vector<std::string_view> kLines = Lines(Embedded::kLetters);
    const bool known = character >= kFirst && character < kBox;
    const std::size_t place = static_cast<std::size_t>(known ? character : kBox) - kFirst;
    Letter letter;
    for (std::size_t row = 0; row < kLetterRows; ++row) {
        const std::string_view line = kLines[place / kAbreast * (kLetterRows + 1) + row];
        const std::string_view cell =
            line.substr(place % kAbreast * (kLetterColumns + 1), kLetterColumns);
        letter[row] = cell.substr(0, cell.find(' '));
    }
    return letter;
}

/// The letters of `text`, one for each character of UTF-8.
std::vector<Letter> LettersOf(std::string_view text) {
    std::vector<Letter> letters;
    for (const char byte : text) {
        const auto character = static_cast<unsigned char>(byte);
        const bool continues = (character & 0xc0U) == 0x80U;
        if (!continues) {
            letters.push_back(LetterOf(character));
        }
    }
    return letters;
}

int WidthOf(const Letter& letter) {
    return static_cast<int>(letter.front().size()) * kScale;
}

void DrawLetter(OIIO::ImageBuf& canvas, int x, int y, const Letter& letter) {
    constexpr std::array<float, 4> kWhite{1, 1, 1, 1};
    for (std::size_t row = 0; row < letter.size(); ++row) {
        for (std::size_t column = 0; column < letter[row].size(); ++column) {
            if (letter[row][column] == '#') {
                const int left = x + static_cast<int>(column) * kScale;
                const int top = y + static_cast<int>(row) * kScale;
                OIIO::ImageBufAlgo::fill(canvas, kWhite,
                                         OIIO::ROI(left, left + kScale, top, top + kScale), 1);
            }
        }
    }
}

} // namespace

int TextWidth(std::string_view text) {
    int width = 0;
    for (const Letter& letter : LettersOf(text)) {
        width += (width == 0 ? 0 : kGap * kScale) + WidthOf(letter);
    }
    return width;
}

void DrawText(OIIO::ImageBuf& canvas, int x, int y, std::string_view text) {
    for (const Letter& letter : LettersOf(text)) {
        DrawLetter(canvas, x, y, letter);
        x += WidthOf(letter) + kGap * kScale;
    }
}

} // namespace Kerovane::Host
