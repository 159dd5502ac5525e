#pragma once

#include "Software/Sine.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace Kerovane::Software {

/// The part of `value` behind the point, from 0 up to but not including 1. Of values below 2^22.
inline float Fraction(float value) {
    // Adding and subtracting 1.5 * 2^23 rounds to a whole number, in fewer steps than std::floor.
    constexpr float kRounder = 0x1.8p23F;
    constexpr float kBelowOne = 0x1.fffffep-1F; // to which a tiny negative value would round up
    const float rounded = (value + kRounder) - kRounder;
    const float fraction = value - (rounded > value ? rounded - 1 : rounded);
    return std::min(fraction, kBelowOne);
}

/// Gives each place a number from 0 up to 1 that looks random, by a hash of its coordinates. The
/// seed moves all places by up to 0.07.
class RandomSource {
public:
    RandomSource(float step, std::int32_t seed)
        : mOffset(0.07F * Fraction(std::fmod(step * static_cast<float>(seed), 1.0F))) {}

    float at(float x, float y) const { return hash(Sine(angle(x, y))); }

    /// The same of places that are near, which loops are made of vectors for.
    float atNear(float x, float y) const { return hash(SineOfNear(angle(x, y))); }

    /// Whether all places from 0, 0 to here are near.
    bool isNear(float x, float y) const { return angle(x, y) < kFarAngle; }

private:
    double angle(float x, float y) const {
        return static_cast<double>((x + mOffset) * 12.9898F + (y + mOffset) * 78.233F);
    }

    static float hash(double sine) { return Fraction(static_cast<float>(sine) * 43758.5453F); }

    float mOffset;
};

} // namespace Kerovane::Software
