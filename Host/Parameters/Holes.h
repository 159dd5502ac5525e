#pragma once

#include "Host/Parameters/Parameter.h"
#include "Host/Parameters/ParameterSettings.h"

#include <vector>

namespace Kerovane::Host {

/// Whether the effect can leave holes in an opaque picture with these settings. Of effects other
/// than Tesselune it is taken for granted.
bool CanLeaveHoles(const std::vector<Parameter>& parameters, const ParameterSettings& settings);

} // namespace Kerovane::Host
