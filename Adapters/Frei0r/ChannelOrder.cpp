#include "Adapters/Frei0r/ChannelOrder.h"

#include <algorithm>
#include <bit>

namespace Kerovane::Frei0r {

namespace {

/// Moves a pixel's bytes one place up in memory, the last to the front. Whole pixels rather than
/// channels: the compiler makes vectors of that.
constexpr std::uint32_t LastToFront(std::uint32_t pixel) {
    constexpr int kByte = 8;
    return std::endian::native == std::endian::little ? std::rotl(pixel, kByte)
                                                      : std::rotr(pixel, kByte);
}

constexpr std::uint32_t FrontToLast(std::uint32_t pixel) {
    constexpr int kThreeBytes = 24;
    return std::endian::native == std::endian::little ? std::rotl(pixel, kThreeBytes)
                                                      : std::rotr(pixel, kThreeBytes);
}

} // namespace

void AlphaFirst(std::span<const std::uint32_t> from, std::span<std::uint32_t> to) {
    std::transform(from.begin(), from.end(), to.begin(), LastToFront);
}

void AlphaLast(std::span<const std::uint32_t> from, std::span<std::uint32_t> to) {
    std::transform(from.begin(), from.end(), to.begin(), FrontToLast);
}

} // namespace Kerovane::Frei0r
