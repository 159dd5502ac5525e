#pragma once

#include "AE_Effect.h"

#include <filesystem>
#include <memory>

namespace Kerovane::Host {

/** An effect's shared library. It stays loaded while the object exists. */
class EffectModule {
public:
    /// Loads the file at `path`, without searching the loader's library path. Throws Error if it
    /// cannot be loaded or does not export an effect's entry point.
    explicit EffectModule(const std::filesystem::path& path);

    PF_EffectEntry entry() const { return mEntry; }

private:
    struct Unload {
        void operator()(void* library) const;
    };

    std::unique_ptr<void, Unload> mLibrary;
    PF_EffectEntry mEntry = nullptr;
};

} // namespace Kerovane::Host
