#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

namespace Kerovane::Host {

/**
 * The time of frame `number`, from 0, of a movie's stream, in the stream's unit, without decoding
 * anything: the file is read up to there. Nothing if its packets have no times, or there are not so
 * many. Throws Error if the file can't be read.
 */
std::optional<std::int64_t> TimeOfFrame(const std::filesystem::path& file, int stream,
                                        std::int64_t number);

} // namespace Kerovane::Host
