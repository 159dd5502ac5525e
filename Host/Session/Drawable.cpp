#include "Host/Session/Drawable.h"

#include "Host/Text/Error.h"
#include "Platform/OpenGL/OpenGLAvailability.h"
#include "Platform/OpenGL/OpenGLDescription.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

namespace Kerovane::Host {

void CheckDrawable(A_long width, A_long height) {
    if (const std::optional<std::string> problem = Platform::OpenGLProblem()) {
        throw Error(fmt::format("cannot render: {}", *problem));
    }
    static const std::optional<Platform::OpenGLDescription> kDriver = Platform::DescribeOpenGL();
    const A_long side = std::max(width, height);
    if (kDriver && side > kDriver->largestSide) {
        throw Error(fmt::format("cannot render: OpenGL here draws up to {} pixels a side, and the "
                                "picture has {}",
                                kDriver->largestSide, side));
    }
}

} // namespace Kerovane::Host
