#pragma once

#include <filesystem>

namespace Kerovane::Host {

/**
 * Returns the normalized path of `path` relative to the folder of the program or shared library
 * that contains this code, with symbolic links to that file resolved. Does not depend on the
 * current working directory. Returns an empty path if the system does not tell where the file is.
 */
std::filesystem::path InstalledFile(const std::filesystem::path& path);

} // namespace Kerovane::Host
