#pragma once

#include "Host/Parameters/Renderer.h"

#include <optional>
#include <string>

namespace Kerovane::Host {

/// The environment's variable with the name of the renderer that is used if none is asked for.
inline constexpr const char* kRendererVariable = "TESSELUNE_RENDERER";

struct RendererChoice {
    Renderer renderer = Renderer::OpenGL;
    std::string remark; ///< a line that users should read; may be empty
};

/**
 * The renderer that draws if `wanted` is asked for: without that, the environment's, else OpenGL.
 * Where OpenGL can't be used software draws in its place, and the remark says so; no other choice
 * is made of itself. If nothing names a renderer and OpenGL is drawn by the processor, the remark
 * tells of the software renderer. Throws Error if the environment names no renderer.
 */
RendererChoice ChooseRenderer(std::optional<Renderer> wanted);

} // namespace Kerovane::Host
