#pragma once

#include "Host/Command/StandardStreams.h"
#include "Host/Parameters/FrameRate.h"
#include "Host/Parameters/ParameterSettings.h"
#include "Host/Shots/PictureShot.h"
#include "Host/Shots/Shot.h"
#include "Host/Shots/ShotRenderer.h"
#include "Host/Video/MovieReader.h"
#include "Host/Video/MovieShot.h"
#include "Host/Video/MovieWriter.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Kerovane::Host {

/// What to render from or to a movie.
struct MovieRequest {
    ShotRequest shot;
    bool fromMovie = false;
    bool toMovie = false;
    std::optional<FrameRate> rate; ///< frame rate of picture files; FrameRate's default if absent
    MovieSettings settings;        ///< how the movie is written
    PictureSinkSetting pictures;   ///< how picture files are written
};

/**
 * A rendering from a movie, to a movie, or both. Provides the source and the sink of the frames.
 */
class MovieJob {
public:
    /// Opens the source and the sink. Throws Error if the request cannot be fulfilled.
    MovieJob(const MovieRequest& request, StandardStreams& streams);

    /// Lets the sink draw frames in the format they are stored in, which is faster. Does nothing if
    /// source and target differ in format, or if the format cannot be drawn directly. The values of
    /// `drawing` must be the same for all frames.
    void drawAsStored(const ShotDrawing& drawing);

    FrameSource& source();
    FrameSink& sink();

    /// The expected number of frames, or 0 if unknown.
    std::size_t framesExpected() const { return mExpected; }

    FrameRate rate() const { return mRate; }

    /// Returns a function that gives each frame's time. Returns an empty function if the times
    /// follow rate().
    SecondsOfFrame secondsOf() const;

    /// The picture files that the movie is made of; without frames if the input is a movie.
    const Shot& shot() const { return mShot; }

    /// Remarks for the user before the first frame, one line each.
    std::vector<std::string> notes() const;

    /// Returns whether there are frames left to begin.
    bool hasMore() const;

    /// Completes the movie that is written, if any. After an interruption, completes it with
    /// the frames written so far. Returns remarks for the user, one line each. Throws Error if the
    /// movie cannot be written.
    std::vector<std::string> finish(bool isInterrupted);

    /// Returns what could not be read of the source, one line each. Call after the last frame.
    std::vector<std::string> losses() const;

private:
    void openMovie(const MovieRequest& request);
    void openPictures(const MovieRequest& request);
    void openTarget(const MovieRequest& request, const MovieForm& form, int descriptor);

    std::filesystem::path mInput;
    std::filesystem::path mOutput;
    Shot mShot; ///< the input's picture files; without frames if it is a movie
    FrameRate mRate;
    std::size_t mExpected = 0;
    MovieForm mForm;
    std::optional<MovieReader> mReader;
    std::optional<MovieSource> mMovieSource;
    std::optional<PictureSource> mPictureSource;
    std::optional<MovieWriter> mWriter;
    std::optional<MovieSink> mMovieSink;
    std::optional<PictureSink> mPictureSink;
};

} // namespace Kerovane::Host
