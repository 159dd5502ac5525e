#include "Host/Frames/FiniteFrame.h"

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

namespace Kerovane::Host {

namespace {

using Channels = std::array<float, 4>;

/// Tests the bits of a float instead of calling std::isfinite, so that the compiler vectorizes the
/// loop.
constexpr bool IsFinite(std::uint32_t bits) {
    constexpr std::uint32_t kExponent = 0x7f800000;
    return (bits & kExponent) != kExponent;
}

bool IsFinite(const std::byte* row, std::ptrdiff_t width) {
    bool isFinite = true;
    for (std::ptrdiff_t at = 0; at < width * std::ptrdiff_t{sizeof(Channels)}; at += 4) {
        std::uint32_t bits = 0;
        std::memcpy(&bits, row + at, sizeof bits); // rows may lie at any address
        isFinite = isFinite & IsFinite(bits);
    }
    return isFinite;
}

bool IsFinite(const ConstPixelView& frame) {
    for (std::ptrdiff_t y = 0; y < frame.height; ++y) {
        if (!IsFinite(frame.row(y), frame.width)) {
            return false;
        }
    }
    return true;
}

/// Sets channels that are not finite to 0 and returns the number of pixels changed.
std::size_t Clean(std::byte* row, std::ptrdiff_t width) {
    std::size_t cleaned = 0;
    for (std::ptrdiff_t x = 0; x < width; ++x, row += sizeof(Channels)) {
        Channels pixel;
        std::memcpy(&pixel, row, sizeof pixel);
        bool isFinite = true;
        for (float& channel : pixel) {
            if (!IsFinite(std::bit_cast<std::uint32_t>(channel))) {
                channel = 0;
                isFinite = false;
            }
        }
        if (!isFinite) {
            std::memcpy(row, &pixel, sizeof pixel);
            ++cleaned;
        }
    }
    return cleaned;
}

} // namespace

FiniteFrame::FiniteFrame(const ConstPixelView& frame) : mView(frame) {
    if (frame.depth != Depth::Float32 || IsFinite(frame)) {
        return;
    }
    const std::ptrdiff_t rowBytes = frame.width * std::ptrdiff_t{sizeof(Channels)};
    mCopy.resize(static_cast<std::size_t>(rowBytes * frame.height));
    for (std::ptrdiff_t y = 0; y < frame.height; ++y) {
        std::byte* row = mCopy.data() + y * rowBytes;
        std::memcpy(row, frame.row(y), static_cast<std::size_t>(rowBytes));
        mCleanedPixels += Clean(row, frame.width);
    }
    mView.top = mCopy.data();
    mView.rowBytes = rowBytes;
}

} // namespace Kerovane::Host
