#pragma once

#include <cstdint>

namespace Kerovane::Software {

enum class Shape { Square, Triangle };

enum class Transition { Linear, RadialIn, RadialOut };

/// A fixed-point number with 16 bits before and 16 after the point.
using Fixed = std::int32_t;

/// Converts percent to a share of 1.
constexpr float Share(Fixed percent) {
    return static_cast<float>(percent * 0x1p-16 / 100);
}

/// The parameters of a frame, in the units and precision of the host's records. Values outside of
/// the declared ranges are safe, but what they draw is undefined.
struct MosaicParameters {
    Shape shape = Shape::Square;
    std::int32_t size = 10;     ///< height of a cell, pixels at full resolution
    double ratio = 1;           ///< a cell's width over its height
    Fixed sizeRandom = 0;       ///< percent of the picture that may get larger cells
    std::int32_t sizeLevel = 3; ///< how often a cell's size may double
    std::int32_t sizeRandomSeed = 0;
    Fixed dissolve = 0; ///< percent of the cells that drop out
    std::int32_t dissolveRandomSeed = 0;
    Transition transition = Transition::Linear;
    Fixed transitionProgress = 0; ///< percent of the sweep that is done
    std::int32_t feather = 0;     ///< width of the ragged edge, pixels at full resolution
    Fixed direction = 0;          ///< degrees; 0 sweeps from left to right, 90 down
    bool useAlpha = true;
    std::uint32_t downsample = 1; ///< the picture is at 1 / downsample of the full resolution
};

} // namespace Kerovane::Software
