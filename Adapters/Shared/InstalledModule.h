#pragma once

#include <filesystem>

namespace Kerovane::Adapters {

/// Where the effect's module stands beside the adapter's own, in the build tree and in an
/// installation: in the folder tesselune beside the adapter's folder. Empty if that can't be told.
std::filesystem::path InstalledModule();

} // namespace Kerovane::Adapters
