#pragma once

#include "Software/Sine.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace Kerovane::Software {

/// Returns the fractional part of `value`, from 0 up to but not including 1. `value` must be below
/// 2^22.
inline float Fraction(float value) {
    // Adding and subtracting 1.5 * 2^23 rounds to a whole number, in fewer steps than std::floor.
    constexpr float kRounder = 0x1.8p23F;
    constexpr float kBelowOne =
        0x1.fffffep-1F; // limits the result for tiny negative values, which would round up to 1
    const float rounded = (value + kRounder) - kRounder;
    const float fraction = value - (rounded > value ? rounded - 1 : rounded);
    return std::min(fraction, kBelowOne);
}

/// Gives each position a pseudo-random number, from 0 up to but not including 1, by a hash of its
/// coordinates. The seed shifts all positions by up to 0.07.
class RandomSource {
public:
    RandomSource(float step, std::int32_t seed)
        : mOffset(0.07F * Fraction(std::fmod(step * static_cast<float>(seed), 1.0F))) {}

    float at(float x, float y) const { return hash(Sine(angle(x, y))); }

    /// Returns at() of a near position (see isNear), in a form that lets loops be vectorised.
    float atNear(float x, float y) const { return hash(SineOfNear(angle(x, y))); }

    /// Returns whether all positions from 0, 0 to here are near.
    bool isNear(float x, float y) const { return angle(x, y) < kFarAngle; }

private:
    double angle(float x, float y) const {
        return static_cast<double>((x + mOffset) * 12.9898F + (y + mOffset) * 78.233F);
    }

    static float hash(double sine) { return Fraction(static_cast<float>(sine) * 43758.5453F); }

    float mOffset;
};

} // namespace Kerovane::Software
