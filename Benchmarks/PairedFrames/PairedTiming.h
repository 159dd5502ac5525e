#pragma once

#include <functional>
#include <string>
#include <vector>

namespace Kerovane::Benchmarks {

/// One of the things that are compared. `prepare` is run before each `frame` and not timed.
struct Side {
    std::string name;
    std::function<void()> prepare;
    std::function<void()> frame;
};

/// The times of one side, one for each round, in milliseconds.
struct Times {
    std::vector<double> wall;
    std::vector<double> cpu; ///< of the whole process, the rasteriser's threads among it
};

/// A median with the bounds between which the true one lies at a confidence of 99 %; of a sample of
/// fewer than 8 values, its smallest and largest.
struct Estimate {
    double median = 0;
    double low = 0;
    double high = 0;
};

/**
 * Runs all sides in turn, `rounds` times after two rounds that don't count. Every round begins with
 * another side, so that what happens to the machine meanwhile happens to all. By side.
 */
std::vector<Times> TimeInTurn(const std::vector<Side>& sides, int rounds);

/// Of a sample that is not empty, whatever its distribution.
Estimate EstimateMedian(std::vector<double> sample);

/// Of the quotients of each round.
Estimate EstimateRatio(const std::vector<double>& numerators,
                       const std::vector<double>& denominators);

} // namespace Kerovane::Benchmarks
