#include "Adapters/Frei0r/InstalledModule.h"

#include <dlfcn.h>

#include <system_error>

namespace Kerovane::Frei0r {

namespace {

std::filesystem::path OwnFile() {
    Dl_info info{};
    std::error_code error;
    return dladdr(reinterpret_cast<void*>(&OwnFile), &info) != 0
               ? std::filesystem::canonical(info.dli_fname, error)
               : std::filesystem::path();
}

/// Found out as the module is loaded: a path relative to the working directory still holds then.
const std::filesystem::path kOwnFile = OwnFile();

} // namespace

std::filesystem::path InstalledModule() {
    if (kOwnFile.empty()) {
        return {}; // and not a path relative to the working directory
    }
    return kOwnFile.parent_path().parent_path() / "tesselune" / "Tesselune.so";
}

} // namespace Kerovane::Frei0r
