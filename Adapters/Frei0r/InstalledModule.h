#pragma once

#include <filesystem>

namespace Kerovane::Frei0r {

/// Where the effect's module stands beside this one, in the build tree and in an installation,
/// links to this one followed. Whatever the host's working directory is by now.
std::filesystem::path InstalledModule();

} // namespace Kerovane::Frei0r
