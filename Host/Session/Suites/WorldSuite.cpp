#include "Host/Session/Suites/Suites.h"
#include "Host/Session/World.h"

#include <exception>
#include <map>
#include <mutex>
#include <utility>

namespace Kerovane::Host {

namespace {

/// The worlds that effects created, by the address of their pixels.
std::map<const void*, World> mWorlds;
std::mutex mWorldsMutex;

PF_Err New(PF_ProgPtr, A_long width, A_long height, PF_Boolean, PF_PixelFormat format,
           PF_EffectWorld* record) {
    const std::optional<Depth> depth = DepthOf(format);
    if (!depth || record == nullptr || width < 0 || height < 0) {
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    try {
        World world(*depth, width, height); // always zeroed, even if the effect does not ask for it
        *record = world.layer();
        const std::lock_guard lock(mWorldsMutex);
        mWorlds.emplace(record->data, std::move(world));
        return PF_Err_NONE;
    } catch (const std::exception&) {
        return PF_Err_OUT_OF_MEMORY;
    }
}

PF_Err Dispose(PF_ProgPtr, PF_EffectWorld* record) {
    const std::lock_guard lock(mWorldsMutex);
    return record != nullptr && mWorlds.erase(record->data) != 0 ? PF_Err_NONE
                                                                 : PF_Err_BAD_CALLBACK_PARAM;
}

PF_Err GetPixelFormat(const PF_EffectWorld* world, PF_PixelFormat* format) {
    const std::optional<Depth> depth = world != nullptr ? DepthOf(*world) : std::nullopt;
    if (!depth || format == nullptr) {
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    *format = PixelFormatOf(*depth);
    return PF_Err_NONE;
}

} // namespace

const PF_WorldSuite2 kWorldSuite{
    .PF_NewWorld = New, .PF_DisposeWorld = Dispose, .PF_GetPixelFormat = GetPixelFormat};

int LiveWorlds() {
    const std::lock_guard lock(mWorldsMutex);
    return static_cast<int>(mWorlds.size());
}

} // namespace Kerovane::Host
