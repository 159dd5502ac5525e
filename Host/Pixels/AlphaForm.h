#pragma once

#include <algorithm>
#include <concepts>
#include <cstdint>
#include <type_traits>

namespace Kerovane::Host {

/// A channel's white. Those of whole numbers are kept within it.
template <typename Channel>
constexpr std::uint32_t kWhite = 1;
template <>
inline constexpr std::uint32_t kWhite<std::uint8_t> = 255;
template <>
inline constexpr std::uint32_t kWhite<std::uint16_t> = 32768;

/// A colour times its alpha, rounded to the nearest.
template <typename Channel>
constexpr Channel Premultiplied(Channel colour, Channel alpha) {
    if constexpr (std::floating_point<Channel>) {
        return colour * alpha;
    } else {
        constexpr std::uint32_t kHalf = kWhite<Channel> / 2;
        const std::uint32_t product = std::uint32_t{colour} * alpha + kHalf;
        return static_cast<Channel>(std::min(product / kWhite<Channel>, kWhite<Channel>));
    }
}

/// A colour divided by its alpha, rounded to the nearest; the colour itself if there is no alpha.
/// Divides whole numbers as floating-point ones, which is faster. The type's digits hold the
/// dividend, so what lies below the next whole number stays below it.
template <typename Channel>
constexpr Channel Straightened(Channel colour, Channel alpha) {
    if constexpr (std::floating_point<Channel>) {
        return alpha == 0 ? colour : colour / alpha;
    } else {
        using Quotient = std::conditional_t<sizeof(Channel) == 1, float, double>;
        const std::uint32_t dividend = std::uint32_t{colour} * kWhite<Channel> + alpha / 2U;
        const auto quotient = static_cast<Quotient>(dividend) / static_cast<Quotient>(alpha);
        return alpha == 0 ? colour
                          : static_cast<Channel>(std::min(quotient, Quotient{kWhite<Channel>}));
    }
}

} // namespace Kerovane::Host
