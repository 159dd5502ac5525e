#pragma once

#include "Host/Shots/FrameSource.h"

#include <memory>
#include <string>
#include <vector>

namespace Kerovane::Host {

/** A rendered frame, ready to be put into a FrameSink. */
class PackedFrame {
public:
    /// `width` and `height` are in pixels.
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

/** A destination of frames: files or a movie. */
class FrameSink {
public:
    FrameSink() = default;
    virtual ~FrameSink() = default;
    FrameSink(const FrameSink&) = delete;
    FrameSink& operator=(const FrameSink&) = delete;

    /// Returns whether the frame's output exists already and is to be kept. Adds remarks for the
    /// user to `remarks`, one line each. Called for several frames concurrently.
    virtual bool has(const ShotFrame& frame, std::vector<std::string>& remarks) const = 0;

    /// Renders the frame without making a Picture, if the sink has a faster way. Returns null if
    /// the sink has none. Called for several frames concurrently. Throws Error if this frame fails.
    virtual std::unique_ptr<PackedFrame> draw(SourceFrame&) { return nullptr; }

    /// Prepares a rendered picture for put(), for example converts or writes it. Called for several
    /// frames concurrently. Adds what cannot be stored to `picture.losses`. Throws Error if this
    /// frame fails. May return null if put() needs nothing.
    virtual std::unique_ptr<PackedFrame> pack(const ShotFrame& frame, Picture& picture) = 0;

    /// Called for every frame that began, in order, until the source or the sink fails. `packed` is
    /// null if the frame failed or was kept, or if pack() returned null. Throws Error if no further
    /// frame can be stored.
    virtual void put(SourceFrame& frame, std::unique_ptr<PackedFrame> packed) = 0;
};

} // namespace Kerovane::Host
