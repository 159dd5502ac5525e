#pragma once

#include "Adapters/OpenFX/Interface/ImageEffectSuite.h"
#include "Adapters/OpenFX/PropertySet.h"

namespace Kerovane::OpenFX {

/// Performs the render action with `arguments`. Does nothing if the host has aborted it. Throws
/// Error, or another exception, on failure.
void Render(OfxImageEffectHandle effect, const PropertySet& arguments);

} // namespace Kerovane::OpenFX
