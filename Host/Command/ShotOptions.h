#pragma once

#include "Host/Parameters/FrameRate.h"
#include "Host/Shots/ShotRenderer.h"

#include <CLI/App.hpp>

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace Kerovane::Host {

/** Options of the command line that say which frames are rendered, and how. */
class ShotOptions {
public:
    ShotOptions();

    /// Adds those that say what footage there is: frames, their rate, and what lacks.
    void addFootageTo(CLI::App& command);

    /// Adds all of them.
    void addTo(CLI::App& command);

    /// Each throws Error if an option's value is none.
    ShotRequest request(const std::filesystem::path& input,
                        const std::filesystem::path& output) const;
    ShotSetting setting() const;
    FrameRate rate() const;

    /// Whether outputs that are there stay, whatever they are.
    bool keepsExisting() const { return mNoClobber; }

    /// Those of the footage that were given, as a line has them, but for the frames.
    std::vector<std::string> footageWords() const;

    /// As it was given; empty: all.
    const std::string& frames() const { return mFrames; }

    bool hasRate() const { return !mRate.empty(); }

private:
    std::string mFrames;
    std::string mRate; ///< empty: FrameRate's own
    std::string mMissing = "error";
    std::string mChunk = "1/1";
    int mDepth = 0; ///< 0: that of the file
    std::size_t mThreads;
    std::size_t mInFlight = 0; ///< 0: as many as keep the threads busy
    bool mResume = false;
    bool mNoClobber = false;
};

} // namespace Kerovane::Host
