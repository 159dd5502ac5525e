#pragma once

#include "Host/Parameters/Renderer.h"

#include <CLI/App.hpp>

#include <optional>
#include <string>

namespace Kerovane::Host {

class CommandContext;

/** Options of the command line that say what draws the frames. */
class RendererOptions {
public:
    void addTo(CLI::App& command);

    /**
     * Sets up the context's renderer, and returns what to draw with: the option's choice, or
     * `preset`, a preset's, or as configured. Tells what ChooseRenderer remarks. Throws Error if
     * OpenGL is asked for by the option and can't be used, or software for another effect than the
     * installed one.
     */
    Renderer choose(CommandContext& context, std::optional<Renderer> preset = std::nullopt) const;

private:
    std::string mRenderer; ///< empty: as configured
    int mThreads = 0;
};

} // namespace Kerovane::Host
