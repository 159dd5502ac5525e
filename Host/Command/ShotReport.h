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

/// What is rendered. Of a single picture only a failure is reported, as the command's error.
enum class Rendering { Picture, Shot };

/** Reports frames as they end, and a summary after the last. */
class ShotReport {
public:
    /// `log` may be empty for no log; otherwise its lines name `renderer`. `streams` must outlive
    /// the report. Throws Error if the log cannot be created.
    ShotReport(Rendering rendering, std::size_t frames, Verbosity verbosity,
               const std::filesystem::path& log, Renderer renderer, StandardStreams& streams);

    void frameEnded(const ShotFrame& frame, const FrameReport& report);

    /// Corrects the number of frames, which may have been an estimate, to those that ended.
    void endHere() { mTally.endHere(); }

    /// Reports the summary and returns the process's exit status: 0 if all frames were rendered, 2
    /// if some failed, 130 if interrupted. `onward` tells how to continue after an interruption.
    /// Throws Error if a single picture failed.
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
