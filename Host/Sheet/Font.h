#pragma once

#include <OpenImageIO/imagebuf.h>

#include <string>
#include <string_view>

namespace Kerovane::Host {

/** The font of sheets: DejaVu Sans in one size. Texts are UTF-8. */
class Font {
public:
    /// Throws Error if `file` is not a font. The default is where Debian installs it.
    explicit Font(std::string file = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf");

    /// The distance from one line's top to the next, in pixels.
    static constexpr int kLineHeight = 24;

    /// Returns the width in pixels that draw() needs for a line of `text`.
    int widthOf(std::string_view text) const;

    /// Draws a line of text in light grey on a four-channel canvas; `x` and `y` are the line's left
    /// and top edges.
    void draw(OIIO::ImageBuf& canvas, int x, int y, std::string_view text) const;

private:
    std::string mFile;
};

} // namespace Kerovane::Host
