#pragma once

#include "Adapters/OpenFX/Interface/ImageEffectSuite.h"
#include "Adapters/OpenFX/PropertySet.h"

namespace Kerovane::OpenFX {

/// Writes the form of the output to `preferences`: premultiplied RGBA if the output can have holes,
/// else that of the source. Throws Error if the host refuses.
void DeclareClipPreferences(OfxImageEffectHandle effect, const PropertySet& preferences);

} // namespace Kerovane::OpenFX
