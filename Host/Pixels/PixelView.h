#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

namespace Kerovane::Host {

/// Bits per channel.
enum class Depth { Bits8 = 8, Bits16 = 16, Float32 = 32 };

/// Calls `f` with a std::type_identity of the channel type of `depth` (std::uint8_t, std::uint16_t
/// or float) and returns the call's result.
template <typename F>
auto WithChannelType(Depth depth, F&& f) {
    switch (depth) {
    case Depth::Bits8:
        return std::forward<F>(f)(std::type_identity<std::uint8_t>());
    case Depth::Bits16:
        return std::forward<F>(f)(std::type_identity<std::uint16_t>());
    default:
        return std::forward<F>(f)(std::type_identity<float>());
    }
}

/// The order of a pixel's channels in memory: Argb as effects have it, Rgba as most libraries do.
enum class ChannelOrder { Argb, Rgba };

/// The form of alpha: colour is multiplied by alpha if it is premultiplied.
enum class Alpha { Straight, Premultiplied };

/**
 * A picture in memory that the view does not own: `height` rows of `width` pixels of four channels
 * each, at any alignment. White is 255, 32768 or 1.0, as in a host's layers. The default members
 * describe the layout of an effect's own layers.
 */
template <typename Byte>
requires std::same_as<std::remove_const_t<Byte>, std::byte>
struct BasicPixelView {
    Byte* top = nullptr;         ///< the first pixel of the top row
    std::ptrdiff_t rowBytes = 0; ///< from a row to the next one down; negative if bottom up
    std::ptrdiff_t width = 0;
    std::ptrdiff_t height = 0;
    Depth depth = Depth::Bits8;
    ChannelOrder order = ChannelOrder::Argb;
    Alpha alpha = Alpha::Straight;

    Byte* row(std::ptrdiff_t y) const { return top + y * rowBytes; }

    /// Converts to a read-only view of the same pixels.
    operator BasicPixelView<const std::byte>() const // NOLINT(google-explicit-constructor)
        requires(!std::is_const_v<Byte>) {
        return {top, rowBytes, width, height, depth, order, alpha};
    }
};

using PixelView = BasicPixelView<std::byte>;
using ConstPixelView = BasicPixelView<const std::byte>;

/// Returns whether two pictures have the same width, height and depth.
inline bool HaveSameShape(const ConstPixelView& one, const ConstPixelView& other) {
    return one.width == other.width && one.height == other.height && one.depth == other.depth;
}

} // namespace Kerovane::Host
