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

/// Applies `change` to each pixel of a row, read and written as one `Value`. Views may lie at any
/// address, so pixels are copied with memcpy, which compiles to plain or vector loads and stores.
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

/// Rotates the channels by one place: up moves the last channel to the front, down moves the first
/// to the end.
template <bool kUp, typename Channel>
Four<Channel> Rotated(Four<Channel> pixel) {
    return kUp ? __builtin_shufflevector(pixel, pixel, 3, 0, 1, 2)
               : __builtin_shufflevector(pixel, pixel, 1, 2, 3, 0);
}

/// Rotates the channels of a row's pixels. Integer pixels are rotated as one 32-bit or 64-bit word
/// each, because the compiler then vectorizes the loop.
template <typename Channel, bool kUp>
void RotateRow(const std::byte* from, std::byte* to, std::ptrdiff_t width) {
    if constexpr (std::floating_point<Channel>) {
        TransformRow<Four<Channel>>(from, to, width, Rotated<kUp, Channel>);
    } else {
        using Whole = std::conditional_t<sizeof(Channel) == 1, std::uint32_t, std::uint64_t>;
        constexpr int kChannelBits = std::numeric_limits<Channel>::digits;
        constexpr bool kUpIsLeft = std::endian::native == std::endian::little;
        constexpr int kLeft = kUp == kUpIsLeft ? kChannelBits : -kChannelBits;
        TransformRow<Whole>(from, to, width, [](Whole pixel) { return std::rotl(pixel, kLeft); });
    }
}

template <typename Channel>
void ReorderRow(const std::byte* from, std::byte* to, std::ptrdiff_t width, ChannelOrder fromOrder,
                ChannelOrder toOrder) {
    if (fromOrder == toOrder) {
        std::memcpy(to, from, static_cast<std::size_t>(width) * sizeof(Four<Channel>));
    } else if (toOrder == ChannelOrder::Argb) {
        RotateRow<Channel, true>(from, to, width);
    } else {
        RotateRow<Channel, false>(from, to, width);
    }
}

/// Converts pixels of channel order `kFrom` to the form of alpha `kForm` and to `toOrder` in a
/// single pass. For floats the pass costs about as much as a copy.
template <typename Channel, Alpha kForm, ChannelOrder kFrom>
void ChangeAlpha(const std::byte* from, std::byte* to, std::ptrdiff_t width, ChannelOrder toOrder) {
    constexpr bool kUp = kFrom == ChannelOrder::Rgba;
    TransformRow<Four<Channel>>(from, to, width, [=](Four<Channel> pixel) {
        pixel = InForm<kForm, Channel>(pixel, kFrom);
        return toOrder == kFrom ? pixel : Rotated<kUp, Channel>(pixel);
    });
}

template <typename Channel, Alpha kForm>
void ChangeAlpha(const std::byte* from, std::byte* to, std::ptrdiff_t width, ChannelOrder fromOrder,
                 ChannelOrder toOrder) {
    fromOrder == ChannelOrder::Argb
        ? ChangeAlpha<Channel, kForm, ChannelOrder::Argb>(from, to, width, toOrder)
        : ChangeAlpha<Channel, kForm, ChannelOrder::Rgba>(from, to, width, toOrder);
}

template <typename Channel>
void ConvertRow(const ConstPixelView& from, const PixelView& to, std::ptrdiff_t y) {
    if (from.alpha == to.alpha) {
        ReorderRow<Channel>(from.row(y), to.row(y), to.width, from.order, to.order);
    } else if (to.alpha == Alpha::Straight) {
        ChangeAlpha<Channel, Alpha::Straight>(from.row(y), to.row(y), to.width, from.order,
                                              to.order);
    } else {
        ChangeAlpha<Channel, Alpha::Premultiplied>(from.row(y), to.row(y), to.width, from.order,
                                                   to.order);
    }
}

} // namespace

void ConvertPixels(const ConstPixelView& from, const PixelView& to) {
    if (!HaveSameShape(from, to)) {
        throw Error("pixels can't be converted between pictures of different size or depth");
    }
    WithChannelType(from.depth, [&](auto type) {
        for (std::ptrdiff_t y = 0; y < from.height; ++y) {
            ConvertRow<typename decltype(type)::type>(from, to, y);
        }
    });
}

} // namespace Kerovane::Host
