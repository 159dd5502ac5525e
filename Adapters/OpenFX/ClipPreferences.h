#pragma once

#include "Adapters/OpenFX/Interface/ImageEffectSuite.h"
#include "Adapters/OpenFX/PropertySet.h"

namespace Kerovane::OpenFX {

/// Writes the forms of source and output to `preferences`. The source keeps its components. The
/// output is premultiplied RGBA if it can have holes, and otherwise like the source. Throws Error
/// if the host refuses.
void DeclareClipPreferences(OfxImageEffectHandle effect, const PropertySet& preferences);

} // namespace Kerovane::OpenFX
