#pragma once

#include "Host/Pictures/PictureReader.h"
#include "Host/Shots/Shot.h"

#include <memory>
#include <utility>

namespace Kerovane::Host {

/** A frame of a source, whose pixels can be read. */
class SourceFrame {
public:
    explicit SourceFrame(ShotFrame frame) : mFrame(std::move(frame)) {}
    virtual ~SourceFrame() = default;
    SourceFrame(const SourceFrame&) = delete;
    SourceFrame& operator=(const SourceFrame&) = delete;

    /// The frame's number and files, for reports.
    const ShotFrame& shotFrame() const { return mFrame; }

    /// Reads the frame's pixels. Called for several frames concurrently. Throws Error if this frame
    /// fails.
    virtual Picture read(const ReadSetting& setting) = 0;

private:
    ShotFrame mFrame;
};

/** An origin of frames: files or a movie. */
class FrameSource {
public:
    FrameSource() = default;
    virtual ~FrameSource() = default;
    FrameSource(const FrameSource&) = delete;
    FrameSource& operator=(const FrameSource&) = delete;

    /// Begins the next frame, or returns null after the last. Must not be called concurrently.
    /// Throws Error if no further frame can be read.
    virtual std::unique_ptr<SourceFrame> next() = 0;
};

} // namespace Kerovane::Host
