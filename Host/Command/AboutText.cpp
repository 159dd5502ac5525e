#include "Host/Command/AboutText.h"

#include "Platform/OpenGL/OpenGLAvailability.h"
#include "Platform/OpenGL/OpenGLDescription.h"

#include <fmt/format.h>

#include <array>

namespace Kerovane::Host {

namespace {

std::string VersionText(A_u_long version) {
    constexpr std::array<const char*, 4> kStages{"develop", "alpha", "beta", "release"};
    static_assert(PF_Stage_DEVELOP == 0 && PF_Stage_RELEASE == 3);
    return fmt::format("{}.{}.{} ({}, build {})", PF_Version_VERS(version),
                       PF_Version_SUBVERS(version), PF_Version_BUGVERS(version),
                       kStages[PF_Version_STAGE(version)], PF_Version_BUILD(version));
}

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
    return fmt::format("{}\nVersion: {}\n{}", effect.about(), VersionText(effect.version()),
                       OpenGLText());
}

} // namespace Kerovane::Host
