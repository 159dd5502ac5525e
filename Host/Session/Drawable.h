#pragma once

#include "A.h"

namespace Kerovane::Host {

/**
 * Throws Error where OpenGL on this machine can't draw a picture of `width` by `height` pixels: the
 * effect draws nothing then and reports nothing. Cheap but for the first call in a process, at
 * which the calling thread has no context current.
 */
void CheckDrawable(A_long width, A_long height);

} // namespace Kerovane::Host
