#pragma once

#include "AE_Effect.h"

#include <string>

namespace Kerovane::Host {

/// Formats an effect's packed version: "1.2.0".
std::string VersionText(A_u_long version);

/// Formats a packed version with its stage and build: "1.2.0 (beta, build 5)".
std::string FullVersionText(A_u_long version);

} // namespace Kerovane::Host
