#pragma once

#include <OpenImageIO/imagebuf.h>

#include <string_view>

namespace Kerovane::Host {

/// From the top of one line of text to the top of the next, in pixels.
inline constexpr int kLineHeight = 24;

/// How wide DrawText draws `text`, in pixels.
int TextWidth(std::string_view text);

/**
 * Draws a line of text, white, in letters that the program brings along; `x` and `y` are its left
 * and upper border. Characters beyond ASCII appear as boxes.
 */
void DrawText(OIIO::ImageBuf& canvas, int x, int y, std::string_view text);

} // namespace Kerovane::Host
