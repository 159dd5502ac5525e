#pragma once

#include <filesystem>

namespace Kerovane::Adapters {

/// Returns the path of the effect's module, in the build tree or in an installation: in a bundle
/// beside the adapter's module, else in the folder `tesselune` beside the adapter's folder. Empty
/// if the adapter's own path is unknown.
std::filesystem::path InstalledModule();

} // namespace Kerovane::Adapters
