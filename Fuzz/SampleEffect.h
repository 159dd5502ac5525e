#pragma once

#include "Host/Parameters/Parameter.h"

#include <vector>

namespace Kerovane::Fuzz {

/// The parameters of an effect that has one of each kind, by index, the input layer first.
const std::vector<Host::Parameter>& SampleEffect();

} // namespace Kerovane::Fuzz
