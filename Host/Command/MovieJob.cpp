#include "Host/Command/MovieJob.h"

#include "Host/Pictures/PictureReader.h"
#include "Host/Pictures/PictureWriter.h"
#include "Host/Shots/SequencePattern.h"
#include "Host/Text/Error.h"
#include "Host/Video/OpenMovie.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace Kerovane::Host {

namespace {

/// Returns the form of a movie made of pictures. The first picture determines it.
MovieForm FormOf(const Shot& shot, FrameRate rate) {
    const Picture picture = ReadPicture(shot.frames.front().input);
    const PictureLayer& first = picture.first();
    constexpr int kBitsOfDeepFiles = 16;
    return {.width = first.world.width(),
            .height = first.world.height(),
            .bits = first.world.depth() == Depth::Bits8 ? 8 : kBitsOfDeepFiles,
            .hasAlpha = first.channels.hasAlpha,
            .isRgb = true,
            .timeBase = {rate.timeStep(), static_cast<int>(rate.timeScale())},
            .frameRate = {static_cast<int>(rate.timeScale()), rate.timeStep()}};
}

/// Throws Error if the frames are not evenly spaced. With even spacing each frame stands for the
/// same number of the source's frames, so the sound stays in sync.
void CheckOneCut(const FrameList& frames) {
    for (std::size_t i = 2; i < frames.size(); ++i) {
        if (frames[i] - frames[i - 1] != frames[1] - frames[0]) {
            throw Error("--frames takes one range, like 100-200 or 100-200x2, if a movie is made "
                        "of a movie");
        }
    }
}

/// Returns how many of the source's frames the cut, the range of --frames, spans. Returns nothing
/// if the movie is not cut.
std::optional<std::int64_t> FramesCut(const std::optional<FrameList>& frames) {
    return frames ? std::optional<std::int64_t>(frames->back() - frames->front() + 1)
                  : std::nullopt;
}

void CheckRequest(const MovieRequest& request) {
    const ShotRequest& shot = request.shot;
    if (request.toMovie && shot.chunk.count > 1) {
        throw Error("--chunk: a movie is written in one piece; render parts by --frames, or "
                    "chunks to pictures, such as out.#.png");
    }
    if (request.toMovie && request.pictures.resume) {
        throw Error("--resume: a movie can't be taken up again; pictures, such as out.#.png, can");
    }
    if (request.fromMovie && request.rate) {
        throw Error(
            fmt::format("--fps is for pictures: '{}' has times of its own", shot.input.string()));
    }
    if (request.fromMovie && shot.chunk.count > 1 && !shot.frames) {
        throw Error("--chunk needs --frames if the input is a movie");
    }
    if (request.fromMovie && shot.frames && shot.frames->front() < 0) {
        throw Error("--frames: a movie's frames count from 0");
    }
    if (request.toMovie && shot.output != kStandardStream && shot.input != kStandardStream &&
        std::filesystem::exists(shot.output) && std::filesystem::exists(shot.input) &&
        std::filesystem::equivalent(shot.output, shot.input)) {
        throw Error(fmt::format("'{}' is input and output; a movie can't be rendered in place",
                                shot.output.string()));
    }
}

} // namespace

MovieJob::MovieJob(const MovieRequest& request, StandardStreams& streams)
    : mInput(request.shot.input), mOutput(request.shot.output) {
    CheckRequest(request);
    request.fromMovie ? openMovie(request) : openPictures(request);
    if (request.toMovie) {
        openTarget(request, mForm, streams.outputDescriptor());
    } else {
        mPictureSink.emplace(request.pictures);
    }
}

void MovieJob::openMovie(const MovieRequest& request) {
    const ShotRequest& shot = request.shot;
    std::optional<FrameList> frames = shot.frames;
    if (frames && request.toMovie) {
        CheckOneCut(*frames);
    }
    if (frames) {
        frames = FramesOf(shot.chunk, *frames);
    }
    const std::optional<SequencePattern> pattern =
        request.toMovie ? std::nullopt : SequencePattern::parse(mOutput);
    if (!request.toMovie) {
        PictureWriter(pattern ? pattern->pathOf(0) : mOutput); // throws Error for unknown formats
    }
    if (!request.toMovie && !pattern && (!frames || frames->size() != 1)) {
        throw Error(fmt::format("'{}' has no place for the frame's number, like # or %04d; "
                                "--frames N takes one frame",
                                mOutput.string()));
    }
    mReader.emplace(mInput);
    mForm = mReader->form();
    mRate = mForm.rate();
    mExpected = frames ? frames->size() : static_cast<std::size_t>(mReader->framesExpected());
    mMovieSource.emplace(*mReader, mInput, frames, [pattern, file = mOutput](A_long frame) {
        return pattern ? pattern->pathOf(frame) : file;
    });
}

