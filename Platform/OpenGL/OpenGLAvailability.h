#pragma once

#include <optional>
#include <string>

namespace Kerovane::Platform {

/**
 * Why no OpenGL context can be had on this machine, in one sentence; nothing when one can. For
 * whoever loads the effect, which itself draws nothing then and reports no error.
 */
std::optional<std::string> OpenGLProblem();

} // namespace Kerovane::Platform
