#pragma once

#include <glbinding/gl/enum.h>

namespace Kerovane::Tesselune {

/**
 * Returns the number of samples per pixel for a multisampled target of `format` in the current
 * context: 8, or the driver's maximum if that is lower. Returns 0 on a software rasteriser, where
 * samples only cost time; the picture then differs at most by rounding along the diagonal between
 * the quad's two triangles.
 */
int ColorSampleCount(gl::GLenum format);

} // namespace Kerovane::Tesselune
