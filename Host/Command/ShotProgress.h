#pragma once

#include "Host/Command/ShotTally.h"
#include "Host/Command/StandardStreams.h"

#include <chrono>

namespace Kerovane::Host {

enum class Verbosity {
    Quiet,  ///< failures only
    Normal, ///< a progress bar on a terminal, and otherwise a line for each frame
    Verbose ///< a line for each frame, with the time of each stage
};

/** Shows a shot's progress to people. */
class ShotProgress {
public:
    /// `streams` must outlive this object.
    ShotProgress(Verbosity verbosity, StandardStreams& streams);

    /// Reports a frame that `tally` includes already.
    void frameEnded(const ShotFrame& frame, const FrameReport& report, const ShotTally& tally);

    /// Reports the summary. Call after the last frame.
    void finish(const ShotTally& tally);

private:
    void drawBar(const ShotTally& tally);
    void removeBar();

    Verbosity mVerbosity;
    StandardStreams& mStreams;
    int mBarColumns = 0; ///< 0 if there is no bar
    std::chrono::steady_clock::time_point mDrawn;
};

} // namespace Kerovane::Host
