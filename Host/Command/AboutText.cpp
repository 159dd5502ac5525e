#include "Host/Command/AboutText.h"

#include "Host/Parameters/VersionText.h"
#include "Platform/OpenGL/OpenGLAvailability.h"
#include "Platform/OpenGL/OpenGLDescription.h"

#include <fmt/format.h>

namespace Kerovane::Host {

namespace {

std::string OpenGLText() {
    const auto driver = Platform::DescribeOpenGL();
    if (!driver) {
        return fmt::format("OpenGL: none. {}\n", Platform::OpenGLProblem().value_or(""));
    }
    return fmt::format("OpenGL vendor: {}\nOpenGL renderer: {}\nOpenGL version: {}\n",
                       driver->vendor, driver->renderer, driver->version);
}

} // namespace

std::string AboutText(Effect& effect) {
    return fmt::format("{}\nVersion: {}\n{}", effect.about(), FullVersionText(effect.version()),
                       OpenGLText());
}

} // namespace Kerovane::Host
