#pragma once

namespace Kerovane::Tesselune {

/** The comparison of numbers behind every `==` that compares component by component. */
namespace Float {

inline constexpr double epsilon = 1e-12;

/// Whether |a - b| <= tolerance, inclusive. False if a or b is NaN.
constexpr bool fuzzyEqual(double a, double b, double tolerance = epsilon) noexcept {
    const double difference = a - b;
    return -tolerance <= difference && difference <= tolerance;
}

} // namespace Float

/**
 * The shortest signed step from b to a on a circle of the given period, for a and b less than one
 * period and a half apart. A difference of exactly half a period keeps its sign.
 */
constexpr double cyclicDifference(double a, double b, double period) noexcept {
    const double difference = a - b;
    if (difference > 0.5 * period) {
        return difference - period;
    }
    if (-(0.5 * period) > difference) {
        return difference + period;
    }
    return difference;
}

} // namespace Kerovane::Tesselune
