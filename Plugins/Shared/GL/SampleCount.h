#pragma once

namespace Kerovane::Tesselune {

/**
 * Samples a pixel for a multisampled target in the current context: 8, or the most that the driver
 * has, or 0 on a software rasteriser, where the same picture comes faster so.
 */
int ColorSampleCount();

} // namespace Kerovane::Tesselune
