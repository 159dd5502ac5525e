#pragma once

#include "Adapters/OpenFX/Interface/ImageEffectSuite.h"
#include "Adapters/OpenFX/PropertySet.h"

namespace Kerovane::OpenFX {

/// Renders what `arguments` ask for, unless the host has given up already. Throws Error, or
/// another exception, if it fails.
void Render(OfxImageEffectHandle effect, const PropertySet& arguments);

} // namespace Kerovane::OpenFX
