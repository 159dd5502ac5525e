#pragma once

#include "Software/Rgba.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace Kerovane::Software {

/// 16 bytes filled with copies of one pixel.
using PixelBlock = std::uint64_t __attribute__((vector_size(16)));

template <typename Channel>
PixelBlock Repeated(const Pixel<Channel>& pixel) {
    if constexpr (sizeof(Channel) == 1) {
        constexpr std::uint64_t kTwice = 0x1'0000'0001;
        const std::uint64_t both = std::bit_cast<std::uint32_t>(pixel) * kTwice;
        return PixelBlock{both, both};
    } else if constexpr (sizeof(Channel) == 2) {
        const auto whole = std::bit_cast<std::uint64_t>(pixel);
        return PixelBlock{whole, whole};
    } else {
        return std::bit_cast<PixelBlock>(pixel);
    }
}

/**
 * Fills the pixels of a row from `begin` up to, but not including, `end`. May overwrite pixels
 * after `end` within the row's `width`, so fill the runs of a row from left to right. Writes whole
 * blocks, at least one even for an empty run, because a check would cost more.
 */
template <typename Channel>
void FillRun(std::byte* row, std::ptrdiff_t begin, std::ptrdiff_t end, std::ptrdiff_t width,
             const Pixel<Channel>& pixel) {
    constexpr auto kBytes = static_cast<std::ptrdiff_t>(sizeof pixel);
    constexpr std::ptrdiff_t kBlock = 2 * sizeof(PixelBlock) / kBytes;
    if (end + kBlock <= width) {
        const PixelBlock block = Repeated(pixel);
        do {
            std::memcpy(row + begin * kBytes, &block, sizeof block);
            std::memcpy(row + begin * kBytes + sizeof block, &block, sizeof block);
            begin += kBlock;
        } while (begin < end);
    } else {
        for (; begin < end; ++begin) {
            StorePixel(pixel, row + begin * kBytes);
        }
    }
}

} // namespace Kerovane::Software
