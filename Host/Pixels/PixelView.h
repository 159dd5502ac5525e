#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

namespace Kerovane::Host {

/// Bits of a channel.
enum class Depth { Bits8 = 8, Bits16 = 16, Float32 = 32 };

/// Calls `f` with a std::type_identity of the channel type of `depth` (std::uint8_t, std::uint16_t
/// or float) and returns what it returns.
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

/// The order of a pixel's channels in memory: an effect's, or that of most others.
enum class ChannelOrder { Argb, Rgba };

/// Whether the colour of a pixel has been multiplied by its alpha.
enum class Alpha { Straight, Premultiplied };

/**
 * A picture in anybody's memory, which has to outlive the view: `height` rows of `width` pixels of
 * four channels each. The channels are of a layer's types and values, whose white is 255, 32768 or
 * 1.0, at any address. As it stands here a view has an effect's own form.
 */
template <typename Byte>
requires std::same_as<std::remove_const_t<Byte>, std::byte>
struct BasicPixelView {
    Byte* top = nullptr;         ///< the first pixel of the top row
    std::ptrdiff_t rowBytes = 0; ///< from a row to the next one down; negative if that lies before
    std::ptrdiff_t width = 0;
    std::ptrdiff_t height = 0;
    Depth depth = Depth::Bits8;
    ChannelOrder order = ChannelOrder::Argb;
    Alpha alpha = Alpha::Straight;

    Byte* row(std::ptrdiff_t y) const { return top + y * rowBytes; }

    /// A view to read the same pixels through.
    operator BasicPixelView<const std::byte>() const // NOLINT(google-explicit-constructor)
        requires(!std::is_const_v<Byte>) {
        return {top, rowBytes, width, height, depth, order, alpha};
    }
};

using PixelView = BasicPixelView<std::byte>;
using ConstPixelView = BasicPixelView<const std::byte>;

/// Whether the pictures have one size and depth, so that each pixel of one has its place in the
/// other.
inline bool HaveOneShape(const ConstPixelView& one, const ConstPixelView& other) {
    return one.width == other.width && one.height == other.height && one.depth == other.depth;
}

} // namespace Kerovane::Host
