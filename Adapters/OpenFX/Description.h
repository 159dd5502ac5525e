#pragma once

#include "Adapters/OpenFX/Interface/ImageEffectSuite.h"

namespace Kerovane::OpenFX {

/// Saved projects find the effect by this and by its major version.
inline constexpr Name kPluginIdentifier = "com.kerovane.tesselune";

/// Describes the effect: what it is called and what it can do. Throws Error if the host refuses.
void Describe(OfxImageEffectHandle effect);

/// Describes its clips and parameters, which are the same in every context.
void DescribeInContext(OfxImageEffectHandle effect);

} // namespace Kerovane::OpenFX
