#pragma once

#include <filesystem>

namespace Kerovane::Adapters {

/// Where the effect's module stands, in the build tree and in an installation: beside the adapter's
/// own in a bundle, else in the folder tesselune beside the adapter's folder. Empty if that can't be
/// told.
std::filesystem::path InstalledModule();

} // namespace Kerovane::Adapters
