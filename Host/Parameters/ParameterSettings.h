#pragma once

#include "Host/Parameters/FrameRate.h"
#include "Host/Parameters/Keyframes.h"
#include "Host/Parameters/ParameterValues.h"

#include <functional>
#include <map>

namespace Kerovane::Host {

/// What a user set, by disk id.
using ParameterSettings = std::map<A_long, Keyframes>;

/// The seconds at which a frame is shown, also between frames.
using SecondsOfFrame = std::function<double(double)>;

/// Whether they are the same at all times.
bool AreConstant(const ParameterSettings& settings);

/// The same as hosts hold it, in time. `secondsOf`, if given, tells when frames are shown that
/// don't come at a constant rate.
ParameterValues ValuesOverTime(const ParameterSettings& settings, FrameRate rate,
                               const SecondsOfFrame& secondsOf = {});

} // namespace Kerovane::Host
