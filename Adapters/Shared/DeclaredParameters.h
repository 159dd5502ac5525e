#pragma once

#include "Host/Parameters/Parameter.h"

#include <vector>

namespace Kerovane::Adapters {

/**
 * The parameters of the installed effect, by index, the input layer first, and the
 * one that chooses the renderer. The effect is asked
 * without being set up: hosts list plug-ins that nobody uses, and OpenGL is none of that. Its
 * module stays loaded for the rest of the process, as the adapter's does: it would leave memory
 * behind with every unloading. Throws Error if the effect can't be loaded or fails.
 */
std::vector<Host::Parameter> DeclaredParameters();

} // namespace Kerovane::Adapters
