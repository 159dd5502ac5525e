#pragma once

#include "Host/Pictures/PictureSettings.h"
#include "Host/Video/MovieWriter.h"

#include <CLI/App.hpp>

#include <string>

namespace Kerovane::Host {

/** Options of the command line that say how movies and pictures are written. */
class OutputOptions {
public:
    void addTo(CLI::App& command);

    /// Each throws Error if an option's value is none.
    MovieSettings movie() const;
    PictureSettings pictures() const;

    /// Whether a container is named, so that the output is a movie.
    bool namesContainer() const { return !mContainer.empty(); }

    /// One that was given and is for movies alone, or for pictures alone; empty if there is none.
    std::string givenForMovies() const;
    std::string givenForPictures() const;

private:
    std::string mCodec;
    std::string mContainer;
    std::string mBitRate;
    std::string mCodecOptions;
    std::string mChannels;
    std::string mCompression;
    std::string mBits;
    int mQuality = 0; ///< 0: the usual
};

/// Reads bits a second: "8M", "1.5M", "800k", "8000000". Throws Error for other text.
std::int64_t ParseBitRate(const std::string& text);

} // namespace Kerovane::Host
