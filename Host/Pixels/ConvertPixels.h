#pragma once

#include "Host/Pixels/PixelView.h"

namespace Kerovane::Host {

/**
 * Copies the pixels of `from` to `to` and converts them to the channel order and form of alpha of
 * `to`. Integer channels that are multiplied or divided by alpha are rounded to nearest and limited
 * to white. Conversion to straight alpha leaves the colour unchanged if alpha is 0. Bytes between
 * the rows of `to` are not written. The two views must not overlap. Throws Error if they differ in
 * size or depth.
 */
void ConvertPixels(const ConstPixelView& from, const PixelView& to);

} // namespace Kerovane::Host
