#pragma once

#include "AE_Effect.h"

#include <filesystem>
#include <memory>

namespace Kerovane::Host {

/** An effect's shared library, loaded for as long as the object lives. */
class EffectModule {
public:
    /// `path` is a file, never looked up on the loader's search path. Throws Error if it can't
    /// be loaded or has no effect's entry.
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
