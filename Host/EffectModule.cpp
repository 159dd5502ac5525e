#include "Host/EffectModule.h"

#include "Host/Error.h"

#include <dlfcn.h>
#include <fmt/format.h>

namespace Kerovane::Host {

EffectModule::EffectModule(const std::filesystem::path& path)
    : mLibrary(dlopen(std::filesystem::absolute(path).c_str(), RTLD_NOW | RTLD_LOCAL)) {
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
