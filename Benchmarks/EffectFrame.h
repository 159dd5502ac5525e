#pragma once

#include "Benchmarks/BareFrame/BareFrame.h"
#include "Host/Session/Effect.h"

namespace Kerovane::Benchmarks {

/// The parameter values with which the effect draws the frame that BareFrame draws.
Host::ParameterValues ValuesOf(const Cells& cells, const std::vector<Host::Parameter>& parameters);

} // namespace Kerovane::Benchmarks
