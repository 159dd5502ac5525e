#pragma once

#include "Host/Shots/ShotRenderer.h"

#include <chrono>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace Kerovane::Host {

/// "NaN and infinite channels counted as 0 in 12 pixels"; empty for no pixels.
std::string NonFiniteText(std::size_t pixels);

/** What has become of a shot's frames so far. */
class ShotTally {
public:
    explicit ShotTally(std::size_t frames) : mFrames(frames) {}

    void add(const ShotFrame& frame, const FrameReport& report);

    /// Of frames whose number was guessed there are no more.
    void endHere() { mFrames = ended(); }

    std::size_t frames() const { return mFrames; }
    std::size_t ended() const { return mRendered + mKept + mFailed.size(); }
    bool hasFailures() const { return !mFailed.empty(); }

    /// Frames rendered in a second, since the beginning.
    double rate() const;

    /// What is left to do at that rate; 0 while it isn't known.
    double secondsLeft() const;

    /// "12 frames rendered in 3.4 s, 3.5 a second; 2 kept".
    std::string summary() const;

    /// The seconds of all frames in each stage, and of one in the middle.
    std::string stages() const;

    /// "2 frames failed: 1003, 1010".
    std::string failures() const;

    /// Which sizes the frames have, and where; empty if they have the same.
    std::string sizes() const;

    /// Such as what of the inputs isn't in the outputs, a line each.
    const std::set<std::string>& remarks() const { return mRemarks; }

    /// In how many pixels NaN and infinities counted as 0; empty if in none.
    std::string nonFinite() const { return NonFiniteText(mNonFinitePixels); }

private:
    double elapsed() const;

    std::size_t mFrames;
    std::size_t mRendered = 0;
    std::size_t mKept = 0;
    FrameList mFailed;
    std::size_t mNonFinitePixels = 0;
    std::set<std::string> mRemarks;
    StageSeconds mSeconds; ///< of rendered frames
    std::map<std::pair<A_long, A_long>, A_long> mFirstOfSize;
    std::chrono::steady_clock::time_point mStart = std::chrono::steady_clock::now();
};

} // namespace Kerovane::Host
