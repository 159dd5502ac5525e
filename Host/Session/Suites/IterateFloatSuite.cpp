#include "Host/Session/Suites/Suites.h"
#include "Host/Session/World.h"

#include <algorithm>
#include <cstddef>

namespace Kerovane::Host {

namespace {

bool IsFloatWorld(const PF_EffectWorld* world) {
    return world != nullptr && DepthOf(*world) == Depth::Float32;
}

/// Returns the part of `area` that lies within both worlds, or all that they have in common if
/// `area` is null.
PF_Rect CommonArea(const PF_Rect* area, const PF_EffectWorld& source,
                   const PF_EffectWorld& destination) {
    const PF_Rect common{.left = 0,
                         .top = 0,
                         .right = std::min(source.width, destination.width),
                         .bottom = std::min(source.height, destination.height)};
    if (area == nullptr) {
        return common;
    }
    return {.left = std::max(area->left, common.left),
            .top = std::max(area->top, common.top),
            .right = std::min(area->right, common.right),
            .bottom = std::min(area->bottom, common.bottom)};
}

PF_PixelFloat* Row(const PF_EffectWorld& world, A_long y) {
    auto* start = reinterpret_cast<std::byte*>(world.data);
    return reinterpret_cast<PF_PixelFloat*>(start + std::ptrdiff_t{y} * world.rowbytes);
}

PF_Err Iterate(PF_InData*, A_long, A_long, PF_EffectWorld* source, const PF_Rect* area,
               void* refcon, PF_IteratePixelFloatFunc pixelFunction, PF_EffectWorld* destination) {
    if (!IsFloatWorld(source) || !IsFloatWorld(destination) || pixelFunction == nullptr) {
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    const PF_Rect common = CommonArea(area, *source, *destination);
    for (A_long y = common.top; y < common.bottom; ++y) {
        PF_PixelFloat* in = Row(*source, y);
        PF_PixelFloat* out = Row(*destination, y);
        for (A_long x = common.left; x < common.right; ++x) {
            const PF_Err error = pixelFunction(refcon, x, y, in + x, out + x);
            if (error != PF_Err_NONE) {
                return error;
            }
        }
    }
    return PF_Err_NONE;
}

} // namespace

const PF_iterateFloatSuite1 kIterateFloatSuite{.iterate = Iterate};

} // namespace Kerovane::Host
