#pragma once

#include "Host/Pictures/PictureSettings.h"
#include "Host/Video/MovieWriter.h"

#include <CLI/App.hpp>

#include <string>

namespace Kerovane::Host {

/** The command-line options for writing movies and pictures. */
class OutputOptions {
public:
    void addTo(CLI::App& command);

    /// Return the settings for a movie or for pictures. Throw Error if an option's value is not
    /// valid.
    MovieSettings movie() const;
    PictureSettings pictures() const;

    /// Returns whether --container was given, which makes the output a movie.
    bool namesContainer() const { return !mContainer.empty(); }

    /// Return the name of an option that was given and applies to movies or pictures only. Return
    /// an empty text if there is none.
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
    int mQuality = 0; ///< 0: not given
};

/// Reads bits per second: "8M", "1.5M", "800k", "8000000". Throws Error for other text.
std::int64_t ParseBitRate(const std::string& text);

} // namespace Kerovane::Host
