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

/** A decoded frame of a movie. */
class MovieSourceFrame : public SourceFrame {
public:
    MovieSourceFrame(ShotFrame frame, MovieFrame movie, MovieReader& reader)
        : SourceFrame(std::move(frame)), mMovie(std::move(movie)), mReader(reader) {}

    Picture read(const ReadSetting& setting) override;

    /// The decoded frame, in the movie's pixel format. Call before read(), which frees it.
    const AVFrame& stored() const { return *mMovie.frame; }

    std::int64_t time() const { return mMovie.time; }
    std::int64_t duration() const { return mMovie.duration; }

    /// Returns the packets of other streams since the previous frame. Call at most once.
    std::vector<AvPacket> takeOthers() { return std::move(mMovie.others); }

private:
    MovieFrame mMovie;
    MovieReader& mReader;
};

/** All or some frames of a movie. */
class MovieSource : public FrameSource {
public:
    /// Returns the output file of a frame, given its number.
    using OutputOf = std::function<std::filesystem::path(A_long)>;

    /// `frames`, if given, must not be empty. `reader` must be at its start and outlive the source.
    /// Throws Error if the movie ends before the first of the frames.
    MovieSource(MovieReader& reader, std::filesystem::path name, std::optional<FrameList> frames,
                OutputOf outputOf);

    std::unique_ptr<SourceFrame> next() override;

    /// Returns false once all frames have begun. May still be true at the movie's end, which is
    /// known only after the next read.
    bool hasMore() const { return mFrames ? mNext < mFrames->size() && !mHasEnded : !mHasEnded; }

    /// Returns the requested frames that lie beyond the movie's end.
    FrameList lacking() const;

    /// Returns the time in seconds at which a frame is shown: the exact time of frames that began
    /// recently, and otherwise an estimate from the frame rate. Thread-safe.
    double secondsOf(double frame) const;

    /// The end of the last frame, in MovieForm::timeBase.
    std::int64_t end() const { return mEnd; }

private:
    void keepTime(const MovieFrame& frame);

    MovieReader& mReader;
    std::filesystem::path mName;
    std::optional<FrameList> mFrames;
    OutputOf mOutputOf;
    std::size_t mNext = 0;  ///< index into mFrames
    std::int64_t mStep = 1; ///< distance of the first two requested frames; multiplies durations
    std::int64_t mEnd = 0;
    bool mHasEnded = false; ///< the movie ended before all requested frames
    mutable std::mutex mTimesMutex;
    std::map<double, double> mTimes; ///< in seconds, by frame number
};

/** Writes frames to a movie. */
class MovieSink : public FrameSink {
public:
    /// `writer` takes pictures of `width` by `height` pixels and must outlive the sink. Frames from
    /// picture files are shown in the order of their numbers, one unit of the movie's time base
    /// each, beginning with number `first`.
    MovieSink(MovieWriter& writer, A_long width, A_long height, A_long first)
        : mWriter(writer), mWidth(width), mHeight(height), mFirst(first) {}

    /// Draws frames of movies in their stored pixel format from now on. `mosaic` must produce the
    /// encoder's format.
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
    std::vector<AvPacket> mOthers; ///< packets that arrived with failed frames
};

} // namespace Kerovane::Host
