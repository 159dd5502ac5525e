#pragma once

#include <filesystem>

namespace Kerovane::Host {

/// Where the effect's module stands beside this executable, in the build tree and in an
/// installation.
std::filesystem::path InstalledModule();

} // namespace Kerovane::Host
