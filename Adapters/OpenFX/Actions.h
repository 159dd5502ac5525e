#pragma once

#include "Adapters/OpenFX/Interface/Core.h"

namespace Kerovane::OpenFX {

/// Does what the host asks for. A failure is told to the host's user; nothing is thrown.
OfxStatus Act(const char* action, const void* handle, OfxPropertySetHandle inArgs,
              OfxPropertySetHandle outArgs) noexcept;

} // namespace Kerovane::OpenFX
