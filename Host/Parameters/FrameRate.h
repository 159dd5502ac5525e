#pragma once

#include "Host/Parameters/Time.h"

#include <string_view>

namespace Kerovane::Host {

/**
 * How many frames pass in a second, as a fraction, and so where frame numbers lie in time: frame 0
 * at 0 s, each frame `timeStep()` ticks of which `timeScale()` make a second.
 */
class FrameRate {
public:
    /// 24 frames a second.
    FrameRate() = default;

    /// `frames` in `seconds`, both at least 1.
    FrameRate(A_u_long frames, A_long seconds);

    A_u_long timeScale() const { return mFrames; }
    A_long timeStep() const { return mSeconds; }

    /// Throws Error if the frame lies beyond what a Time can hold.
    Time timeOf(A_long frame) const;

    /// Also between frames.
    double frameAt(Time time) const;

    bool operator==(const FrameRate&) const = default;

private:
    A_u_long mFrames = 24; ///< the fraction is reduced
    A_long mSeconds = 1;
};

/**
 * Reads "24", "12.5", "24000/1001" or a broadcast rate as people write it: "23.976", "29.97",
 * "59.94" mean the fractions over 1001. Throws Error for other text.
 */
FrameRate ParseFrameRate(std::string_view text);

} // namespace Kerovane::Host
