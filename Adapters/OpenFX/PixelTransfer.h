#pragma once

#include "Adapters/OpenFX/HostPixels.h"
#include "Adapters/OpenFX/Span.h"

namespace Kerovane::OpenFX {

/**
 * Fills `to`, of an effect's own order of channels, with the pixels of `from` at `columns` and
 * `rows`. Pixels without a place are transparent, or black if `from` is opaque. Colours stay
 * multiplied by alpha, or not, as they are.
 */
void ReadPixels(const HostPixels& from, const Places& columns, const Places& rows,
                const Host::PixelView& to);

/// Fills `to` with the pixels of `from`, of an effect's own order of channels, at `columns` and
/// `rows`. Alpha is left out if `to` holds none. Whole numbers are rounded to the nearest.
void WritePixels(const Host::ConstPixelView& from, const Places& columns, const Places& rows,
                 const HostPixels& to);

/// Makes all pixels 0: black, and transparent if they have an alpha.
void ClearPixels(const HostPixels& pixels);

} // namespace Kerovane::OpenFX
