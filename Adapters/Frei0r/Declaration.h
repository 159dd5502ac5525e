#pragma once

#include "Adapters/Frei0r/Control.h"

#include <vector>

namespace Kerovane::Frei0r {

/// The controls of the effect's parameters, in its order; none if its module is missing. The effect
/// is asked at the first call. They stay for the rest of the process, as hosts keep pointers to the
/// texts.
const std::vector<Control>& DeclaredControls();

} // namespace Kerovane::Frei0r
