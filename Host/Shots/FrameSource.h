#pragma once

#include "Host/Pictures/PictureReader.h"
#include "Host/Shots/Shot.h"

#include <memory>
#include <utility>

namespace Kerovane::Host {

/** A frame that a source has begun. */
class SourceFrame {
public:
    explicit SourceFrame(ShotFrame frame) : mFrame(std::move(frame)) {}
    virtual ~SourceFrame() = default;
    SourceFrame(const SourceFrame&) = delete;
    SourceFrame& operator=(const SourceFrame&) = delete;

    /// Which it is, for those who are told of it.
    const ShotFrame& shotFrame() const { return mFrame; }

    /// The frame's pixels. Several frames are read at a time. Throws Error if it fails.
    virtual Picture read(const ReadSetting& setting) = 0;

private:
    ShotFrame mFrame;
};

/** Where frames come from: files or a movie. */
class FrameSource {
public:
    FrameSource() = default;
    virtual ~FrameSource() = default;
    FrameSource(const FrameSource&) = delete;
    FrameSource& operator=(const FrameSource&) = delete;

    /// Begins the next frame; null after the last. One call at a time. Throws Error if no further
    /// frame can be had.
    virtual std::unique_ptr<SourceFrame> next() = 0;
};

} // namespace Kerovane::Host
