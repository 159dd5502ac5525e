#include "Host/Session/InstalledFile.h"

#include <dlfcn.h>
#include <link.h>

#include <system_error>

namespace Kerovane::Host {

namespace {

/// Returns the path of the program or library that contains this code. The loader knows the main
/// program by an empty name.
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
    std::error_code error; // on failure the path is empty
    return std::filesystem::canonical(LoadedFile(), error);
}

/// Determined when the file is loaded, because the path may be relative to the working directory,
/// which can change later.
const std::filesystem::path kOwnFile = OwnFile();

} // namespace

std::filesystem::path InstalledFile(const std::filesystem::path& path) {
    if (kOwnFile.empty()) {
        return {}; // rather than a path relative to the working directory
    }
    return (kOwnFile.parent_path() / path).lexically_normal();
}

} // namespace Kerovane::Host
