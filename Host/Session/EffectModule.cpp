#include "Host/Session/EffectModule.h"

#include "Host/Text/Error.h"

#include <dlfcn.h>
#include <fmt/format.h>

#include <system_error>

namespace Kerovane::Host {

namespace {

/// Returns the absolute path, because the loader would search its library path for a name without a
/// slash.
std::filesystem::path Located(const std::filesystem::path& path) {
    std::error_code error;
    std::filesystem::path located = std::filesystem::absolute(path, error);
    if (error) {
        throw Error(fmt::format("cannot load the effect '{}': {}", path.string(), error.message()));
    }
    return located;
}

} // namespace

EffectModule::EffectModule(const std::filesystem::path& path)
    : mLibrary(dlopen(Located(path).c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (mLibrary == nullptr) {
        throw Error(fmt::format("cannot load the effect: {}", dlerror()));
    }
    mEntry = reinterpret_cast<PF_EffectEntry>(dlsym(mLibrary.get(), "EntryPointFunc"));
    if (mEntry == nullptr) {
        throw Error(fmt::format("'{}' is no effect: it has no EntryPointFunc", path.string()));
    }
}

void EffectModule::Unload::operator()(void* library) const {
    dlclose(library);
}

} // namespace Kerovane::Host
