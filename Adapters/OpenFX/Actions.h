#pragma once

#include "Adapters/OpenFX/Interface/Core.h"

namespace Kerovane::OpenFX {

/// Performs an action of the host. Reports a failure to the user; never throws.
OfxStatus Act(const char* action, const void* handle, OfxPropertySetHandle inArgs,
              OfxPropertySetHandle outArgs) noexcept;

} // namespace Kerovane::OpenFX