void MovieJob::openPictures(const MovieRequest& request) {
    mRate = request.rate.value_or(FrameRate());
    ShotRequest shot = request.shot;
    shot.toOneFile = true;
    if (!AsksForShot(shot)) {
        shot.frames = FrameList{0}; // a movie of one picture
    }
    mShot = PlanShot(shot);
    if (mShot.frames.empty()) {
        throw Error(fmt::format("'{}' has no frame to make a movie of", mInput.string()));
    }
    mForm = FormOf(mShot, mRate);
    mExpected = mShot.frames.size();
    mPictureSource.emplace(mShot.frames);
}

void MovieJob::openTarget(const MovieRequest& request, const MovieForm& form, int descriptor) {
    MovieSettings settings = request.settings;
    settings.alpha = settings.alpha || form.hasAlpha;
    mWriter.emplace(mOutput, form, settings, descriptor);
    if (mReader) {
        mWriter->carryFrom(*mReader, FramesCut(request.shot.frames));
    }
    const A_long first = mShot.frames.empty() ? 0 : mShot.frames.front().number;
    mMovieSink.emplace(*mWriter, form.width, form.height, first);
}

void MovieJob::drawAsStored(const ShotDrawing& drawing) {
    const PixelCoding stored{.format = mForm.stored, .color = mForm.color};
    if (!mReader || !mWriter || !PlanarMosaic::canDraw(stored.format) ||
        !HaveSameMeaning(stored, mWriter->coding())) {
        return;
    }
    std::optional<CellMap> map =
        CellMap::of(mForm.width, mForm.height, [&](const ConstPixelView& in, const PixelView& out) {
            const Frame anyFrame{.time = {}, .downsample = drawing.downsample};
            drawing.renderer.render(anyFrame, drawing.values, in, out, drawing.with);
        });
    if (map) {
        mMovieSink->drawWith(PlanarMosaic(std::move(*map), mWriter->coding()));
    }
}

FrameSource& MovieJob::source() {
    return mMovieSource ? static_cast<FrameSource&>(*mMovieSource) : *mPictureSource;
}

FrameSink& MovieJob::sink() {
    return mMovieSink ? static_cast<FrameSink&>(*mMovieSink) : *mPictureSink;
}

bool MovieJob::hasMore() const {
    return mMovieSource ? mMovieSource->hasMore() : mPictureSource->hasMore();
}

SecondsOfFrame MovieJob::secondsOf() const {
    if (!mMovieSource) {
        return {};
    }
    return [this](double frame) { return mMovieSource->secondsOf(frame); };
}

std::vector<std::string> MovieJob::notes() const {
    std::vector<std::string> notes;
    if (mReader && mReader->isInterlaced()) {
        notes.push_back(
            fmt::format("'{}' is interlaced: its frames are rendered whole", mInput.string()));
    }
    if (mWriter) {
        std::ranges::copy(mWriter->notes(), std::back_inserter(notes));
    }
    return notes;
}

std::vector<std::string> MovieJob::finish(bool isInterrupted) {
    if (!mWriter) {
        return {};
    }
    std::vector<std::string> lines;
    const std::size_t told = mWriter->notes().size();
    if (isInterrupted) {
        const std::filesystem::path partial = mWriter->finishPartial();
        if (!partial.empty()) {
            lines.push_back(fmt::format("the frames done are in '{}'", partial.string()));
        }
    } else {
        std::vector<AvPacket> others;
        const bool endsEarly = mReader && !mReader->endedEarly().empty();
        if (mReader) {
            others = mReader->readOthers(mMovieSource->end());
        }
        mWriter->finish(std::move(others), endsEarly);
    }
    std::copy(mWriter->notes().begin() + static_cast<std::ptrdiff_t>(told), mWriter->notes().end(),
              std::back_inserter(lines));
    return lines;
}

std::vector<std::string> MovieJob::losses() const {
    std::vector<std::string> losses;
    if (!mReader) {
        return losses;
    }
    if (!mReader->damage().isEmpty()) {
        losses.push_back(
            fmt::format("'{}' is damaged {}", mInput.string(), mReader->damage().text()));
    }
    if (!mReader->endedEarly().empty()) {
        losses.push_back(
            fmt::format("'{}' is rendered up to where {}", mInput.string(), mReader->endedEarly()));
    }
    if (const FrameList lacking = mMovieSource->lacking(); !lacking.empty()) {
        losses.push_back(
            fmt::format("'{}' lacks the frames {}", mInput.string(), FormatFrames(lacking)));
    }
    return losses;
}

} // namespace Kerovane::Host
