#pragma once

#include "Host/Pixels/PixelView.h"

namespace Kerovane::Host {

/**
 * Copies the pixels of `from` to `to`, whose order of channels and form of alpha they take. Colours
 * are rounded to the nearest and kept within white if channels are whole numbers; those of
 * pixels without alpha, which can't be divided by it, stay as they are. What lies between the rows
 * of `to` is not touched. The views share no memory. Throws Error if they differ in size or depth.
 */
void ConvertPixels(const ConstPixelView& from, const PixelView& to);

} // namespace Kerovane::Host
