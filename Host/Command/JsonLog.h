#pragma once

#include "Host/Command/StandardStreams.h"
#include "Host/Shots/ShotRenderer.h"

#include <cstdio>
#include <filesystem>
#include <memory>

namespace Kerovane::Host {

/** A log for programs: a line of JSON for each frame, out as soon as the frame has ended. */
class JsonLog {
public:
    /// The file is made anew; "-" is standard output. `streams` outlives the log. Throws Error
    /// if the file can't be made.
    JsonLog(const std::filesystem::path& file, Renderer renderer, StandardStreams& streams);

    /// A line that can't be written is complained of once.
    void add(const ShotFrame& frame, const FrameReport& report);

private:
    struct Close {
        void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
    };

    bool write(const std::string& line);

    std::filesystem::path mPath;
    Renderer mRenderer;
    StandardStreams& mStreams;
    std::unique_ptr<std::FILE, Close> mFile; ///< null for standard output
    bool mFailed = false;
};

} // namespace Kerovane::Host
