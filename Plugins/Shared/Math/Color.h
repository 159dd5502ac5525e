#pragma once

#include "Plugins/Shared/Math/Float.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <type_traits>

namespace Kerovane::Tesselune {

/**
 * A colour: red, green, blue and alpha, each normally 0 to 1. A colour with any channel below 0 is
 * nil: it stands for "no colour". No operation clamps unless it says so.
 */
class Color {
public:
    double mR = 1.0;
    double mG = 1.0;
    double mB = 1.0;
    double mA = 1.0;

    // Construction and assignment

    /// Makes opaque white.
    constexpr Color() noexcept = default;
    constexpr Color(double r, double g, double b, double a) noexcept;

    /**
     * Reads "#RGB", "#ARGB", "#RRGGBB" or "#AARRGGBB"; alpha defaults to 1. A text without a
     * leading "#", or with another number of characters, gives opaque white.
     *
     * @throws std::invalid_argument if no hexadecimal digit follows the "#", std::out_of_range if
     * the number takes more than 64 bits.
     */
    explicit Color(const std::string& text);

    /// Unpacks 8-bit channels: alpha, red, green, blue from the highest byte to the lowest.
    explicit constexpr Color(unsigned int argb) noexcept : Color(unpacked(argb, 8)) {}

    constexpr void set(double r, double g, double b, double a) noexcept;
    constexpr void setNil() noexcept { set(-1.0, -1.0, -1.0, -1.0); }

    // Channels

    constexpr double r() const noexcept { return mR; }
    constexpr double g() const noexcept { return mG; }
    constexpr double b() const noexcept { return mB; }
    constexpr double a() const noexcept { return mA; }

    // Comparison

    constexpr bool isNil() const noexcept;
    /// Returns whether both are nil, or each channel differs by at most 1e-12, inclusive.
    constexpr bool equal(const Color& other) const noexcept;
    constexpr bool operator==(const Color& other) const noexcept { return equal(other); }

    // Arithmetic, channel by channel, alpha included

    constexpr Color operator+(const Color& other) const noexcept;
    constexpr Color operator-(const Color& other) const noexcept;
    constexpr Color operator*(const Color& other) const noexcept;
    constexpr Color operator*(double factor) const noexcept;

    /// Interpolates from a (t = 0) to b (t = 1); t is clamped to 0 to 1. The weight of a is in
    /// single precision.
    [[nodiscard]] static constexpr Color lerp(const Color& a, const Color& b, double t) noexcept;

    // Text

    /**
     * Returns "#" and the channels in upper-case hexadecimal: red, green, blue, preceded by alpha
     * unless it is 1. Each channel is clamped to 0 to 1, scaled to 255, truncated, and written
     * without leading zeros, so the text may not read back as the same colour.
     */
    std::string toHexString() const;

private:
    /// Unpacks channels of the given number of bits: alpha, red, green, blue from high to low.
    static constexpr Color unpacked(std::uint64_t argb, unsigned int bitsPerChannel) noexcept;
};

static_assert(std::is_trivially_copyable_v<Color> && std::is_standard_layout_v<Color>);
static_assert(sizeof(Color) == 4 * sizeof(double));

constexpr Color::Color(double r, double g, double b, double a) noexcept
    : mR(r), mG(g), mB(b), mA(a) {}

constexpr Color Color::unpacked(std::uint64_t argb, unsigned int bitsPerChannel) noexcept {
    const std::uint64_t full = (1U << bitsPerChannel) - 1U;
    // Single precision, so that the byte 0x80 gives 0.501960813999176, not the double nearest to
    // 128 / 255.
    const auto channel = [=](unsigned int position) {
        const std::uint64_t bits = argb >> (position * bitsPerChannel) & full;
        return static_cast<float>(bits) / static_cast<float>(full);
    };
    return {channel(2), channel(1), channel(0), channel(3)};
}

constexpr void Color::set(double r, double g, double b, double a) noexcept {
    *this = Color(r, g, b, a);
}

constexpr bool Color::isNil() const noexcept {
    return mR < 0.0 || mG < 0.0 || mB < 0.0 || mA < 0.0;
}

constexpr bool Color::equal(const Color& other) const noexcept {
    if (isNil() && other.isNil()) {
        return true;
    }
    return Float::fuzzyEqual(mR, other.mR) && Float::fuzzyEqual(mG, other.mG) &&
           Float::fuzzyEqual(mB, other.mB) && Float::fuzzyEqual(mA, other.mA);
}

constexpr Color Color::operator+(const Color& other) const noexcept {
    return {mR + other.mR, mG + other.mG, mB + other.mB, mA + other.mA};
}

constexpr Color Color::operator-(const Color& other) const noexcept {
    return {mR - other.mR, mG - other.mG, mB - other.mB, mA - other.mA};
}

constexpr Color Color::operator*(const Color& other) const noexcept {
    return {mR * other.mR, mG * other.mG, mB * other.mB, mA * other.mA};
}

constexpr Color Color::operator*(double factor) const noexcept {
    return *this * Color(factor, factor, factor, factor);
}

constexpr Color Color::lerp(const Color& a, const Color& b, double t) noexcept {
    const double weightB = std::clamp(t, 0.0, 1.0);
    const double weightA = static_cast<float>(1.0 - weightB);
    return b * weightB + a * weightA;
}

} // namespace Kerovane::Tesselune
