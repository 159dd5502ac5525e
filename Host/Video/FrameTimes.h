#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace Kerovane::Host {

/**
 * Returns the time of frame `number`, counted from 0, of a movie's stream, in the stream's time
 * base. Reads the file up to that frame without decoding. Returns nothing if packets lack times or
 * the stream has fewer frames. Throws Error if the file cannot be read.
 */
std::optional<std::int64_t> TimeOfFrame(const std::filesystem::path& file, int stream,
                                        std::int64_t number);

} // namespace Kerovane::Host
