#pragma once

#include "Host/Session/World.h"

#include <OpenImageIO/imageio.h>

namespace Kerovane::Host {

/** A picture file's content: its pixels as a layer, and what the file says beside them. */
struct Picture {
    World world;
    OIIO::ImageSpec origin; ///< as the file declared it; the world may differ from it in depth
};

} // namespace Kerovane::Host
