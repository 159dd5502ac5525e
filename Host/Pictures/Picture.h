#pragma once

#include "Host/Pictures/OtherChannels.h"
#include "Host/Session/World.h"

#include <OpenImageIO/imageio.h>

#include <string>
#include <vector>

namespace Kerovane::Host {

/// How a file holds its picture.
struct PictureForm {
    bool isGrey = false;
    bool hasAlpha = true;
    std::string format{}; ///< OpenImageIO's name of it; empty if there is no such file
};

/** A picture file's content: its pixels as a layer, and what the file says beside them. */
struct Picture {
    World world;
    OIIO::ImageSpec origin; ///< as the file declared it; the world may differ from it in depth
    PictureForm form{};
    OtherChannels others{};
    std::vector<std::string> losses{}; ///< what of the file isn't here, a line each
};

} // namespace Kerovane::Host
