#pragma once

#include "Host/Shots/FrameSource.h"

#include <memory>
#include <string>
#include <vector>

namespace Kerovane::Host {

/** A frame that is ready to be put where it goes. */
class PackedFrame {
public:
    /// Sides in pixels.
    PackedFrame(A_long width, A_long height) : mWidth(width), mHeight(height) {}
    virtual ~PackedFrame() = default;
    PackedFrame(const PackedFrame&) = delete;
    PackedFrame& operator=(const PackedFrame&) = delete;

    A_long width() const { return mWidth; }
    A_long height() const { return mHeight; }

private:
    A_long mWidth;
    A_long mHeight;
};

/** Where frames go: files or a movie. */
class FrameSink {
public:
    FrameSink() = default;
    virtual ~FrameSink() = default;
    FrameSink(const FrameSink&) = delete;
    FrameSink& operator=(const FrameSink&) = delete;

    /// Whether the frame is there already and stays. Adds to `remarks` what a user has to know of
    /// that, a line each. Several frames are asked for at a time.
    virtual bool has(const ShotFrame& frame, std::vector<std::string>& remarks) const = 0;

    /// Draws the frame itself if it can do that better than by way of a picture; null if it can't.
    /// Several frames are asked for at a time. Throws Error if this frame fails.
    virtual std::unique_ptr<PackedFrame> draw(SourceFrame&) { return nullptr; }

    /// Does with a picture what can be done for several frames at a time. Adds to
    /// its losses what can't be put. Throws Error if this frame fails. The result may be null.
    virtual std::unique_ptr<PackedFrame> pack(const ShotFrame& frame, Picture& picture) = 0;

    /// Called for each frame that began, in their order; `packed` is null too if the frame failed.
    /// Throws Error if no further frame can be put.
    virtual void put(SourceFrame& frame, std::unique_ptr<PackedFrame> packed) = 0;
};

} // namespace Kerovane::Host
