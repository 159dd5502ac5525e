#pragma once

#include <cfloat>
#include <cmath>
#include <limits>
#include <numbers>

namespace Kerovane::Software {

static_assert(std::numeric_limits<double>::is_iec559 && FLT_EVAL_METHOD == 0,
              "every operation has to round to its own type");

/// From here on angles are far: Sine knows them, and SineOfNear does not.
constexpr double kFarAngle = 0x1p32;

/**
 * The sine of an angle in radians, within 1e-13. Built from operations that IEEE 754 rounds alike
 * everywhere, in a fixed order, so that it has the same bits on every machine; a math library's or
 * a driver's has not. Loops over it become vectors.
 */
inline double SineOfNear(double radians) {
    // Adding and subtracting 1.5 * 2^52 rounds to a whole number.
    constexpr double kRounder = 0x1.8p52;
    const double halfTurns = (radians * (1 / std::numbers::pi) + kRounder) - kRounder;
    const double odd = halfTurns * 0.5 - ((halfTurns * 0.5 + kRounder) - kRounder); // 0, or +-0.5
    const double sign = 1 - 4 * std::abs(odd);

    // Pi in three parts, the first two of 22 bits: their products with up to 2^31 are exact.
    const double angle = ((radians - halfTurns * 0x1.921fbp+1) - halfTurns * 0x1.5110bp-21) -
                         halfTurns * 0x1.18469898cc517p-43;

    // Taylor's series up to the 17th power; the next term is below 5e-14 at a quarter of a turn.
    const double square = angle * angle;
    double series = 1.0 / 355687428096000;
    series = series * square - 1.0 / 1307674368000;
    series = series * square + 1.0 / 6227020800;
    series = series * square - 1.0 / 39916800;
    series = series * square + 1.0 / 362880;
    series = series * square - 1.0 / 5040;
    series = series * square + 1.0 / 120;
    series = series * square - 1.0 / 6;
    return sign * (angle + angle * square * series);
}

/// The same of any angle. A far one is reduced by the double nearest to 2 pi first.
inline double Sine(double radians) {
    const bool isFar = !(std::abs(radians) < kFarAngle);
    return SineOfNear(isFar ? std::fmod(radians, 2 * std::numbers::pi) : radians); // fmod is exact
}

/// As Sine. For angles of some turns: it adds a quarter of one.
inline double Cosine(double radians) {
    return Sine(radians + std::numbers::pi / 2);
}

} // namespace Kerovane::Software
