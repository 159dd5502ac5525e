#include "Host/Command/InstalledModule.h"

namespace Kerovane::Host {

std::filesystem::path InstalledModule() {
    const std::filesystem::path bin = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    return (bin / TESSELUNE_MODULE_PATH / "Tesselune.so").lexically_normal();
}

} // namespace Kerovane::Host
