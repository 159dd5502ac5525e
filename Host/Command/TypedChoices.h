#pragma once

#include "Host/Parameters/Parameter.h"

#include <string>
#include <vector>

namespace Kerovane::Host {

/// The words that a popup or a checkbox can be set to, as typed; none for other parameters.
std::vector<std::string> TypedChoices(const Parameter& parameter);

} // namespace Kerovane::Host
