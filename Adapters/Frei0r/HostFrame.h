#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace Kerovane::Frei0r {

/**
 * A frame, or a slice of one, in the host's memory: RGBA with straight alpha, a byte a channel, the
 * first row on top, each row right behind the one before.
 */
struct HostFrame {
    std::size_t width = 0;
    std::size_t height = 0;
    const std::uint32_t* in = nullptr;
    std::uint32_t* out = nullptr;

    std::span<const std::uint32_t> input() const { return {in, width * height}; }
    std::span<std::uint32_t> output() const { return {out, width * height}; }
};

/// Copies the input to the output, as it is.
inline void PassThrough(const HostFrame& frame) {
    std::memmove(frame.out, frame.in, frame.output().size_bytes());
}

} // namespace Kerovane::Frei0r
