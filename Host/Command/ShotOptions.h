#pragma once

#include "Host/Parameters/FrameRate.h"
#include "Host/Shots/ShotRenderer.h"

#include <CLI/App.hpp>

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace Kerovane::Host {

/** The command-line options that select a shot's frames and how they are rendered. */
class ShotOptions {
public:
    ShotOptions();

    /// Adds the options that describe the input: frames, frame rate, and missing frames.
    void addFootageTo(CLI::App& command);

    /// Adds all options.
    void addTo(CLI::App& command);

    /// Return what the options say. Throw Error if an option's value is not valid.
    ShotRequest request(const std::filesystem::path& input,
                        const std::filesystem::path& output) const;
    ShotSetting setting() const;
    FrameRate rate() const;

    /// Returns whether --no-clobber was given, which keeps all existing outputs.
    bool keepsExisting() const { return mNoClobber; }

    /// Returns the given options of addFootageTo() as words of a line, except --frames.
    std::vector<std::string> footageWords() const;

    /// The text of --frames; empty: all frames.
    const std::string& frames() const { return mFrames; }

    bool hasRate() const { return !mRate.empty(); }

private:
    std::string mFrames;
    std::string mRate; ///< empty: FrameRate's default
    std::string mMissing = "error";
    std::string mChunk = "1/1";
    int mDepth = 0; ///< bits per channel; 0: 8 if the file has no more, or else 32
    std::size_t mThreads;
    std::size_t mInFlight = 0; ///< most frames in memory at a time; 0: one more than mThreads
    bool mResume = false;
    bool mNoClobber = false;
};

} // namespace Kerovane::Host
