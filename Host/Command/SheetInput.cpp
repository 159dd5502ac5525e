#include "Host/Command/SheetInput.h"

namespace Kerovane::Host {

SheetInput::SheetInput(const std::filesystem::path& path, const ReadSetting& setting,
                       std::optional<A_long> firstFrame)
    : mPath(path), mSetting(setting) {
    if (firstFrame && !std::filesystem::exists(path)) {
        mPattern = SequencePattern::parse(path);
    }
    read(firstFrame.value_or(0));
}

const Picture& SheetInput::of(const SheetCell& cell) {
    if (mPattern && cell.frame && *cell.frame != mFrame) {
        read(*cell.frame);
    }
    return mPicture;
}

void SheetInput::read(A_long frame) {
    mPicture = Picture(); // frees its memory before the next picture is read
    mPicture = ReadPicture(mPattern ? mPattern->pathOf(frame) : mPath, mSetting);
    mFrame = frame;
}

} // namespace Kerovane::Host
