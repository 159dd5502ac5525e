#include "Host/Frames/RendererChoice.h"

#include "Host/Session/Drawable.h"
#include "Host/Text/Error.h"

#include <fmt/format.h>

#include <cstdlib>

namespace Kerovane::Host {

namespace {

std::optional<Renderer> RendererOfEnvironment() {
    const char* const name = std::getenv(kRendererVariable); // NOLINT(concurrency-mt-unsafe)
    if (name == nullptr || *name == '\0') {
        return std::nullopt;
    }
    try {
        return ParseRenderer(name);
    } catch (const Error& error) {
        throw Error(fmt::format("{} {}", kRendererVariable, error.what()));
    }
}

} // namespace

RendererChoice ChooseRenderer(std::optional<Renderer> wanted) {
    if (!wanted) {
        wanted = RendererOfEnvironment();
    }
    if (wanted == Renderer::Software) {
        return {.renderer = Renderer::Software, .remark = {}};
    }
    if (const std::optional<std::string> problem = OpenGLProblem()) {
        return {.renderer = Renderer::Software,
                .remark = fmt::format("OpenGL cannot be used, and the software renderer draws: {}",
                                      *problem)};
    }
    if (const auto rasteriser = wanted ? std::nullopt : SoftwareRasteriser()) {
        return {.renderer = Renderer::OpenGL,
                .remark = fmt::format("OpenGL is drawn by the processor here ({}): the renderer "
                                      "'software' is many times faster, and the same on every "
                                      "machine",
                                      *rasteriser)};
    }
    return {.renderer = Renderer::OpenGL, .remark = {}};
}

} // namespace Kerovane::Host
