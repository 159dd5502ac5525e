#pragma once

#include "Adapters/OpenFX/Interface/ImageEffectSuite.h"

namespace Kerovane::OpenFX {

/// Saved projects identify the effect by this name and its major version.
inline constexpr Name kPluginIdentifier = "com.kerovane.tesselune";

/// Describes the effect: its names and its abilities. Throws Error if the host refuses.
void Describe(OfxImageEffectHandle effect);

/// Describes the effect's clips and parameters, which are the same in every context.
void DescribeInContext(OfxImageEffectHandle effect);

} // namespace Kerovane::OpenFX
