#pragma once

#include "Host/World.h"

namespace Kerovane::Host {

/// Without OpenGL the effect draws nothing and reports nothing, so it is asked for beforehand.
/// Throws Error where there is none or `input` is larger than it can draw.
void CheckOpenGL(const World& input);

} // namespace Kerovane::Host
