#pragma once

#include "Host/Pictures/ColourLayers.h"
#include "Host/Pictures/PictureFile.h"
#include "Host/Pictures/StoredPixels.h"
#include "Host/Session/World.h"

#include <OpenImageIO/imageio.h>

namespace Kerovane::Host {

/// Returns the orientation of the stored picture, 1 to 8. Returns 1, upright, if the file states
/// none or an invalid one.
int OrientationOf(const OIIO::ImageSpec& layout);

/**
 * Reads a layer of the current part of `file`: upright, with straight alpha, over the data window.
 * `stored` holds the part's pixels if they were read already, and is empty otherwise. `layout` is
 * the part's and is updated if the picture is turned upright. Throws Error if the layer cannot be
 * read.
 */
World ReadLayer(PictureFile& file, const StoredPixels& stored, const ColourLayer& layer,
                Depth depth, OIIO::ImageSpec& layout);

} // namespace Kerovane::Host
