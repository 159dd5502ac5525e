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
     * Returns the renderer to use: the option's, or else `preset`, or else the default of
     * ChooseRenderer(). Prints the remark of ChooseRenderer(). Sets the number of threads of the
     * context's renderer. Throws Error if the option requests OpenGL but OpenGL cannot be used, or
     * if the software renderer is to draw another effect than the installed one.
     */
    Renderer choose(CommandContext& context, std::optional<Renderer> preset = std::nullopt) const;

private:
    std::string mRenderer; ///< empty: not given
    int mThreads = 0;      ///< of the software renderer; 0: one for each core
};

} // namespace Kerovane::Host
