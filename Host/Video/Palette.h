#pragma once

#include "Host/Video/LibAv.h"

namespace Kerovane::Host {

/**
 * The frame, of RGBA of 8 bits, in at most 255 colours and one that is transparent, for what is
 * less than half opaque. The colours are the frame's own if they are few enough, else means of
 * similar ones (median cut).
 */
AvFrame Palettized(const AVFrame& rgba);

} // namespace Kerovane::Host
