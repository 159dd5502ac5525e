#include "Benchmarks/PairedFrames/PairedTiming.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <numeric>
#include <random>
#include <thread>

namespace Kerovane::Benchmarks {
namespace {

std::vector<double> Shuffled(int count) {
    std::vector<double> values(static_cast<std::size_t>(count));
    std::iota(values.begin(), values.end(), 0.0);
    std::ranges::shuffle(values, std::minstd_rand(7)); // NOLINT(cert-msc*): the same each time
    return values;
}

TEST(PairedTiming, TakesTheMedianOfAnySample) {
    const struct {
        std::vector<double> sample;
        double median;
    } cases[] = {{{4}, 4}, {{9, 1}, 5}, {{5, 100, 1}, 5}, {{8, 1, 3, 2}, 2.5}};
    for (const auto& [sample, median] : cases) {
        EXPECT_EQ(EstimateMedian(sample).median, median) << testing::PrintToString(sample);
    }
}

/// Returns the probability that at most `most` of `count` values are below the true median.
double ProbabilityBelow(int count, double most) {
    double probability = 0;
    for (int below = 0; below <= most; ++below) {
        probability += std::exp(std::lgamma(count + 1.0) - std::lgamma(below + 1.0) -
                                std::lgamma(count - below + 1.0) - count * std::log(2.0));
    }
    return probability;
}

TEST(PairedTiming, BoundsTheMedianAt99PercentConfidence) {
    for (int count = 8; count <= 303; ++count) {
        SCOPED_TRACE(count);
        // Each value is its own rank.
        const Estimate estimate = EstimateMedian(Shuffled(count));
        EXPECT_EQ(estimate.low + estimate.high, count - 1.0);
        EXPECT_GE(1 - 2 * ProbabilityBelow(count, estimate.low), 0.99);
        EXPECT_LT(1 - 2 * ProbabilityBelow(count, estimate.low + 1), 0.991);
    }
}

TEST(PairedTiming, BoundsASmallSampleByItsExtremes) {
    const Estimate estimate = EstimateMedian({3, 9, 1, 4, 2});
    EXPECT_EQ(estimate.low, 1);
    EXPECT_EQ(estimate.high, 9);
}

TEST(PairedTiming, EstimatesRatiosRoundByRound) {
    // Each round is twice as slow as the one before; the first side takes 1.5 times as long as the
    // second in every round.
    std::vector<double> base(20, 1.0);
    std::partial_sum(base.begin(), base.end(), base.begin(),
                     [](double last, double) { return 2 * last; });
    std::vector<double> slower = base;
    std::ranges::transform(slower, slower.begin(), [](double time) { return 1.5 * time; });
    const Estimate ratio = EstimateRatio(slower, base);
    EXPECT_DOUBLE_EQ(ratio.median, 1.5);
    EXPECT_DOUBLE_EQ(ratio.low, 1.5);
    EXPECT_DOUBLE_EQ(ratio.high, 1.5);
}

TEST(PairedTiming, RotatesTheSidesAndPreparesEachFrame) {
    std::string order;
    std::vector<Side> sides;
    for (const char name : {'a', 'b', 'c'}) {
        sides.push_back({.name = std::string(1, name),
                         .prepare = [&order] { order += '.'; },
                         .frame = [&order, name] { order += name; }});
    }
    const std::vector<Times> times = TimeInTurn(sides, 4);
    EXPECT_EQ(order, ".a.b.c.b.c.a.c.a.b.a.b.c.b.c.a.c.a.b"); // six rounds: two warm up
    ASSERT_EQ(times.size(), 3U);
    for (const Times& side : times) {
        EXPECT_EQ(side.wall.size(), 4U);
        EXPECT_EQ(side.cpu.size(), 4U);
    }
}

TEST(PairedTiming, MeasuresWallAndProcessorTimeSeparately) {
    using namespace std::chrono_literals;
    const Side waiting{
        .name = "", .prepare = [] {}, .frame = [] { std::this_thread::sleep_for(20ms); }};
    const Side unprepared{
        .name = "", .prepare = [] { std::this_thread::sleep_for(20ms); }, .frame = [] {}};
    const std::vector<Times> times = TimeInTurn({waiting, unprepared}, 3);
    EXPECT_GE(*std::ranges::min_element(times[0].wall), 20);
    EXPECT_LT(EstimateMedian(times[0].cpu).median, 10);
    EXPECT_LT(*std::ranges::min_element(times[1].wall), 10);
}

} // namespace
} // namespace Kerovane::Benchmarks
