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

/// What is to be rendered from or to a movie.
struct MovieRequest {
    ShotRequest shot;
    bool fromMovie = false;
    bool toMovie = false;
    std::optional<FrameRate> rate; ///< of pictures; 24 a second if it isn't given
    MovieSettings settings;        ///< of a movie that is written
    PictureSinkSetting pictures;   ///< of pictures that are written
};

/** A rendering from a movie, to a movie, or both: where its frames come from and where they go. */
class MovieJob {
public:
    /// Opens both ends. Throws Error if the request can't be carried out.
    MovieJob(const MovieRequest& request, StandardStreams& streams);

    /// Has frames drawn as they are stored if they are encoded so too. `drawing` is the same for
    /// all frames.
    void drawAsStored(const ShotDrawing& drawing);

    FrameSource& source();
    FrameSink& sink();

    /// How many frames there seem to be; 0 if nobody knows.
    std::size_t framesExpected() const { return mExpected; }

    FrameRate rate() const { return mRate; }

    /// When frames are shown; empty if they come at that rate.
    SecondsOfFrame secondsOf() const;

    /// The pictures that the movie is made of.
    const Shot& shot() const { return mShot; }

    /// What is other than a user might think, a line each; before the first frame.
    std::vector<std::string> notes() const;

    /// Whether there are frames that were not begun.
    bool hasMore() const;

    /// Ends the movie that is written. Returns what a user has to know of it, a line each. Throws
    /// Error if the movie can't be written.
    std::vector<std::string> finish(bool isInterrupted);

    /// What of the source could not be had, a line each; after the last frame.
    std::vector<std::string> losses() const;

private:
    void openMovie(const MovieRequest& request);
    void openPictures(const MovieRequest& request);
    void openTarget(const MovieRequest& request, const MovieForm& form, int descriptor);

    std::filesystem::path mInput;
    std::filesystem::path mOutput;
    Shot mShot; ///< of pictures
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
