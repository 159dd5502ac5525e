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

/// What is rendered. A single picture has no progress display, and its failure becomes the
/// command's error.
enum class Rendering { Picture, Shot };

/** Reports frames as they end, and a summary after the last. */
class ShotReport {
public:
    /// `log` may be empty for no log; otherwise its lines name `renderer`. `streams` must outlive
    /// the report. Throws Error if the log cannot be created.
    ShotReport(Rendering rendering, std::size_t frames, Verbosity verbosity,
               const std::filesystem::path& log, Renderer renderer, StandardStreams& streams);

    void frameEnded(const ShotFrame& frame, const FrameReport& report);

    /// Sets the number of frames, which may have been an estimate, to the number that ended.
    void endHere() { mTally.endHere(); }

    /// Reports the summary and returns the process's exit status: 0 if all frames were rendered or
    /// kept, 2 if some failed, 130 if interrupted. `onward` tells how to continue after an
    /// interruption. Throws Error if a single picture failed.
    int finish(std::string_view onward);

private:
    void tellRemarks();

    Rendering mRendering;
    Verbosity mVerbosity;
    StandardStreams& mStreams;
    ShotTally mTally;
    ShotProgress mProgress;
    std::optional<JsonLog> mLog;
    std::string mFailure; ///< why the single picture failed; otherwise empty
};

} // namespace Kerovane::Host
