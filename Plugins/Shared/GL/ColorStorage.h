#pragma once

#include <glbinding/gl/enum.h>

namespace Kerovane::Tesselune {

/// The internal format of a frame's colour targets. The build sets it for each module: GL_RGBA, or
/// GL_RGBA32F, which neither clamps nor rounds.
inline constexpr gl::GLenum kColorStorage = gl::TESSELUNE_COLOR_STORAGE;

} // namespace Kerovane::Tesselune
