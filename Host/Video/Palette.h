#pragma once

#include "Host/Video/LibAv.h"

namespace Kerovane::Host {

/**
 * Returns an 8-bit RGBA frame reduced to a palette of at most 255 colours and a transparent one.
 * Pixels with less than half opacity become transparent. Keeps the frame's own colours if there are
 * at most 255; otherwise each palette colour is the mean of similar colours (median cut).
 */
AvFrame Palettized(const AVFrame& rgba);

} // namespace Kerovane::Host
