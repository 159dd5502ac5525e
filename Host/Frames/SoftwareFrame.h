#pragma once

#include "Host/Parameters/Parameter.h"
#include "Host/Parameters/ParameterValues.h"
#include "Host/Pixels/PixelView.h"
#include "Host/Session/Effect.h"
#include "Software/MosaicParameters.h"

#include <vector>

namespace Kerovane::Host {

/// Returns the effect's parameters at `frame` for the software renderer. Rounds them as in the
/// parameter records that the effect would get.
Software::MosaicParameters MosaicParametersOf(const std::vector<Parameter>& parameters,
                                              const ParameterValues& values, const Frame& frame);

/// Draws `in` into `out` with the software renderer. Both may share memory. Uses up to `threads`
/// threads, or one for each core if that is 0. Throws Error if `in` and `out` differ in size or
/// depth.
void DrawSoftwareFrame(const Software::MosaicParameters& parameters, const ConstPixelView& in,
                       const PixelView& out, int threads);

} // namespace Kerovane::Host
