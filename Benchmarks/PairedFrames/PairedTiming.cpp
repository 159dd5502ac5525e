#include "Benchmarks/PairedFrames/PairedTiming.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>

namespace Kerovane::Benchmarks {

namespace {

constexpr std::size_t kWarmUpRounds = 2;

double WallMilliseconds() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double, std::milli>(now).count();
}

double CpuMilliseconds() {
    std::timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) * 1e-6;
}

} // namespace

std::vector<Times> TimeInTurn(const std::vector<Side>& sides, int rounds) {
    std::vector<Times> times(sides.size());
    const std::size_t roundCount = kWarmUpRounds + static_cast<std::size_t>(rounds);
    for (std::size_t round = 0; round < roundCount; ++round) {
        for (std::size_t turn = 0; turn < sides.size(); ++turn) {
            const std::size_t index = (round + turn) % sides.size();
            sides[index].prepare();
            const double wallStart = WallMilliseconds();
            const double cpuStart = CpuMilliseconds();
            sides[index].frame();
            const double cpu = CpuMilliseconds() - cpuStart;
            const double wall = WallMilliseconds() - wallStart;
            if (round >= kWarmUpRounds) {
                times[index].wall.push_back(wall);
                times[index].cpu.push_back(cpu);
            }
        }
    }
    return times;
}

Estimate EstimateMedian(std::vector<double> sample) {
    std::ranges::sort(sample);
    const std::size_t count = sample.size();
    const double median = (sample[(count - 1) / 2] + sample[count / 2]) / 2;
    // The number of values below the true median is binomially distributed. With a probability of
    // 99 % the true median lies between the values at the ranks `low` and count - 1 - `low`.
    constexpr double kDeviations = 2.576;
    const double reach = kDeviations * std::sqrt(static_cast<double>(count)) / 2;
    const double rank = std::floor((static_cast<double>(count) - 1) / 2 - reach);
    const auto low = static_cast<std::size_t>(std::max(rank, 0.0));
    return {.median = median, .low = sample[low], .high = sample[count - 1 - low]};
}

Estimate EstimateRatio(const std::vector<double>& numerators,
                       const std::vector<double>& denominators) {
    std::vector<double> ratios(numerators.size());
    std::ranges::transform(numerators, denominators, ratios.begin(), std::divides());
    return EstimateMedian(std::move(ratios));
}

} // namespace Kerovane::Benchmarks
