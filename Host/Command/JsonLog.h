#pragma once

#include "Host/Command/StandardStreams.h"
#include "Host/Shots/ShotRenderer.h"

#include <cstdio>
#include <filesystem>
#include <memory>

namespace Kerovane::Host {

/** A log for programs: one line of JSON for each frame, written as soon as the frame ends. */
class JsonLog {
public:
    /// Creates or truncates `file`, or writes to standard output if `file` is "-". `streams` must
    /// outlive the log. Throws Error if the file cannot be created.
    JsonLog(const std::filesystem::path& file, Renderer renderer, StandardStreams& streams);

    /// Writes a frame's line. Reports the first failed write on standard error.
    void add(const ShotFrame& frame, const FrameReport& report);

private:
    struct Close {
        void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
    };

    bool write(const std::string& line);

    std::filesystem::path mPath;
    Renderer mRenderer;
    StandardStreams& mStreams;
    std::unique_ptr<std::FILE, Close> mFile; ///< null if the log goes to standard output
    bool mFailed = false;
};

} // namespace Kerovane::Host
