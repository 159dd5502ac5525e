#pragma once

#include "Host/Shots/ShotRenderer.h"

#include <chrono>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace Kerovane::Host {

/// Returns "NaN and infinite channels counted as 0 in 12 pixels", or an empty text if `pixels` is
/// 0.
std::string NonFiniteText(std::size_t pixels);

/** Counts a shot's frames by how they ended. */
class ShotTally {
public:
    explicit ShotTally(std::size_t frames) : mFrames(frames) {}

    void add(const ShotFrame& frame, const FrameReport& report);

    /// Sets the number of frames, which may have been an estimate, to the number that ended.
    void endHere() { mFrames = ended(); }

    std::size_t frames() const { return mFrames; }
    std::size_t ended() const { return mRendered + mKept + mFailed.size(); }
    bool hasFailures() const { return !mFailed.empty(); }

    /// The mean number of frames rendered per second since the start.
    double rate() const;

    /// The estimated seconds left, or 0 if unknown.
    double secondsLeft() const;

    /// Returns "12 of 14 frames rendered in 3.4 s, 3.50 a second; 2 kept".
    std::string summary() const;

    /// Returns the total seconds of each stage, and its mean for a rendered frame.
    std::string stages() const;

    /// Returns "2 of 14 frames failed: 1003, 1010".
    std::string failures() const;

    /// Returns which sizes the frames have and where each first occurs. Empty if all have the same
    /// size.
    std::string sizes() const;

    /// Returns the remarks on all frames, each text once, such as what the outputs lack.
    const std::set<std::string>& remarks() const { return mRemarks; }

    /// Returns NonFiniteText() of the pixels of all frames.
    std::string nonFinite() const { return NonFiniteText(mNonFinitePixels); }

private:
    double elapsed() const;

    std::size_t mFrames;
    std::size_t mRendered = 0;
    std::size_t mKept = 0;
    FrameList mFailed;
    std::size_t mNonFinitePixels = 0;
    std::set<std::string> mRemarks;
    StageSeconds mSeconds; ///< summed over the rendered frames
    std::map<std::pair<A_long, A_long>, A_long> mFirstOfSize;
    std::chrono::steady_clock::time_point mStart = std::chrono::steady_clock::now();
};

} // namespace Kerovane::Host
