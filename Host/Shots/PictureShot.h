#pragma once

#include "Host/Shots/FrameSink.h"
#include "Host/Shots/FrameSource.h"

#include <cstddef>
#include <span>

namespace Kerovane::Host {

/** The pictures of a shot, a file each. */
class PictureSource : public FrameSource {
public:
    /// `frames` outlive the source.
    explicit PictureSource(std::span<const ShotFrame> frames) : mFrames(frames) {}

    std::unique_ptr<SourceFrame> next() override;

    /// Whether there are frames that were not begun.
    bool hasMore() const { return mNext < mFrames.size(); }

private:
    std::span<const ShotFrame> mFrames;
    std::size_t mNext = 0;
};

struct PictureSinkSetting {
    bool resume = false;       ///< keep the outputs that are there and whole
    bool keepExisting = false; ///< keep the outputs that are there, whatever they are
    bool canLeaveHoles = true; ///< frames are written with alpha
};

/** Writes each frame to a file of its own, whole or not at all. */
class PictureSink : public FrameSink {
public:
    explicit PictureSink(const PictureSinkSetting& setting) : mSetting(setting) {}

    bool has(const ShotFrame& frame) const override;
    std::unique_ptr<PackedFrame> pack(const ShotFrame& frame, Picture& picture) override;
    void put(SourceFrame&, std::unique_ptr<PackedFrame>) override {}

private:
    PictureSinkSetting mSetting;
};

} // namespace Kerovane::Host
