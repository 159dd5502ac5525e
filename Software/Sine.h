#pragma once

#include <cfloat>
#include <cmath>
#include <limits>
#include <numbers>

namespace Kerovane::Software {

static_assert(std::numeric_limits<double>::is_iec559 && FLT_EVAL_METHOD == 0,
              "every operation has to round to its own type");

/// Angles of this size or more, in radians, are "far": Sine accepts them, SineOfNear does not.
constexpr double kFarAngle = 0x1p32;

/**
 * Returns the sine of a near angle in radians, within 1e-13. Uses only operations that IEEE 754
 * rounds alike everywhere, in a fixed order. The result therefore has the same bits on every
 * machine, unlike results of math libraries and drivers. Loops that call it can be vectorised.
 */
inline double SineOfNear(double radians) {
    // Adding and subtracting 1.5 * 2^52 rounds to an integer.
    constexpr double kRounder = 0x1.8p52;
    const double halfTurns = (radians * (1 / std::numbers::pi) + kRounder) - kRounder;
    // 0 if halfTurns is even, else 0.5 or -0.5.
    const double odd = halfTurns * 0.5 - ((halfTurns * 0.5 + kRounder) - kRounder);
    const double sign = 1 - 4 * std::abs(odd);

    // Subtracts pi in three parts. The first two have 22 bits: their products with numbers up to
    // 2^31 are exact.
    const double angle = ((radians - halfTurns * 0x1.921fbp+1) - halfTurns * 0x1.5110bp-21) -
                         halfTurns * 0x1.18469898cc517p-43;

    // Taylor series up to the 17th power; the next term is below 5e-14 at a quarter turn.
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

/// Returns the sine of any angle in radians. First reduces a far angle to less than a turn, taking
/// the double nearest to 2 pi as the turn. The reduction by fmod is exact.
inline double Sine(double radians) {
    const bool isFar = !(std::abs(radians) < kFarAngle);
    return SineOfNear(isFar ? std::fmod(radians, 2 * std::numbers::pi) : radians);
}

/// Returns the cosine of an angle in radians, as the sine of the angle plus a quarter turn. The sum
/// is rounded, so only angles of a few turns give the precision of Sine.
inline double Cosine(double radians) {
    return Sine(radians + std::numbers::pi / 2);
}

} // namespace Kerovane::Software
