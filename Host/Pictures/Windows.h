#pragma once

#include "Host/Session/World.h"

#include <OpenImageIO/imageio.h>

#include <algorithm>
#include <cstddef>

namespace Kerovane::Host {

/// The intersection of two ranges of pixels.
struct Overlap {
    int begin;
    int end;

    Overlap(int start, int size, int otherStart, int otherSize)
        : begin(std::max(start, otherStart)),
          end(std::max(begin, std::min(start + size, otherStart + otherSize))) {}

    std::size_t size() const { return static_cast<std::size_t>(end - begin); }
    std::size_t from(int start) const { return static_cast<std::size_t>(begin - start); }
};

/// Returns whether the data window equals the display window.
bool FillsItsFrame(const OIIO::ImageSpec& layout);

/// Returns whether the data window extends beyond the display window.
bool ReachesBeyondItsFrame(const OIIO::ImageSpec& layout);

/// Returns the display window's pixels, given the data window's in `world`. Missing pixels are
/// transparent, or black if the picture is opaque. Throws Error if the display window exceeds
/// World's limits.
World FrameOf(const World& world, const OIIO::ImageSpec& layout, bool isOpaque);

/// Sets the data window of `layout` to the display window.
void TakeFrame(OIIO::ImageSpec& layout);

/// Extends the data window of `layout` to include the display window.
void CoverFrame(OIIO::ImageSpec& layout);

} // namespace Kerovane::Host
