#pragma once

#include "Adapters/OpenFX/Span.h"
#include "Host/Pixels/PixelView.h"

#include <cstddef>
#include <optional>

namespace Kerovane::OpenFX {

/// Type of a channel: 8 and 16 bits with all bits white, half and single precision.
enum class Channel { Byte, Short, Half, Float };

std::size_t BytesOf(Channel channel);

/// How the colour of pixels relates to their alpha. Opaque pixels count as such whatever their
/// alpha holds.
enum class Coverage { Opaque, Straight, Premultiplied };

/** Pixels in the host's memory, the rows turned to run top down. */
struct HostPixels {
    std::byte* top = nullptr;    ///< the first pixel of the top row
    std::ptrdiff_t rowBytes = 0; ///< from a row to the next one down
    Span columns;                ///< in pixels of the image's own scale
    Span rows;                   ///< the same, downwards: -y
    Channel channel = Channel::Byte;
    int channels = 4; ///< red, green, blue and, if there are 4, alpha
    Coverage coverage = Coverage::Premultiplied;

    std::size_t pixelBytes() const { return BytesOf(channel) * static_cast<std::size_t>(channels); }

    /// Those of `columns` and `rows`, which lie within.
    HostPixels within(const Span& columns, const Span& rows) const;

    /// Nothing if renderers can't take the pixels as they stand: they know bytes and floats, with
    /// an alpha that counts.
    std::optional<Host::PixelView> view() const;
};

} // namespace Kerovane::OpenFX
