#pragma once

#include "Host/Pixels/PixelView.h"
#include "Host/Session/World.h"

namespace Kerovane::Host {

inline PixelView ViewOf(World& world) {
    return {.top = world.bytes().data(),
            .rowBytes = world.rowBytes(),
            .width = world.width(),
            .height = world.height(),
            .depth = world.depth()};
}

inline ConstPixelView ViewOf(const World& world) {
    return {.top = world.bytes().data(),
            .rowBytes = world.rowBytes(),
            .width = world.width(),
            .height = world.height(),
            .depth = world.depth()};
}

} // namespace Kerovane::Host
