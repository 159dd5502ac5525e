#pragma once

#include "Host/Command/SheetPlan.h"
#include "Host/Pictures/PictureReader.h"
#include "Host/Shots/SequencePattern.h"

#include <filesystem>
#include <optional>

namespace Kerovane::Host {

/** The input of a sheet: a picture, or a sequence, of which one frame at a time is in memory. */
class SheetInput {
public:
    /// Reads `path` as a sequence if `firstFrame` is given and no file of that name exists. Throws
    /// Error if the first picture cannot be read.
    SheetInput(const std::filesystem::path& path, const ReadSetting& setting,
               std::optional<A_long> firstFrame);

    /// Returns the cell's frame, reading it if it is not in memory.
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
