#pragma once

#include "Host/Command/SheetPlan.h"
#include "Host/Pictures/PictureReader.h"
#include "Host/Shots/SequencePattern.h"

#include <filesystem>
#include <optional>

namespace Kerovane::Host {

/** What a sheet shows: a picture, or the frames of a sequence, of which one is in memory. */
class SheetInput {
public:
    /// Takes `path` for a sequence if there is no such file and `firstFrame` is given. Throws Error
    /// if it can't be read.
    SheetInput(const std::filesystem::path& path, const ReadSetting& setting,
               std::optional<A_long> firstFrame);

    /// Reads the cell's frame, unless it is there.
    const Picture& of(const SheetCell& cell);

    /// The picture that was read last.
    const Picture& last() const { return mPicture; }

private:
    void read(A_long frame);

    std::filesystem::path mPath;
    ReadSetting mSetting;
    std::optional<SequencePattern> mPattern;
    A_long mFrame = 0;
    Picture mPicture;
};

} // namespace Kerovane::Host
