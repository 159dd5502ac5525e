#include "Host/Command/UsableOpenGL.h"

#include "Host/Error.h"
#include "OpenGLAvailability.h"
#include "OpenGLDescription.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <string>

namespace Kerovane::Host {

void CheckOpenGL(const World& input) {
    if (const std::optional<std::string> problem = Platform::OpenGLProblem()) {
        throw Error(fmt::format("cannot render: {}", *problem));
    }
    const std::optional<Platform::OpenGLDescription> driver = Platform::DescribeOpenGL();
    const A_long side = std::max(input.width(), input.height());
    if (driver && side > driver->largestSide) {
        throw Error(fmt::format("cannot render: OpenGL here draws up to {} pixels a side, and the "
                                "picture has {}",
                                driver->largestSide, side));
    }
}

} // namespace Kerovane::Host
