#include "Host/Session/Drawable.h"

#include "Host/Text/Error.h"
#include "Platform/OpenGL/OpenGLAvailability.h"
#include "Platform/OpenGL/OpenGLDescription.h"

#include <fmt/format.h>

#include <algorithm>
#include <future>
#include <optional>

namespace Kerovane::Host {

namespace {

/// On a thread of its own: asking makes a context current, and none afterwards.
std::optional<Platform::OpenGLDescription> Driver() {
    return std::async(std::launch::async, Platform::DescribeOpenGL).get();
}

} // namespace

void CheckDrawable(std::ptrdiff_t width, std::ptrdiff_t height) {
    if (const std::optional<std::string> problem = Platform::OpenGLProblem()) {
        throw Error(fmt::format("cannot render: {}", *problem));
    }
    static const std::optional<Platform::OpenGLDescription> kDriver = Driver();
    const std::ptrdiff_t side = std::max(width, height);
    if (kDriver && side > kDriver->largestSide) {
        throw Error(fmt::format("cannot render: OpenGL here draws up to {} pixels a side, and the "
                                "picture has {}",
                                kDriver->largestSide, side));
    }
}

} // namespace Kerovane::Host
