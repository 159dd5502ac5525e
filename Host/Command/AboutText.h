#pragma once

#include "Host/Session/Effect.h"

#include <string>

namespace Kerovane::Host {

/// The effect's about text and version, and the OpenGL driver that it renders with.
std::string AboutText(Effect& effect);

} // namespace Kerovane::Host
