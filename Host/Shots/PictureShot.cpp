#include "Host/Shots/PictureShot.h"

#include "Host/Pictures/PictureReader.h"
#include "Host/Pictures/PictureWriter.h"

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
    return mResume && HoldsPictureLike(frame.output, frame.input);
}

std::unique_ptr<PackedFrame> PictureSink::pack(const ShotFrame& frame, Picture& picture) {
    PictureForm form = picture.form;
    form.hasAlpha = form.hasAlpha || mCanLeaveHoles;
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
