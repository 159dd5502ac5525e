#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace Kerovane::Host {

/**
 * Throws Error if OpenGL on this machine cannot draw a picture of `width` by `height` pixels,
 * because the effect would then draw nothing and report no error. Only the first call in a process
 * is expensive. The calling thread's current GL context is not changed.
 */
void CheckDrawable(std::ptrdiff_t width, std::ptrdiff_t height);

/// Returns why OpenGL cannot be used on this machine, as a clause, or nothing. Costs the same as
/// CheckDrawable.
std::optional<std::string> OpenGLProblem();

/// Returns the name of the software rasterizer that draws OpenGL, or nothing if a GPU does. Costs
/// the same as CheckDrawable.
std::optional<std::string> SoftwareRasteriser();

} // namespace Kerovane::Host
