#pragma once

#include "Host/Video/LibAv.h"

#include <filesystem>

namespace Kerovane::Host {

/// The name that means standard input or output.
inline constexpr const char* kStandardStream = "-";

/// Opens a movie and detects its streams; "-" is standard input. Throws Error if it is not a movie.
AvInput OpenMovie(const std::filesystem::path& file);

/// Returns the index of the picture stream that players show. Throws Error if there is none.
int VideoStreamOf(AVFormatContext& movie, const std::filesystem::path& file);

} // namespace Kerovane::Host
