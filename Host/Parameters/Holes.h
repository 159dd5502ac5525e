#pragma once

#include "Host/Parameters/Parameter.h"
#include "Host/Parameters/ParameterSettings.h"

#include <vector>

namespace Kerovane::Host {

/// Returns whether the effect can leave holes in an opaque picture with these settings. Returns
/// true for every effect other than Tesselune.
bool CanLeaveHoles(const std::vector<Parameter>& parameters, const ParameterSettings& settings);

} // namespace Kerovane::Host
