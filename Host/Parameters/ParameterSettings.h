#pragma once

#include "Host/Parameters/FrameRate.h"
#include "Host/Parameters/Keyframes.h"
#include "Host/Parameters/ParameterValues.h"

#include <functional>
#include <map>

namespace Kerovane::Host {

/// The user's settings by disk id. Parameters that are not set are absent.
using ParameterSettings = std::map<A_long, Keyframes>;

/// Returns the time in seconds at which a frame is shown; frame numbers may be fractional.
using SecondsOfFrame = std::function<double(double)>;

/// Returns whether no setting changes over time.
bool AreConstant(const ParameterSettings& settings);

/// Returns the settings as functions of time. `secondsOf`, if given, returns the times of frames of
/// a variable frame rate.
ParameterValues ValuesOverTime(const ParameterSettings& settings, FrameRate rate,
                               const SecondsOfFrame& secondsOf = {});

} // namespace Kerovane::Host
