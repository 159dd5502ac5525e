#pragma once

#include <string>
#include <vector>

namespace Kerovane::Host {

/// What draws a frame: the effect with OpenGL, or the processor, which gives the same picture on
/// every machine. Their random patterns differ.
enum class Renderer { OpenGL, Software };

/// "opengl" and "software", in the order of Renderer.
const std::vector<std::string>& RendererNames();

const std::string& NameOf(Renderer renderer);

/// Throws Error if `text` is no renderer's name.
Renderer ParseRenderer(const std::string& text);

} // namespace Kerovane::Host
