#include "Host/Command/InstalledModule.h"

namespace Kerovane::Host {

std::filesystem::path InstalledModule() {
    const std::filesystem::path bin = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    return bin.parent_path() / TESSELUNE_MODULE_DIRECTORY / "Tesselune.so";
}

} // namespace Kerovane::Host
