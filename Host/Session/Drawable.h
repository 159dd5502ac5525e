#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace Kerovane::Host {

/**
 * Throws Error if OpenGL on this machine can't draw a picture of `width` by `height` pixels: the
 * effect draws nothing then and reports nothing. Cheap but for the first call in a process. What
 * the calling thread has current stays so.
 */
void CheckDrawable(std::ptrdiff_t width, std::ptrdiff_t height);

/// Why OpenGL draws nothing on this machine, as a clause. Costs as CheckDrawable does.
std::optional<std::string> OpenGLProblem();

/// What OpenGL is drawn by, if that is the processor. Costs as CheckDrawable does.
std::optional<std::string> SoftwareRasteriser();

} // namespace Kerovane::Host
