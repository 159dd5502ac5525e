#pragma once

#include "Host/Video/LibAv.h"

#include <filesystem>

namespace Kerovane::Host {

/// The name that stands for standard input or output.
inline constexpr const char* kStandardStream = "-";

/// Opens a movie and looks for its streams; "-" is standard input. Throws Error if it is none.
AvInput OpenMovie(const std::filesystem::path& file);

/// The stream of moving pictures that players show. Throws Error if there is none.
int VideoStreamOf(AVFormatContext& movie, const std::filesystem::path& file);

} // namespace Kerovane::Host
