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

// OpenGL is queried on short-lived threads, because drivers keep state for each thread that calls
// them, and the caller's thread may belong to a host.

const std::optional<std::string>& Problem() {
    static const std::optional<std::string> kProblem =
        std::async(std::launch::async, Platform::OpenGLProblem).get();
    return kProblem;
}

const std::optional<Platform::OpenGLDescription>& Driver() {
    static const std::optional<Platform::OpenGLDescription> kDriver =
        std::async(std::launch::async, Platform::DescribeOpenGL).get();
    return kDriver;
}

} // namespace

void CheckDrawable(std::ptrdiff_t width, std::ptrdiff_t height) {
    if (const std::optional<std::string> problem = OpenGLProblem()) {
        throw Error(fmt::format("cannot render: {}", *problem));
    }
    const std::ptrdiff_t side = std::max(width, height);
    if (Driver() && side > Driver()->largestSide) {
        throw Error(fmt::format("cannot render: OpenGL here draws up to {} pixels a side, and the "
                                "picture has {}; the software renderer draws it",
                                Driver()->largestSide, side));
    }
}

std::optional<std::string> OpenGLProblem() {
    return Problem();
}

std::optional<std::string> SoftwareRasteriser() {
    if (Driver()) {
        const std::string& renderer = Driver()->renderer;
        for (const char* const name : {"llvmpipe", "softpipe"}) {
            if (renderer.starts_with(name)) {
                return name;
            }
        }
    }
    return std::nullopt;
}

} // namespace Kerovane::Host
