#pragma once

#include "Adapters/OpenFX/Span.h"
#include "Host/Pixels/PixelView.h"

#include <cstddef>
#include <optional>

namespace Kerovane::OpenFX {

/// The type of a channel: 8 and 16 bits with white at the largest value, half and single precision.
enum class Channel { Byte, Short, Half, Float };

std::size_t BytesOf(Channel channel);

/// How colour relates to alpha. Opaque pixels count as opaque whatever their alpha holds.
enum class Coverage { Opaque, Straight, Premultiplied };

/** Pixels in the host's memory. Rows count from the top down. */
struct HostPixels {
    std::byte* top = nullptr;    ///< the first pixel of the top row
    std::ptrdiff_t rowBytes = 0; ///< from one row to the next one below
    Span columns;                ///< in pixels at the image's own scale
    Span rows; ///< in the same pixels, counted downwards: -y2 to -y1 of the bounds
    Channel channel = Channel::Byte;
    int channels = 4; ///< red, green, blue and, if there are 4, alpha
    Coverage coverage = Coverage::Premultiplied;

    std::size_t pixelBytes() const { return BytesOf(channel) * static_cast<std::size_t>(channels); }

    /// Returns the part at `columns` and `rows`, which must lie within the image.
    HostPixels within(const Span& columns, const Span& rows) const;

    /// Returns a view for the renderer; nothing if a conversion is needed. Renderers support bytes
    /// and floats with straight or premultiplied alpha.
    std::optional<Host::PixelView> view() const;
};

} // namespace Kerovane::OpenFX
