#pragma once

#include "Benchmarks/BareFrame/BareFrame.h"
#include "Host/Session/Effect.h"

namespace Kerovane::Benchmarks {

/// Returns the parameter values for which the effect draws the same frame as BareFrame.
Host::ParameterValues ValuesOf(const Cells& cells, const std::vector<Host::Parameter>& parameters);

} // namespace Kerovane::Benchmarks
