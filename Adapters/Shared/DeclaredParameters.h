#pragma once

#include "Host/Parameters/Parameter.h"

#include <vector>

namespace Kerovane::Adapters {

/**
 * Returns the parameters of the installed effect, by index, with the input layer first and the
 * renderer choice last. Asks the effect without setting it up, which would need OpenGL: hosts also
 * list plug-ins that nobody uses. Keeps the effect's module loaded until the process ends, because
 * each unloading would leak memory. Throws Error if the effect cannot be loaded or fails.
 */
std::vector<Host::Parameter> DeclaredParameters();

} // namespace Kerovane::Adapters
