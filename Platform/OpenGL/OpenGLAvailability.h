#pragma once

#include <optional>
#include <string>

namespace Kerovane::Platform {

/**
 * Why no OpenGL context can be had on this machine, in one sentence; nothing if one can. For
 * whoever loads the effect, which itself gives transparent pictures then and reports no error.
 */
std::optional<std::string> OpenGLProblem();

} // namespace Kerovane::Platform
