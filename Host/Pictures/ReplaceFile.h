#pragma once

#include <cstddef>
#include <filesystem>
#include <span>

namespace Kerovane::Host {

/**
 * Replaces the content of the file `target` with `content`, completely or not at all: the content
 * is written to a new file beside the target, which is then renamed. Throws Error if that fails;
 * the target is then unchanged and the new file removed.
 */
void ReplaceFile(const std::filesystem::path& target, std::span<const std::byte> content);

} // namespace Kerovane::Host
