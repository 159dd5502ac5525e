#include "Host/Session/InstalledFile.h"

#include <dlfcn.h>
#include <link.h>

#include <system_error>

namespace Kerovane::Host {

namespace {

/// The file that this code is linked into as the loader knows it. A program has no name there.
std::filesystem::path LoadedFile() {
    Dl_info info{};
    void* entry = nullptr;
    if (dladdr1(reinterpret_cast<void*>(&LoadedFile), &info, &entry, RTLD_DL_LINKMAP) == 0) {
        return {};
    }
    const std::filesystem::path name = static_cast<const link_map*>(entry)->l_name;
    return name.empty() ? "/proc/self/exe" : name;
}

std::filesystem::path OwnFile() {
    std::error_code error; // leaves the path empty
    return std::filesystem::canonical(LoadedFile(), error);
}

/// Found out as the file is loaded: a name relative to the working directory still holds then.
const std::filesystem::path kOwnFile = OwnFile();

} // namespace

std::filesystem::path InstalledFile(const std::filesystem::path& path) {
    if (kOwnFile.empty()) {
        return {}; // and not a path relative to the working directory
    }
    return (kOwnFile.parent_path() / path).lexically_normal();
}

} // namespace Kerovane::Host
