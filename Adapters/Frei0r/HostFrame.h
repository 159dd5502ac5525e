#pragma once

#include "Host/Frames/WorldView.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace Kerovane::Frei0r {

/**
 * A frame or a slice of one in the host's memory: RGBA with straight alpha, 8 bits a channel, top
 * row first, rows without padding.
 */
struct HostFrame {
    std::size_t width = 0;
    std::size_t height = 0;
    const std::uint32_t* in = nullptr;
    std::uint32_t* out = nullptr;

    std::size_t pixels() const { return width * height; }

    Host::ConstPixelView input() const { return viewAt(reinterpret_cast<const std::byte*>(in)); }
    Host::PixelView output() const { return viewAt(reinterpret_cast<std::byte*>(out)); }

private:
    template <typename Byte>
    Host::BasicPixelView<Byte> viewAt(Byte* top) const {
        return {.top = top,
                .rowBytes = static_cast<std::ptrdiff_t>(width * sizeof *in),
                .width = static_cast<std::ptrdiff_t>(width),
                .height = static_cast<std::ptrdiff_t>(height),
                .depth = Host::Depth::Bits8,
                .order = Host::ChannelOrder::Rgba};
    }
};

/// Copies the input to the output unchanged.
inline void PassThrough(const HostFrame& frame) {
    std::memmove(frame.out, frame.in, frame.pixels() * sizeof *frame.in);
}

} // namespace Kerovane::Frei0r
