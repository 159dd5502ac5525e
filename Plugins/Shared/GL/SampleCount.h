#pragma once

namespace Kerovane::Tesselune {

/**
 * Samples a pixel for a multisampled target in the current context: 8, or fewer if the driver has
 * no more for all formats. 0 on a software rasteriser, which is faster so; the picture then differs
 * by no more than rounding along the diagonal between the two triangles of the pass.
 */
int ColorSampleCount();

} // namespace Kerovane::Tesselune
