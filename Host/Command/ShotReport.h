#pragma once

#include "Host/Command/JsonLog.h"
#include "Host/Command/ShotProgress.h"
#include "Host/Command/ShotTally.h"
#include "Host/Command/StandardStreams.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace Kerovane::Host {

/// What is rendered: of a single picture nothing is told but its failure, which is the command's.
enum class Rendering { Picture, Shot };

/** Tells of frames as they end, and of all of them at the end. */
class ShotReport {
public:
    /// An empty `log` is none; it names the renderer. Throws Error if the log can't be made.
    /// `streams` outlives the report.
    ShotReport(Rendering rendering, std::size_t frames, Verbosity verbosity,
               const std::filesystem::path& log, Renderer renderer, StandardStreams& streams);

    void frameEnded(const ShotFrame& frame, const FrameReport& report);

    /// Of frames whose number was guessed there are no more than those that ended.
    void endHere() { mTally.endHere(); }

    /// Once no further frame will end. Returns the process's exit status: 0 all done, 2 some frames
    /// failed, 130 interrupted, of which `onward` tells how to go on. Throws Error if a single
    /// picture failed.
    int finish(std::string_view onward);

private:
    void tellRemarks();

    Rendering mRendering;
    Verbosity mVerbosity;
    StandardStreams& mStreams;
    ShotTally mTally;
    ShotProgress mProgress;
    std::optional<JsonLog> mLog;
    std::string mFailure; ///< of a single picture
};

} // namespace Kerovane::Host
