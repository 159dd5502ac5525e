#pragma once

#include "Adapters/Frei0r/Control.h"

#include <vector>

namespace Kerovane::Frei0r {

/// Returns the controls of the effect's parameters, in its order; none if its module is missing.
/// The first call asks the effect. The controls live until the process ends, because hosts keep
/// pointers to the texts.
const std::vector<Control>& DeclaredControls();

} // namespace Kerovane::Frei0r
