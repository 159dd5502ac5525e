#pragma once

#include "Software/CellGrid.h"
#include "Software/RandomSource.h"

#include <cstddef>
#include <cstdint>
#include <span>

namespace Kerovane::Software {

/** Decides which cells are left of the picture: some drop out at random, others are swept away by
 * the transition, whose edge is ragged if it has a feather. */
class Fate {
public:
    Fate(const MosaicParameters& parameters, std::ptrdiff_t width, std::ptrdiff_t height);

    /// Sets each of `left` to whether the cell whose reference point is the one of `points` is
    /// left: 1 or 0.
    void decide(std::span<const Location> points, std::span<std::int32_t> left) const;

private:
    /// The line at which a linear sweep starts, and how far it goes.
    struct Front {
        Front(Fixed direction, float width, float height);

        Location start;  ///< a corner of the picture
        Location along;  ///< another point of the line
        float depth = 0; ///< pixels
    };

    /// `kRagged` if the transition has a feather, `kRandom` if it hangs on the cells' random
    /// numbers.
    template <Transition kTransition, bool kRagged, bool kRandom>
    bool isLeft(Location point) const;

    template <Transition kTransition>
    void decideSwept(std::span<const Location> points, std::span<std::int32_t> left) const;

    float mRight;     ///< the largest x that a point counts with, pixels
    float mBottom;    ///< the largest y
    float mDissolved; ///< share of the cells that drop out
    RandomSource mRandom;
    Transition mTransition;
    Front mFront;
    Location mMiddle;
    float mDepth;   ///< of the sweep, pixels
    float mFeather; ///< pixels; none below 1
    float mProgress;
};

} // namespace Kerovane::Software
