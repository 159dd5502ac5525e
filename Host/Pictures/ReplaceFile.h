#pragma once

#include <cstddef>
#include <filesystem>
#include <span>

namespace Kerovane::Host {

/**
 * Makes `content` the content of the file `target`, whole or not at all: it is written beside the
 * target, which it then takes the place of. Throws Error if that fails; the target is as it was
 * then, and nothing is left beside it.
 */
void ReplaceFile(const std::filesystem::path& target, std::span<const std::byte> content);

} // namespace Kerovane::Host
