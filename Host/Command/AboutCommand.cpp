#include "Host/Command/Commands.h"
#include "Host/Parameters/VersionText.h"
#include "Platform/OpenGL/OpenGLAvailability.h"
#include "Platform/OpenGL/OpenGLDescription.h"

#include <fmt/format.h>

#include <string>

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

void SetUp(CLI::App& command, CommandContext& context) {
    command.callback([&context] {
        FrameRenderer& renderer = context.renderer();
        context.streams().print(fmt::format("{}\nVersion: {}\n{}", renderer.about(),
                                            FullVersionText(renderer.version()), OpenGLText()));
    });
}

const CommandRegistration kAbout({.name = "about",
                                  .description = "Tell the versions of the effect and of OpenGL",
                                  .setUp = SetUp});

} // namespace

} // namespace Kerovane::Host
