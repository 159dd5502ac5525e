#pragma once

#include "Host/Command/ShotTally.h"
#include "Host/Command/StandardStreams.h"

#include <chrono>

namespace Kerovane::Host {

enum class Verbosity {
    Quiet,  ///< failures only
    Normal, ///< a progress bar on a terminal, else a line for each frame
    Verbose ///< lines with the time of each stage
};

/** Shows people how a shot gets on. */
class ShotProgress {
public:
    /// `streams` outlives this object.
    ShotProgress(Verbosity verbosity, StandardStreams& streams);

    /// `tally` has the frame already.
    void frameEnded(const ShotFrame& frame, const FrameReport& report, const ShotTally& tally);

    /// Once no further frame will end.
    void finish(const ShotTally& tally);

private:
    void drawBar(const ShotTally& tally);
    void removeBar();

    Verbosity mVerbosity;
    StandardStreams& mStreams;
    int mBarColumns = 0; ///< 0: there is no bar
    std::chrono::steady_clock::time_point mDrawn;
};

} // namespace Kerovane::Host
