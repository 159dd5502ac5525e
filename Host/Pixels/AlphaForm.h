#pragma once

#include "Host/Pixels/PixelView.h"

#include <concepts>
#include <cstdint>
#include <type_traits>

namespace Kerovane::Host {

/// A channel's value for white, which is also the upper limit of integer channels.
template <typename Channel>
constexpr std::uint32_t kWhite = 1;
template <>
inline constexpr std::uint32_t kWhite<std::uint8_t> = 255;
template <>
inline constexpr std::uint32_t kWhite<std::uint16_t> = 32768;

/// A vector of four numbers: a pixel's channels in memory order.
template <typename Number>
struct FourOf {
    using Type __attribute__((vector_size(4 * sizeof(Number)))) = Number;
};
template <typename Number>
using Four = typename FourOf<Number>::Type;

/// Returns each channel times its factor divided by its divisor, rounded to nearest and limited to
/// white. Divides in floating point, which is faster than integer division and just as exact: the
/// dividend is represented exactly, so a quotient below a whole number is never rounded up to it.
template <typename Channel>
Four<Channel> Scaled(Four<Channel> pixel, Four<Channel> factors, Four<Channel> divisors) {
    using Number = std::conditional_t<sizeof(Channel) == 2, double, float>;
    using Whole = Four<std::int32_t>;
    constexpr auto kMost = Number{kWhite<Channel>};
    const auto values =
        __builtin_convertvector(__builtin_convertvector(pixel, Whole), Four<Number>);
    const auto factor =
        __builtin_convertvector(__builtin_convertvector(factors, Whole), Four<Number>);
    const auto divisor =
        __builtin_convertvector(__builtin_convertvector(divisors, Whole), Four<Number>);
    const Four<Number> quotient = (values * factor + divisor / 2) / divisor;
    const Four<Number> kept = quotient < kMost ? quotient : Four<Number>{} + kMost;
    return __builtin_convertvector(__builtin_convertvector(kept, Whole), Four<Channel>);
}

/// Returns the pixel, whose channels are in `order`, with its colour multiplied by alpha (`kForm`
/// Premultiplied) or divided by it (Straight). An alpha of 0 leaves the colour as it is when
/// dividing.
template <Alpha kForm, typename Channel>
Four<Channel> InForm(Four<Channel> pixel, ChannelOrder order) {
    constexpr Channel kOne = kWhite<Channel>;
    const bool isFirst = order == ChannelOrder::Argb;
    const Channel alpha = isFirst ? pixel[0] : pixel[3];
    if (alpha == kOne || (kForm == Alpha::Straight && alpha == 0)) {
        return pixel;
    }
    const Four<Channel> white{kOne, kOne, kOne, kOne};
    const auto weights = isFirst ? Four<Channel>{kOne, alpha, alpha, alpha}
                                 : Four<Channel>{alpha, alpha, alpha, kOne};
    if constexpr (std::floating_point<Channel>) {
        return kForm == Alpha::Straight ? pixel / weights : pixel * weights;
    } else {
        return kForm == Alpha::Straight ? Scaled<Channel>(pixel, white, weights)
                                        : Scaled<Channel>(pixel, weights, white);
    }
}

} // namespace Kerovane::Host
