#pragma once

#include <optional>
#include <string>

namespace Kerovane::Platform {

/**
 * Returns one sentence that says why this machine offers no OpenGL context; nothing if it does. Ask
 * before loading the effect: without a context the effect reports no error and draws transparent
 * pictures.
 */
std::optional<std::string> OpenGLProblem();

} // namespace Kerovane::Platform
