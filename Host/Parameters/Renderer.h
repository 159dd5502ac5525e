#pragma once

#include <string>
#include <vector>

namespace Kerovane::Host {

/// What draws a frame: the effect with OpenGL, or the software renderer, whose picture is the same
/// on every machine. Their random patterns differ.
enum class Renderer { OpenGL, Software };

/// Returns "opengl" and "software", in the order of the enum.
const std::vector<std::string>& RendererNames();

const std::string& NameOf(Renderer renderer);

/// Throws Error if `text` is not a renderer's name.
Renderer ParseRenderer(const std::string& text);

} // namespace Kerovane::Host
