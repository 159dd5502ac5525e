#pragma once

#include "Host/Pictures/ColourLayers.h"
#include "Host/Pictures/PictureFile.h"
#include "Host/Pictures/StoredPixels.h"
#include "Host/Session/World.h"

#include <OpenImageIO/imageio.h>

namespace Kerovane::Host {

/// 1 to 8: how the picture is stored; 1, upright, if the file says none of these.
int OrientationOf(const OIIO::ImageSpec& layout);

/**
 * Reads the layer of the part that `file` stands at: upright, with straight alpha, over its data
 * window. `stored` is empty unless the part was read so; `layout`, the part's, is turned with the
 * pixels. Throws Error if it can't be read.
 */
World ReadLayer(PictureFile& file, const StoredPixels& stored, const ColourLayer& layer,
                Depth depth, OIIO::ImageSpec& layout);

} // namespace Kerovane::Host
