#pragma once

#include "Software/CellGrid.h"
#include "Software/RandomSource.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace Kerovane::Software {

/**
 * Decides which cells remain in the picture: some drop out at random, others are swept away by the
 * transition, whose edge is ragged if it has a feather.
 */
class Fate {
public:
    Fate(const MosaicParameters& parameters, std::ptrdiff_t width, std::ptrdiff_t height);

    /// Sets each element of `remains` to 1 if the cell with the reference point of the same index
    /// remains, else to 0.
    void decide(std::span<const Location> points, std::span<std::int32_t> remains) const;

private:
    /// The line at which a linear sweep starts, and how far the sweep goes.
    struct Front {
        Front(Fixed direction, float width, float height);

        Location start;  ///< a corner of the picture that is on the line
        Location along;  ///< another point of the line
        float depth = 0; ///< how far the sweep goes, in pixels
    };

    /// `kRagged`: the transition has a feather. `kRandom`: the result depends on the cells' random
    /// numbers.
    template <Transition kTransition, bool kRagged, bool kRandom>
    bool isRemaining(Location point) const;

    template <Transition kTransition>
    void decideSwept(std::span<const Location> points, std::span<std::int32_t> remains) const;

    // Reference points are moved to at most this x and this y, in pixels.
    float mRight;
    float mBottom;

    float mDissolved; ///< share of the cells that drop out, 0 to 1
    RandomSource mRandom;
    Transition mTransition;
    Front mFront;
    Location mMiddle;
    float mDepth;   ///< how far the transition's sweep goes, in pixels
    float mFeather; ///< width of the ragged edge, in pixels; below 1 there is none
    float mProgress;
};

} // namespace Kerovane::Software
