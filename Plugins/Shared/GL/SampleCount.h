#pragma once

namespace Kerovane::Tesselune {

/// Samples a pixel for a multisampled GL_RGBA target in the current context: 8, or what it can do.
int ColorSampleCount();

} // namespace Kerovane::Tesselune
