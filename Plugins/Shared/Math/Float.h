#pragma once

namespace Kerovane::Tesselune {

/** The number comparison used by every `==` that compares component by component. */
namespace Float {

inline constexpr double epsilon = 1e-12;

/// Returns whether |a - b| <= tolerance, inclusive. False if a or b is NaN.
constexpr bool fuzzyEqual(double a, double b, double tolerance = epsilon) noexcept {
    const double difference = a - b;
    return -tolerance <= difference && difference <= tolerance;
}

} // namespace Float

/**
 * Returns the shortest signed step from b to a on a circle of the given period. |a - b| must be
 * below 1.5 periods. A difference of exactly half a period keeps its sign.
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
