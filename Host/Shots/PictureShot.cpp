#include "Host/Shots/PictureShot.h"

#include "Host/Pictures/PictureReader.h"
#include "Host/Pictures/PictureRecord.h"
#include "Host/Pictures/PictureWriter.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <optional>
#include <system_error>

namespace Kerovane::Host {

namespace {

class PictureFrame : public SourceFrame {
public:
    using SourceFrame::SourceFrame;

    Picture read(const ReadSetting& setting) override {
        return ReadPicture(shotFrame().input, setting);
    }
};

} // namespace

std::unique_ptr<SourceFrame> PictureSource::next() {
    return mNext < mFrames.size() ? std::make_unique<PictureFrame>(mFrames[mNext++]) : nullptr;
}

bool PictureSink::has(const ShotFrame& frame, std::vector<std::string>& remarks) const {
    std::error_code error; // a file that cannot be examined counts as absent
    if (mSetting.keepExisting && std::filesystem::exists(frame.output, error)) {
        return true;
    }
    return mSetting.resume && isFinished(frame, remarks);
}

bool PictureSink::isFinished(const ShotFrame& frame, std::vector<std::string>& remarks) const {
    const std::string& settings = mSetting.files.record.settings;
    const std::optional<std::string> recorded =
        settings.empty() ? std::nullopt : RecordedSettings(frame.output);
    if (recorded && recorded != settings) {
        remarks.emplace_back("outputs that were made with other settings were rendered anew");
        return false;
    }
    const bool isWhole = HoldsPictureLike(frame.output, frame.input);
    if (isWhole && !settings.empty() && !recorded) {
        remarks.emplace_back("outputs were kept that hold no record of their settings to compare");
    }
    return isWhole;
}

std::unique_ptr<PackedFrame> PictureSink::pack(const ShotFrame& frame, Picture& picture) {
    const PictureWriter writer(frame.output, mSetting.files);
    std::ranges::move(writer.write(picture), std::back_inserter(picture.losses));
    return nullptr;
}

} // namespace Kerovane::Host
