#pragma once

#include "Host/Parameters/FrameRate.h"
#include "Host/Parameters/Keyframes.h"
#include "Host/Parameters/ParameterValues.h"

#include <map>

namespace Kerovane::Host {

/// What a user set, by disk id, in frames.
using ParameterSettings = std::map<A_long, Keyframes>;

/// The same as hosts hold it, in time.
ParameterValues ValuesOverTime(const ParameterSettings& settings, FrameRate rate);

} // namespace Kerovane::Host
