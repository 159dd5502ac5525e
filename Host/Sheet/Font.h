#pragma once

#include <OpenImageIO/imagebuf.h>

#include <string>
#include <string_view>

namespace Kerovane::Host {

/** The letters of sheets, DejaVu Sans of one size. Texts are UTF-8. */
class Font {
public:
    /// Throws Error if there is no font in `file`; without an argument, in Debian's.
    explicit Font(std::string file = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf");

    /// From the top of one line of text to the top of the next, in pixels.
    static constexpr int kLineHeight = 24;

    /// The width that draw needs for a line of `text`, in pixels.
    int widthOf(std::string_view text) const;

    /// Draws a line of text over `canvas`, which has four channels, in a light grey; `x` and `y`
    /// are its left and upper border.
    void draw(OIIO::ImageBuf& canvas, int x, int y, std::string_view text) const;

private:
    std::string mFile;
};

} // namespace Kerovane::Host
