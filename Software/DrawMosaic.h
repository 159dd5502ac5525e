#pragma once

#include "Host/Pixels/PixelView.h"
#include "Software/MosaicParameters.h"

namespace Kerovane::Software {

/**
 * Draws the mosaic of `in` into `out`, pictures of the same size and depth that share no memory.
 * Uses up to `threads` threads, or one for each core if that is 0. The picture does not depend on
 * their number.
 */
void DrawMosaic(const MosaicParameters& parameters, const Host::ConstPixelView& in,
                const Host::PixelView& out, int threads = 0);

} // namespace Kerovane::Software
