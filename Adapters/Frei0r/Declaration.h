#pragma once

#include "Adapters/Frei0r/Control.h"

#include <vector>

namespace Kerovane::Frei0r {

/**
 * The controls of the effect's parameters, in its order; none where its module is missing. The
 * effect is asked at the first call, without being set up: hosts list plug-ins that nobody uses,
 * and OpenGL is none of that. They stay for the rest of the process, as hosts keep pointers to the
 * texts.
 */
const std::vector<Control>& DeclaredControls();

} // namespace Kerovane::Frei0r
