#include "Adapters/Shared/InstalledModule.h"

#include "Host/Session/InstalledFile.h"

#include <system_error>

namespace Kerovane::Adapters {

std::filesystem::path InstalledModule() {
    const std::filesystem::path beside = Host::InstalledFile("Tesselune.so");
    std::error_code error; // an error counts as "does not exist"
    return std::filesystem::exists(beside, error)
               ? beside
               : Host::InstalledFile("../tesselune/Tesselune.so");
}

} // namespace Kerovane::Adapters
