#pragma once

#include "Host/Parameters/Time.h"

#include <string_view>

namespace Kerovane::Host {

/**
 * Frames per second as a fraction. Frame 0 is shown at 0 s. A frame lasts `timeStep()` ticks, and
 * `timeScale()` ticks make a second.
 */
class FrameRate {
public:
    /// 24 frames a second.
    FrameRate() = default;

    /// `frames` per `seconds`, both at least 1.
    FrameRate(A_u_long frames, A_long seconds);

    A_u_long timeScale() const { return mFrames; }
    A_long timeStep() const { return mSeconds; }

    /// Returns the time at which the frame starts. Throws Error if a Time cannot hold it.
    Time timeOf(A_long frame) const;

    /// Returns the frame number at `time`, with a fraction between frames.
    double frameAt(Time time) const;

    bool operator==(const FrameRate&) const = default;

private:
    A_u_long mFrames = 24; ///< the fraction is in lowest terms
    A_long mSeconds = 1;
};

/**
 * Reads "24", "12.5", "24000/1001" or the short form of a broadcast rate: "23.976", "29.97" and
 * "59.94" mean fractions over 1001. Throws Error for other text.
 */
FrameRate ParseFrameRate(std::string_view text);

} // namespace Kerovane::Host
