#pragma once

#include "Host/Pictures/PictureSettings.h"
#include "Host/Shots/FrameSink.h"
#include "Host/Shots/FrameSource.h"

#include <cstddef>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace Kerovane::Host {

/** A shot's pictures, one file each. */
class PictureSource : public FrameSource {
public:
    /// `frames` must outlive the source.
    explicit PictureSource(std::span<const ShotFrame> frames) : mFrames(frames) {}

    std::unique_ptr<SourceFrame> next() override;

    /// Returns whether there are frames left to begin.
    bool hasMore() const { return mNext < mFrames.size(); }

private:
    std::span<const ShotFrame> mFrames;
    std::size_t mNext = 0;
};

struct PictureSinkSetting {
    bool resume = false;       ///< keep complete outputs made with the same settings
    bool keepExisting = false; ///< keep all existing outputs, without reading them
    PictureSettings files{};   ///< how output files are written
};

/** Writes each frame to a file of its own. A file is written completely or not at all. */
class PictureSink : public FrameSink {
public:
    explicit PictureSink(PictureSinkSetting setting) : mSetting(std::move(setting)) {}

    bool has(const ShotFrame& frame, std::vector<std::string>& remarks) const override;
    std::unique_ptr<PackedFrame> pack(const ShotFrame& frame, Picture& picture) override;
    void put(SourceFrame&, std::unique_ptr<PackedFrame>) override {}

private:
    /// Returns whether the output is complete and was made with the present settings, if it records
    /// its settings. Adds a remark if it records other settings, or if it is complete but records
    /// none.
    bool isFinished(const ShotFrame& frame, std::vector<std::string>& remarks) const;

    PictureSinkSetting mSetting;
};

} // namespace Kerovane::Host
