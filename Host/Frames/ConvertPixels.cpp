#include "Host/Frames/ConvertPixels.h"

#include "Host/Text/Error.h"

#include <algorithm>
#include <array>
#include <bit>
#include <concepts>
#include <cstdint>
#include <cstring>
#include <limits>

namespace Kerovane::Host {

namespace {

constexpr std::size_t kChannels = 4;

/// A pixel's channels in the order of memory.
template <typename Pixel>
using Channels = std::array<decltype(Pixel::alpha), kChannels>;

/// Applies `change` to each of a row's pixels, taken as a `Value` in one piece. Views lie at any
/// address, and the compiler makes plain loads and stores, or vectors, of the copies.
template <typename Value, typename Change>
void TransformRow(const std::byte* from, std::byte* to, std::ptrdiff_t width, Change change) {
    for (std::ptrdiff_t x = 0; x < width; ++x) {
        const auto offset = x * static_cast<std::ptrdiff_t>(sizeof(Value));
        Value value;
        std::memcpy(&value, from + offset, sizeof value);
        value = change(value);
        std::memcpy(to + offset, &value, sizeof value);
    }
}

/// Moves the channels of a row's pixels one place up in memory and the last to the front, or one
/// place down and the first to the end. Pixels of 32 or 64 bits are rotated whole, which the
/// compiler makes vectors of.
template <typename Pixel, bool kUp>
void RotateRow(const std::byte* from, std::byte* to, std::ptrdiff_t width) {
    if constexpr (std::floating_point<decltype(Pixel::alpha)>) {
        TransformRow<Channels<Pixel>>(from, to, width, [](Channels<Pixel> pixel) {
            const auto [a, b, c, d] = pixel;
            return kUp ? Channels<Pixel>{d, a, b, c} : Channels<Pixel>{b, c, d, a};
        });
    } else {
        using Whole = std::conditional_t<sizeof(Pixel) == 4, std::uint32_t, std::uint64_t>;
        static_assert(sizeof(Pixel) == sizeof(Whole));
        constexpr int kChannelBits = std::numeric_limits<Whole>::digits / int{kChannels};
        constexpr bool kUpIsLeft = std::endian::native == std::endian::little;
        constexpr int kLeft = kUp == kUpIsLeft ? kChannelBits : -kChannelBits;
        TransformRow<Whole>(from, to, width, [](Whole pixel) { return std::rotl(pixel, kLeft); });
    }
}

template <typename Pixel>
void ReorderRow(const std::byte* from, std::byte* to, std::ptrdiff_t width, ChannelOrder fromOrder,
                ChannelOrder toOrder) {
    if (fromOrder == toOrder) {
        std::memcpy(to, from, static_cast<std::size_t>(width) * sizeof(Pixel));
    } else if (toOrder == ChannelOrder::Argb) {
        RotateRow<Pixel, true>(from, to, width);
    } else {
        RotateRow<Pixel, false>(from, to, width);
    }
}

template <typename Pixel>
constexpr std::uint32_t kWhite = 0;
template <>
constexpr std::uint32_t kWhite<PF_Pixel8> = 255;
template <>
constexpr std::uint32_t kWhite<PF_Pixel16> = 32768;

template <typename Pixel, typename Channel = decltype(Pixel::alpha)>
Channel Premultiplied(Channel colour, Channel alpha) {
    if constexpr (std::floating_point<Channel>) {
        return colour * alpha;
    } else {
        constexpr std::uint32_t kHalf = kWhite<Pixel> / 2;
        const std::uint32_t product = std::uint32_t{colour} * alpha + kHalf;
        return static_cast<Channel>(std::min(product / kWhite<Pixel>, kWhite<Pixel>));
    }
}

/// Divides whole numbers as floating-point ones, which is faster. The type's digits hold the
/// dividend, so what lies below the next whole number stays below it.
template <typename Pixel, typename Channel = decltype(Pixel::alpha)>
Channel Straightened(Channel colour, Channel alpha) {
    if constexpr (std::floating_point<Channel>) {
        return alpha == 0 ? colour : colour / alpha;
    } else {
        using Quotient = std::conditional_t<sizeof(Channel) == 1, float, double>;
        const std::uint32_t dividend = std::uint32_t{colour} * kWhite<Pixel> + alpha / 2U;
        const auto quotient = static_cast<Quotient>(dividend) / static_cast<Quotient>(alpha);
        return alpha == 0 ? colour
                          : static_cast<Channel>(std::min(quotient, Quotient{kWhite<Pixel>}));
    }
}

/// Gives the pixels of a row in `kOrder` the other form of alpha: `kForm`.
template <typename Pixel, ChannelOrder kOrder, Alpha kForm>
void ChangeAlpha(std::byte* row, std::ptrdiff_t width) {
    constexpr std::size_t kAlphaAt = kOrder == ChannelOrder::Argb ? 0 : kChannels - 1;
    TransformRow<Channels<Pixel>>(row, row, width, [](Channels<Pixel> pixel) {
        const auto alpha = pixel[kAlphaAt];
        for (auto& colour : pixel) {
            colour = kForm == Alpha::Straight ? Straightened<Pixel>(colour, alpha)
                                              : Premultiplied<Pixel>(colour, alpha);
        }
        pixel[kAlphaAt] = alpha;
        return pixel;
    });
}

template <typename Pixel>
void ChangeAlpha(std::byte* row, std::ptrdiff_t width, ChannelOrder order, Alpha form) {
    constexpr auto kArgb = ChannelOrder::Argb;
    constexpr auto kRgba = ChannelOrder::Rgba;
    if (form == Alpha::Straight) {
        order == kArgb ? ChangeAlpha<Pixel, kArgb, Alpha::Straight>(row, width)
                       : ChangeAlpha<Pixel, kRgba, Alpha::Straight>(row, width);
    } else {
        order == kArgb ? ChangeAlpha<Pixel, kArgb, Alpha::Premultiplied>(row, width)
                       : ChangeAlpha<Pixel, kRgba, Alpha::Premultiplied>(row, width);
    }
}

} // namespace

void ConvertPixels(const ConstPixelView& from, const PixelView& to) {
    if (!HaveOneShape(from, to)) {
        throw Error("pixels can't be converted between pictures of different size or depth");
    }
    withPixelType(from.depth, [&](auto type) {
        using Pixel = typename decltype(type)::type;
        for (std::ptrdiff_t y = 0; y < from.height; ++y) {
            ReorderRow<Pixel>(from.row(y), to.row(y), from.width, from.order, to.order);
            if (from.alpha != to.alpha) {
                ChangeAlpha<Pixel>(to.row(y), to.width, to.order, to.alpha);
            }
        }
    });
}

} // namespace Kerovane::Host
