#pragma once

#include "Host/Session/World.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Kerovane::Host {

/// The background behind transparent pixels.
enum class Ground { Checker, Black, White };

/// Throws Error if `text` is not "checker", "black" or "white".
Ground ParseGround(const std::string& text);

/// A part of a picture, and its size on the screen.
struct PreviewView {
    A_long x = 0; ///< in picture pixels
    A_long y = 0;
    A_long width = 0;
    A_long height = 0;
    A_long shownWidth = 0; ///< in screen pixels; at most `width` and `height`
    A_long shownHeight = 0;
    Ground ground = Ground::Checker;
};

/// Returns a view of the whole picture, scaled down to fit into a square of `mostPixels` a side.
PreviewView WholeView(const World& world, A_long mostPixels, Ground ground);

/// Returns the part of `world`, which must have 8 bits per channel, as RGB pixels over its ground.
/// Each pixel is the mean of the pixels that it covers. Throws Error if the view is invalid.
std::vector<std::uint8_t> PixelsOf(const World& world, const PreviewView& view);

} // namespace Kerovane::Host
