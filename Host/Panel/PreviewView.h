#pragma once

#include "Host/Session/World.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Kerovane::Host {

/// What lies behind holes.
enum class Ground { Checker, Black, White };

/// Throws Error if `text` is none of "checker", "black" and "white".
Ground ParseGround(const std::string& text);

/// A part of a picture, and how large it is shown.
struct PreviewView {
    A_long x = 0; ///< pixels of the picture
    A_long y = 0;
    A_long width = 0;
    A_long height = 0;
    A_long shownWidth = 0; ///< pixels of the screen; at most the part's own
    A_long shownHeight = 0;
    Ground ground = Ground::Checker;
};

/// The whole picture, within a square of so many pixels.
PreviewView WholeView(const World& world, A_long mostPixels, Ground ground);

/// The part of `world`, which has 8 bits, over its ground: RGB, pixel by pixel, each the mean of
/// those that it stands for. Throws Error if the view is none.
std::vector<std::uint8_t> PixelsOf(const World& world, const PreviewView& view);

} // namespace Kerovane::Host
