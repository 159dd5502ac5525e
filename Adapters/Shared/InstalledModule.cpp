#include "Adapters/Shared/InstalledModule.h"

#include "Host/Session/InstalledModule.h"

namespace Kerovane::Adapters {

std::filesystem::path InstalledModule() {
    return Host::InstalledModule("../tesselune/Tesselune.so");
}

} // namespace Kerovane::Adapters
