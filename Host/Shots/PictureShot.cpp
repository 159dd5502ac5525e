#include "Host/Shots/PictureShot.h"

#include "Host/Pictures/PictureReader.h"
#include "Host/Pictures/PictureWriter.h"

#include <filesystem>
#include <system_error>

namespace Kerovane::Host {

namespace {

class PictureFrame : public SourceFrame {
public:
    using SourceFrame::SourceFrame;

    Picture read(std::optional<Depth> depth) override {
        return ReadPicture(shotFrame().input, depth);
    }
};

} // namespace

std::unique_ptr<SourceFrame> PictureSource::next() {
    return mNext < mFrames.size() ? std::make_unique<PictureFrame>(mFrames[mNext++]) : nullptr;
}

bool PictureSink::has(const ShotFrame& frame) const {
    std::error_code error; // counts as not there
    return (mSetting.keepExisting && std::filesystem::exists(frame.output, error)) ||
           (mSetting.resume && HoldsPictureLike(frame.output, frame.input));
}

std::unique_ptr<PackedFrame> PictureSink::pack(const ShotFrame& frame, Picture& picture) {
    PictureForm form = picture.form;
    form.hasAlpha = form.hasAlpha || mSetting.canLeaveHoles;
    const PictureWriter writer(frame.output);
    const OtherChannels* others = &picture.others;
    if (!others->isEmpty() && !writer.holds(*others)) {
        picture.losses.push_back(LossOf(*others));
        others = nullptr;
    }
    writer.write(picture.world, picture.origin, form, others);
    return nullptr;
}

} // namespace Kerovane::Host
