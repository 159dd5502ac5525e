#pragma once

#include "Software/MosaicParameters.h"

#include <cstdint>
#include <random>

namespace Kerovane::Software {

/// Returns random parameters within their ranges, all kinds about equally often. The same on every
/// machine: uses std::minstd_rand without the standard library's distributions, which differ.
inline MosaicParameters RandomParameters(std::minstd_rand& random) {
    const auto below = [&random](std::uint32_t end) {
        return static_cast<std::int32_t>(random() % end);
    };
    const auto percent = [&] { return below(3) == 0 ? 0 : below((100 << 16) + 1); };
    constexpr double kRatios[] = {1, 1, 2, 0.73, 1.37, 0.21, 0.04};
    MosaicParameters parameters;
    parameters.shape = Shape(below(2));
    parameters.size = 2 + below(below(4) == 0 ? 40 : 9);
    parameters.ratio = kRatios[below(7)];
    parameters.sizeRandom = percent();
    parameters.sizeLevel = 1 + below(5);
    parameters.sizeRandomSeed = below(5001);
    parameters.dissolve = percent();
    parameters.dissolveRandomSeed = below(5001);
    parameters.transition = Transition(below(3));
    parameters.transitionProgress = percent();
    parameters.feather = below(2) == 0 ? 0 : below(60);
    parameters.direction = below(2) == 0 ? below(8) * (45 << 16) : below(1000 << 16) - (500 << 16);
    parameters.useAlpha = below(2) == 0;
    parameters.downsample = below(4) == 0 ? 1 + static_cast<std::uint32_t>(below(4)) : 1;
    return parameters;
}

} // namespace Kerovane::Software
