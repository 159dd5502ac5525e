#pragma once

#include "Host/Parameters/Renderer.h"

#include <CLI/App.hpp>

#include <optional>
#include <string>

namespace Kerovane::Host {

class CommandContext;

/** The command-line options that select the renderer. */
class RendererOptions {
public:
    void addTo(CLI::App& command);

    /**
     * Sets up the context's renderer and returns what draws: the option's choice, or else `preset`,
     * or else the configured renderer. Prints the remark of ChooseRenderer. Throws Error if the
     * option requests OpenGL and it cannot be used, or if the software renderer is to draw another
     * effect than the installed one.
     */
    Renderer choose(CommandContext& context, std::optional<Renderer> preset = std::nullopt) const;

private:
    std::string mRenderer; ///< empty: as configured
    int mThreads = 0;
};

} // namespace Kerovane::Host
