#include "Host/Video/MovieShot.h"

#include "Host/Frames/WorldView.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace Kerovane::Host {

namespace {

class PackedMovieFrame : public PackedFrame {
public:
    explicit PackedMovieFrame(AvFrame frame)
        : PackedFrame(frame->width, frame->height), mFrame(std::move(frame)) {}

    AvFrame take() { return std::move(mFrame); }

private:
    AvFrame mFrame;
};

OIIO::TypeDesc TypeOf(Depth depth) {
    switch (depth) {
    case Depth::Bits8:
        return OIIO::TypeDesc::UINT8;
    case Depth::Bits16:
        return OIIO::TypeDesc::UINT16;
    default:
        return OIIO::TypeDesc::FLOAT;
    }
}

void Append(std::vector<AvPacket>& to, std::vector<AvPacket> from) {
    std::ranges::move(from, std::back_inserter(to));
}

} // namespace

Picture MovieSourceFrame::read(const ReadSetting& setting) {
    constexpr int kRgba = 4;
    const MovieForm& form = mReader.form();
    const Depth depth = setting.depth.value_or(form.depth());
    World world(depth, form.width, form.height);
    mReader.unpack(mMovie, ViewOf(world));
    mMovie.frame.reset();
    OIIO::ImageSpec origin(form.width, form.height, kRgba, TypeOf(depth));
    if (form.pixelAspect.num > 0 && form.pixelAspect.den > 0) {
        world.layer().pix_aspect_ratio = {.num = form.pixelAspect.num,
                                          .den = static_cast<A_u_long>(form.pixelAspect.den)};
        origin.attribute("PixelAspectRatio", static_cast<float>(av_q2d(form.pixelAspect)));
    }
    return PictureOf(std::move(world), std::move(origin), {.hasAlpha = form.hasAlpha});
}

MovieSource::MovieSource(MovieReader& reader, std::filesystem::path name,
                         std::optional<FrameList> frames, OutputOf outputOf)
    : mReader(reader),
      mName(std::move(name)),
      mFrames(std::move(frames)),
      mOutputOf(std::move(outputOf)) {
    if (mFrames) {
        mReader.seek(mFrames->front());
        mStep = mFrames->size() > 1 ? (*mFrames)[1] - mFrames->front() : 1;
    }
}

std::unique_ptr<SourceFrame> MovieSource::next() {
    if (mFrames && mNext == mFrames->size()) {
        return nullptr;
    }
    std::vector<AvPacket> others;
    while (std::optional<MovieFrame> frame = mReader.read()) {
        Append(others, std::move(frame->others));
        if (mFrames && frame->number < (*mFrames)[mNext]) {
            continue;
        }
        ++mNext;
        frame->others = std::move(others);
        frame->duration *= mStep;
        mEnd = frame->time + frame->duration;
        keepTime(*frame);
        const auto number = static_cast<A_long>(frame->number);
        return std::make_unique<MovieSourceFrame>(
            ShotFrame{.number = number, .input = mName, .output = mOutputOf(number)},
            std::move(*frame), mReader);
    }
    mHasEnded = true;
    return nullptr;
}

/// Remembers a frame's time. The limit is far above the number of frames in flight.
void MovieSource::keepTime(const MovieFrame& frame) {
    constexpr std::size_t kKept = 4096;
    const std::lock_guard lock(mTimesMutex);
    mTimes[static_cast<double>(frame.number)] =
        static_cast<double>(frame.time) * av_q2d(mReader.form().timeBase);
    if (mTimes.size() > kKept) {
        mTimes.erase(mTimes.begin());
    }
}

double MovieSource::secondsOf(double frame) const {
    const std::lock_guard lock(mTimesMutex);
    const auto found = mTimes.find(std::round(frame));
    const AVRational rate = mReader.form().frameRate;
    return found != mTimes.end() ? found->second : rate.num > 0 ? frame / av_q2d(rate) : 0;
}

FrameList MovieSource::lacking() const {
    return mFrames && mHasEnded
               ? FrameList(mFrames->begin() + static_cast<std::ptrdiff_t>(mNext), mFrames->end())
               : FrameList();
}

std::unique_ptr<PackedFrame> MovieSink::draw(SourceFrame& frame) {
    auto* const movie = mMosaic ? dynamic_cast<MovieSourceFrame*>(&frame) : nullptr;
    return movie != nullptr ? std::make_unique<PackedMovieFrame>(mMosaic->draw(movie->stored()))
                            : nullptr;
}

std::unique_ptr<PackedFrame> MovieSink::pack(const ShotFrame&, Picture& picture) {
    const World& world = picture.first().world;
    if (world.width() != mWidth || world.height() != mHeight) {
        throw Error(fmt::format("has {} x {} pixels, the movie {} x {}", world.width(),
                                world.height(), mWidth, mHeight));
    }
    picture.losses.push_back(LossOfOtherChannels(picture.parts.front()));
    picture.losses.push_back(LossOfParts(picture, 1));
    std::erase(picture.losses, "");
    return std::make_unique<PackedMovieFrame>(mWriter.pack(ViewOf(world)));
}

void MovieSink::put(SourceFrame& frame, std::unique_ptr<PackedFrame> packed) {
    std::int64_t time = frame.shotFrame().number - mFirst;
    std::int64_t duration = 1;
    if (auto* const movie = dynamic_cast<MovieSourceFrame*>(&frame)) {
        time = movie->time();
        duration = movie->duration();
        Append(mOthers, movie->takeOthers());
    }
    if (packed != nullptr) {
        mWriter.write(static_cast<PackedMovieFrame&>(*packed).take(), time, duration,
                      std::exchange(mOthers, {}));
    }
}

} // namespace Kerovane::Host
