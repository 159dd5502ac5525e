#include "Host/Sheet/Font.h"

#include "Host/Text/Error.h"

#include <OpenImageIO/imagebufalgo.h>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

namespace Kerovane::Host {

namespace {

namespace Algo = OIIO::ImageBufAlgo;

constexpr int kSize = 17;     ///< font size in pixels
constexpr int kBaseline = 17; ///< from a line's top to its baseline; descenders lie below

} // namespace

Font::Font(std::string file) : mFile(std::move(file)) {
    if (!Algo::text_size("x", kSize, mFile).defined()) {
        throw Error(fmt::format(
            "no font for the sheet in '{}', which the package fonts-dejavu-core installs", mFile));
    }
}

int Font::widthOf(std::string_view text) const {
    // The region of an empty text ends before it begins, so its end may be negative.
    return std::max(0, Algo::text_size(std::string(text), kSize, mFile).xend);
}

void Font::draw(OIIO::ImageBuf& canvas, int x, int y, std::string_view text) const {
    constexpr std::array<float, 4> kInk{0.92F, 0.92F, 0.92F, 1};
    Algo::render_text(canvas, x, y + kBaseline, std::string(text), kSize, mFile, kInk);
}

} // namespace Kerovane::Host
