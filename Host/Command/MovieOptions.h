#pragma once

#include "Host/Video/MovieWriter.h"

#include <CLI/App.hpp>

#include <string>

namespace Kerovane::Host {

/** Options of the command line that say how a movie is written. */
class MovieOptions {
public:
    void addTo(CLI::App& command);

    /// Throws Error if an option's value is none.
    MovieSettings settings() const;

    /// One that was given, for those who have no use for it; empty if there is none.
    std::string given() const;

private:
    std::string mCodec;
    std::string mContainer;
    std::string mBitRate;
    std::string mCodecOptions;
    int mQuality = 0; ///< 0: the usual
    int mBits = 0;    ///< 0: the usual
};

/// Reads bits a second: "8M", "1.5M", "800k", "8000000". Throws Error, whose text stands behind the
/// option's name.
std::int64_t ParseBitRate(const std::string& text);

} // namespace Kerovane::Host
