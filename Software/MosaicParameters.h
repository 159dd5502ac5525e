#pragma once

#include <cstdint>

namespace Kerovane::Software {

enum class Shape { Square, Triangle };

enum class Transition { Linear, RadialIn, RadialOut };

/// A number with 16 bits before and 16 behind the point.
using Fixed = std::int32_t;

/// What a number of percent is of one.
constexpr float Share(Fixed percent) {
    return static_cast<float>(percent * 0x1p-16 / 100);
}

/// What a frame's picture hangs on beside its pixels, in the units and precision of a host's
/// records. Values outside of the parameters' ranges give some picture or other.
struct MosaicParameters {
    Shape shape = Shape::Square;
    std::int32_t size = 10;     ///< height of a cell, pixels at full resolution
    double ratio = 1;           ///< of a cell's width to its height
    Fixed sizeRandom = 0;       ///< percent
    std::int32_t sizeLevel = 3; ///< sizes above the normal one, each twice the one before
    std::int32_t sizeRandomSeed = 0;
    Fixed dissolve = 0; ///< percent
    std::int32_t dissolveRandomSeed = 0;
    Transition transition = Transition::Linear;
    Fixed transitionProgress = 0; ///< percent
    std::int32_t feather = 0;     ///< pixels at full resolution
    Fixed direction = 0;          ///< degrees; 0 sweeps from left to right, 90 down
    bool useAlpha = true;
    std::uint32_t downsample = 1; ///< the picture is reduced so many times
};

} // namespace Kerovane::Software
