#pragma once

#include "Adapters/OpenFX/Interface/ImageEffectSuite.h"
#include "Adapters/OpenFX/PropertySet.h"

namespace Kerovane::OpenFX {

/// Tells in `preferences` which form the output has: premultiplied RGBA if there can be holes, else
/// that of the source. Throws Error if the host refuses.
void DeclareClipPreferences(OfxImageEffectHandle effect, const PropertySet& preferences);

} // namespace Kerovane::OpenFX
