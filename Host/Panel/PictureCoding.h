#pragma once

#include "Host/Pictures/Picture.h"
#include "Host/Pictures/PictureSettings.h"

#include <string>

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

/// A copy with 8 bits a channel.
World In8Bits(const World& world);

/// The part as a JPEG, over its ground. Throws Error if the view is none.
std::string EncodePreview(const World& world, const PreviewView& view);

/// The PNG of 8 bits that the command writes of `world`, which was made of `source`.
std::string EncodeStill(World world, const Picture& source, PictureSettings settings);

} // namespace Kerovane::Host
