#include "Host/Command/RendererOptions.h"

#include "Host/Command/CommandContext.h"
#include "Host/Command/ValueTypes.h"
#include "Host/Frames/RendererChoice.h"
#include "Host/Text/Error.h"

#include <CLI/Validators.hpp>
#include <fmt/format.h>

namespace Kerovane::Host {

void RendererOptions::addTo(CLI::App& command) {
    constexpr int kMostThreads = 256;
    command
        .add_option(
            "--renderer", mRenderer,
            fmt::format("what draws; software gives the same on every machine [${}, or opengl]",
                        kRendererVariable))
        ->type_name(ChoiceType(RendererNames()))
        ->group("Rendering");
    command
        .add_option("--render-threads", mThreads, "threads of the software renderer [one a core]")
        ->check(CLI::Range(1, kMostThreads).description(""))
        ->type_name("N")
        ->group("Rendering");
}

Renderer RendererOptions::choose(CommandContext& context, std::optional<Renderer> preset) const {
    std::optional<Renderer> wanted = preset;
    if (!mRenderer.empty()) {
        try {
            wanted = ParseRenderer(mRenderer);
        } catch (const Error& error) {
            throw Error(fmt::format("--renderer {}", error.what()));
        }
    }
    FrameRenderer& renderer = context.renderer();
    renderer.setThreads(mThreads);
    const bool mustBeOpenGL = !mRenderer.empty() && wanted == Renderer::OpenGL;
    const RendererChoice choice = ChooseRenderer(wanted);
    if (mustBeOpenGL || (context.hasForeignEffect() && !choice.remark.empty())) {
        renderer.checkDrawable();
    }
    if (choice.renderer == Renderer::Software && context.hasForeignEffect()) {
        throw Error(
            "the software renderer draws the installed effect, not one given with --effect");
    }
    if (!choice.remark.empty()) {
        context.streams().complain(choice.remark);
    }
    return choice.renderer;
}

} // namespace Kerovane::Host
