#pragma once

#include "Host/Session/World.h"

#include <OpenImageIO/imageio.h>

#include <algorithm>
#include <cstddef>

namespace Kerovane::Host {

/// What two spans of pixels have in common.
struct Overlap {
    int begin;
    int end;

    Overlap(int start, int size, int otherStart, int otherSize)
        : begin(std::max(start, otherStart)),
          end(std::max(begin, std::min(start + size, otherStart + otherSize))) {}

    std::size_t size() const { return static_cast<std::size_t>(end - begin); }
    std::size_t from(int start) const { return static_cast<std::size_t>(begin - start); }
};

/// Whether the picture's pixels, its data window, are those of its frame, the display window.
bool FillsItsFrame(const OIIO::ImageSpec& layout);

/// Whether there are pixels outside of the frame.
bool ReachesBeyondItsFrame(const OIIO::ImageSpec& layout);

/// The frame of which `world` has the data window; what that lacks is transparent, or black if the
/// picture is opaque. Throws Error if the frame is larger than worlds can be.
World FrameOf(const World& world, const OIIO::ImageSpec& layout, bool isOpaque);

/// Has `layout` describe the frame.
void TakeFrame(OIIO::ImageSpec& layout);

/// Has `layout` describe the frame and what there are of pixels outside of it.
void CoverFrame(OIIO::ImageSpec& layout);

} // namespace Kerovane::Host
