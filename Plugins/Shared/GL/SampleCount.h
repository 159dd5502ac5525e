#pragma once

#include <glbinding/gl/enum.h>

namespace Kerovane::Tesselune {

/**
 * Samples a pixel for a multisampled target of `format` in the current context: 8, or fewer if the
 * driver has no more for it. 0 on a software rasteriser, which is faster so; the picture then
 * differs by no more than rounding along the diagonal between the two triangles of the pass.
 */
int ColorSampleCount(gl::GLenum format);

} // namespace Kerovane::Tesselune
