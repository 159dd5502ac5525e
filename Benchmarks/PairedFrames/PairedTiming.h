#pragma once

#include <functional>
#include <string>
#include <vector>

namespace Kerovane::Benchmarks {

/// One of the sides, the kinds of frame that are compared. `prepare` runs before each `frame` and
/// is not timed.
struct Side {
    std::string name;
    std::function<void()> prepare;
    std::function<void()> frame;
};

/// The times of one side, one for each round, in milliseconds.
struct Times {
    std::vector<double> wall;
    std::vector<double> cpu; ///< processor time of all threads, including the rasteriser's
};

/// A median with its bounds at 99 % confidence. The bounds of a sample of fewer than 8 values are
/// its smallest and largest.
struct Estimate {
    double median = 0;
    double low = 0;
    double high = 0;
};

/**
 * Runs all sides in turn, `rounds` times after two rounds that do not count. Each round begins with
 * another side, so that other load on the machine affects all sides alike. Returns the times by
 * side.
 */
std::vector<Times> TimeInTurn(const std::vector<Side>& sides, int rounds);

/// Estimates the median of a sample, which must not be empty, of any distribution.
Estimate EstimateMedian(std::vector<double> sample);

/// Estimates the median of each round's numerator / denominator.
Estimate EstimateRatio(const std::vector<double>& numerators,
                       const std::vector<double>& denominators);

} // namespace Kerovane::Benchmarks
