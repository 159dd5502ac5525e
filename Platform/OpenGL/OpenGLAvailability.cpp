#include "Platform/OpenGL/OpenGLAvailability.h"

#include "Platform/OpenGL/EglDisplay.h"

namespace Kerovane::Platform {

std::optional<std::string> OpenGLProblem() {
    const EglDisplayChoice& choice = ChosenEglDisplay();
    return choice.display != nullptr ? std::nullopt : std::optional(choice.problem);
}

} // namespace Kerovane::Platform
