#pragma once

#include <filesystem>

namespace Kerovane::Host {

/**
 * The file or folder at `path` relative to the folder of the file that this code is linked into, a
 * program or a shared library, with links to that file followed. The working directory may change.
 * Empty if the system doesn't tell that file.
 */
std::filesystem::path InstalledFile(const std::filesystem::path& path);

} // namespace Kerovane::Host
