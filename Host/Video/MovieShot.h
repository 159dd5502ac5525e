#pragma once

#include "Host/Shots/FrameSink.h"
#include "Host/Shots/FrameSource.h"
#include "Host/Video/MovieReader.h"
#include "Host/Video/MovieWriter.h"
#include "Host/Video/PlanarMosaic.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace Kerovane::Host {

/** A frame of a movie that has been decoded. */
class MovieSourceFrame : public SourceFrame {
public:
    MovieSourceFrame(ShotFrame frame, MovieFrame movie, MovieReader& reader)
        : SourceFrame(std::move(frame)), mMovie(std::move(movie)), mReader(reader) {}

    Picture read(const ReadSetting& setting) override;

    /// Before it is read.
    const AVFrame& stored() const { return *mMovie.frame; }

    std::int64_t time() const { return mMovie.time; }
    std::int64_t duration() const { return mMovie.duration; }

    /// What the movie has before this frame and behind the one before. Asked once.
    std::vector<AvPacket> takeOthers() { return std::move(mMovie.others); }

private:
    MovieFrame mMovie;
    MovieReader& mReader;
};

/** The frames of a movie: all, or some. */
class MovieSource : public FrameSource {
public:
    /// The file that a frame, by its number, goes to.
    using OutputOf = std::function<std::filesystem::path(A_long)>;

    /// `frames`, if given, is not empty. `reader` has read nothing and outlives the source. Throws
    /// Error if the movie ends before the first frame.
    MovieSource(MovieReader& reader, std::filesystem::path name, std::optional<FrameList> frames,
                OutputOf outputOf);

    std::unique_ptr<SourceFrame> next() override;

    /// Whether there are frames that were not begun, as far as one knows without reading on.
    bool hasMore() const { return mFrames ? mNext < mFrames->size() && !mHasEnded : !mHasEnded; }

    /// The frames that are asked for and behind the movie's end.
    FrameList lacking() const;

    /// The seconds at which a frame is shown: exactly of those that were begun last, else by the
    /// movie's rate. May be called from any thread.
    double secondsOf(double frame) const;

    /// Where the last frame ends, in MovieForm::timeBase.
    std::int64_t end() const { return mEnd; }

private:
    void keepTime(const MovieFrame& frame);

    MovieReader& mReader;
    std::filesystem::path mName;
    std::optional<FrameList> mFrames;
    OutputOf mOutputOf;
    std::size_t mNext = 0;  ///< of mFrames
    std::int64_t mStep = 1; ///< frames from one that is shown to the next
    std::int64_t mEnd = 0;
    bool mHasEnded = false; ///< before all frames that are asked for
    mutable std::mutex mTimesMutex;
    std::map<double, double> mTimes; ///< seconds by frame
};

/** Writes frames to a movie. */
class MovieSink : public FrameSink {
public:
    /// `writer`, which is for pictures of `width` by `height`, outlives the sink. Frames that come
    /// from pictures start with number `first` and last as long as the unit of the movie's time.
    MovieSink(MovieWriter& writer, A_long width, A_long height, A_long first)
        : mWriter(writer), mWidth(width), mHeight(height), mFirst(first) {}

    /// Has frames of movies drawn as they are stored; `mosaic` is for such as the encoder takes.
    void drawWith(PlanarMosaic mosaic) { mMosaic.emplace(std::move(mosaic)); }

    bool has(const ShotFrame&, std::vector<std::string>&) const override { return false; }
    std::unique_ptr<PackedFrame> draw(SourceFrame& frame) override;
    std::unique_ptr<PackedFrame> pack(const ShotFrame& frame, Picture& picture) override;
    void put(SourceFrame& frame, std::unique_ptr<PackedFrame> packed) override;

private:
    MovieWriter& mWriter;
    A_long mWidth;
    A_long mHeight;
    A_long mFirst;
    std::optional<PlanarMosaic> mMosaic;
    std::vector<AvPacket> mOthers; ///< of frames that failed
};

} // namespace Kerovane::Host
