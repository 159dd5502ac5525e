#include "Host/Command/Commands.h"
#include "Host/Parameters/VersionText.h"
#include "Host/Session/InstalledFile.h"
#include "Platform/OpenGL/OpenGLAvailability.h"
#include "Platform/OpenGL/OpenGLDescription.h"

#include <fmt/format.h>

#include <filesystem>
#include <string>
#include <system_error>

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

/// Returns the line that names this installation's OpenFX bundle, or says that there is none.
std::string BundleText() {
    const std::filesystem::path bundle = InstalledFile(TESSELUNE_BUNDLE_PATH);
    std::error_code error; // a file that cannot be examined counts as absent
    return fmt::format("OpenFX bundle: {}\n",
                       std::filesystem::exists(bundle, error) ? bundle.string() : "none");
}

void SetUp(CLI::App& command, CommandContext& context) {
    command.callback([&context] {
        FrameRenderer& renderer = context.renderer();
        context.streams().print(fmt::format("{}\nVersion: {}\n{}{}", renderer.about(),
                                            FullVersionText(renderer.version()), OpenGLText(),
                                            BundleText()));
    });
}

const CommandRegistration kAbout({.name = "about",
                                  .description = "Print the versions of the effect and of OpenGL",
                                  .setUp = SetUp});

} // namespace

} // namespace Kerovane::Host
