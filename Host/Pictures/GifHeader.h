#pragma once

#include <filesystem>

namespace Kerovane::Host {

/**
 * Whether a file is a GIF picture, whatever its name, of more pixels than OpenImageIO's reader can
 * count: it writes anywhere in memory then, before it says how large the picture is. False for a
 * file that can't be read.
 */
bool IsGifBeyondItsReader(const std::filesystem::path& file);

} // namespace Kerovane::Host
