#pragma once

#include "Host/Parameters/Parameter.h"
#include "Host/Parameters/ParameterValues.h"
#include "Host/Pixels/PixelView.h"
#include "Host/Session/Effect.h"
#include "Software/MosaicParameters.h"

#include <vector>

namespace Kerovane::Host {

/// The effect's parameters at `frame` for the software renderer, with the precision of the records
/// that the effect would get.
Software::MosaicParameters MosaicParametersOf(const std::vector<Parameter>& parameters,
                                              const ParameterValues& values, const Frame& frame);

/// Draws `in` into `out`, which may share memory with it, without OpenGL. `threads` as for
/// DrawMosaic. Throws Error if they differ in size or depth.
void DrawSoftwareFrame(const Software::MosaicParameters& parameters, const ConstPixelView& in,
                       const PixelView& out, int threads);

} // namespace Kerovane::Host
