#pragma once

#include "Host/Parameters/Renderer.h"

#include <optional>
#include <string>

namespace Kerovane::Host {

/// The environment variable that names the default renderer.
inline constexpr const char* kRendererVariable = "TESSELUNE_RENDERER";

struct RendererChoice {
    Renderer renderer = Renderer::OpenGL;
    std::string remark; ///< a line to show to the user; may be empty
};

/**
 * Returns the renderer to use: `wanted`, else the one named by the environment variable, else
 * OpenGL. If OpenGL cannot be used, returns the software renderer, with a remark that says so. If
 * OpenGL was only the default and is drawn by the processor, the remark recommends the software
 * renderer. Throws Error if the environment variable's value is not a renderer's name.
 */
RendererChoice ChooseRenderer(std::optional<Renderer> wanted);

} // namespace Kerovane::Host
