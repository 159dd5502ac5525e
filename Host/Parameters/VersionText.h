#pragma once

#include "AE_Effect.h"

#include <string>

namespace Kerovane::Host {

/// The version that an effect packed into `version`: "1.2.0".
std::string VersionText(A_u_long version);

/// The same with its stage and build: "1.2.0 (beta, build 5)".
std::string FullVersionText(A_u_long version);

} // namespace Kerovane::Host
