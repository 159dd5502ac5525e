#pragma once

#include <filesystem>

namespace Kerovane::Host {

/// Whether a file of that name would be a movie, by its extension; "-", the standard stream, is.
bool IsMovieName(const std::filesystem::path& file);

/// Whether the file is to be read as a movie: by its content, or by its name if nobody knows that.
/// An animated GIF is one only if `orPicture` is false.
bool IsMovieFile(const std::filesystem::path& file, bool orPicture);

} // namespace Kerovane::Host
