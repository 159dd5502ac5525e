#pragma once

#include <filesystem>

namespace Kerovane::Host {

/// Returns whether a file with this name is written as a movie, judged by its extension. "-"
/// (standard input or output) is a movie.
bool IsMovieName(const std::filesystem::path& file);

/// Returns whether the file is read as a movie, judged by its content, or else by its name. An
/// animated GIF is a movie unless `orPicture` is true.
bool IsMovieFile(const std::filesystem::path& file, bool orPicture);

} // namespace Kerovane::Host
