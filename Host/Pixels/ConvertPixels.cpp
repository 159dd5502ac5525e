#include "Host/Pixels/ConvertPixels.h"

#include "Host/Pixels/AlphaForm.h"
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
template <typename Channel>
using Pixel = std::array<Channel, kChannels>;

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
template <typename Channel, bool kUp>
void RotateRow(const std::byte* from, std::byte* to, std::ptrdiff_t width) {
    if constexpr (std::floating_point<Channel>) {
        TransformRow<Pixel<Channel>>(from, to, width, [](Pixel<Channel> pixel) {
            const auto [a, b, c, d] = pixel;
            return kUp ? Pixel<Channel>{d, a, b, c} : Pixel<Channel>{b, c, d, a};
        });
    } else {
        using Whole = std::conditional_t<sizeof(Pixel<Channel>) == 4, std::uint32_t, std::uint64_t>;
        static_assert(sizeof(Pixel<Channel>) == sizeof(Whole));
        constexpr int kChannelBits = std::numeric_limits<Whole>::digits / int{kChannels};
        constexpr bool kUpIsLeft = std::endian::native == std::endian::little;
        constexpr int kLeft = kUp == kUpIsLeft ? kChannelBits : -kChannelBits;
        TransformRow<Whole>(from, to, width, [](Whole pixel) { return std::rotl(pixel, kLeft); });
    }
}

template <typename Channel>
void ReorderRow(const std::byte* from, std::byte* to, std::ptrdiff_t width, ChannelOrder fromOrder,
                ChannelOrder toOrder) {
    if (fromOrder == toOrder) {
        std::memcpy(to, from, static_cast<std::size_t>(width) * sizeof(Pixel<Channel>));
    } else if (toOrder == ChannelOrder::Argb) {
        RotateRow<Channel, true>(from, to, width);
    } else {
        RotateRow<Channel, false>(from, to, width);
    }
}

/// Gives the pixels of a row in `kOrder` the other form of alpha: `kForm`.
template <typename Channel, ChannelOrder kOrder, Alpha kForm>
void ChangeAlpha(std::byte* row, std::ptrdiff_t width) {
    constexpr std::size_t kAlphaAt = kOrder == ChannelOrder::Argb ? 0 : kChannels - 1;
    TransformRow<Pixel<Channel>>(row, row, width, [](Pixel<Channel> pixel) {
        const auto alpha = pixel[kAlphaAt];
        if (std::floating_point<Channel> && alpha == 1) {
            return pixel; // as much of a picture is: spares four divisions
        }
        for (auto& colour : pixel) {
            colour = kForm == Alpha::Straight ? Straightened(colour, alpha)
                                              : Premultiplied(colour, alpha);
        }
        pixel[kAlphaAt] = alpha;
        return pixel;
    });
}

template <typename Channel>
void ChangeAlpha(std::byte* row, std::ptrdiff_t width, ChannelOrder order, Alpha form) {
    constexpr auto kArgb = ChannelOrder::Argb;
    constexpr auto kRgba = ChannelOrder::Rgba;
    if (form == Alpha::Straight) {
        order == kArgb ? ChangeAlpha<Channel, kArgb, Alpha::Straight>(row, width)
                       : ChangeAlpha<Channel, kRgba, Alpha::Straight>(row, width);
    } else {
        order == kArgb ? ChangeAlpha<Channel, kArgb, Alpha::Premultiplied>(row, width)
                       : ChangeAlpha<Channel, kRgba, Alpha::Premultiplied>(row, width);
    }
}

} // namespace

void ConvertPixels(const ConstPixelView& from, const PixelView& to) {
    if (!HaveOneShape(from, to)) {
        throw Error("pixels can't be converted between pictures of different size or depth");
    }
    WithChannelType(from.depth, [&](auto type) {
        using Channel = typename decltype(type)::type;
        for (std::ptrdiff_t y = 0; y < from.height; ++y) {
            ReorderRow<Channel>(from.row(y), to.row(y), from.width, from.order, to.order);
            if (from.alpha != to.alpha) {
                ChangeAlpha<Channel>(to.row(y), to.width, to.order, to.alpha);
            }
        }
    });
}

} // namespace Kerovane::Host
