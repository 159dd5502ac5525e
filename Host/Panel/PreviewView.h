#pragma once

#include "Host/Session/World.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Kerovane::Host {

/// The background behind transparent pixels.
enum class Ground { Checker, Black, White };

/// Reads "checker", "black" or "white". Throws Error for other text.
Ground ParseGround(const std::string& text);

/// A part of a picture, and its size on the screen.
struct PreviewView {
    A_long x = 0; ///< left edge of the part; like the next three, in pixels of the picture
    A_long y = 0;
    A_long width = 0;
    A_long height = 0;
    A_long shownWidth = 0;  ///< in screen pixels; at most `width`
    A_long shownHeight = 0; ///< in screen pixels; at most `height`
    Ground ground = Ground::Checker;
};

/// Returns a view of the whole picture, scaled down to fit into a square of `mostPixels` a side.
PreviewView WholeView(const World& world, A_long mostPixels, Ground ground);

/// Returns the part of `world` in `view` as RGB pixels over the view's ground. Each is the mean of
/// the pixels that it covers, or of 16 x 16 samples if it covers more. Throws Error if the view is
/// not within `world` or enlarges it, or if `world` does not have 8 bits per channel.
std::vector<std::uint8_t> PixelsOf(const World& world, const PreviewView& view);

} // namespace Kerovane::Host
