#pragma once

#include "Host/Parameters/Parameter.h"

#include <vector>

namespace Kerovane::Fuzz {

/// Returns the parameters of a sample effect with one parameter of each kind, by index, the input
/// layer first.
const std::vector<Host::Parameter>& SampleEffect();

} // namespace Kerovane::Fuzz
