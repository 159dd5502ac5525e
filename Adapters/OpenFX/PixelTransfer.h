#pragma once

#include "Adapters/OpenFX/HostPixels.h"
#include "Adapters/OpenFX/Span.h"

namespace Kerovane::OpenFX {

/**
 * Fills `to`, in the effect's channel order, with the pixels of `from` at `columns` and `rows`.
 * Pixels whose column or row is kNoPlace become transparent black, or opaque black if `from` is
 * opaque. Colours are not multiplied or divided by alpha.
 */
void ReadPixels(const HostPixels& from, const Places& columns, const Places& rows,
                const Host::PixelView& to);

/// Fills `to` with the pixels of `from`, in the effect's channel order, at `columns` and `rows`.
/// Drops alpha if `to` has none. Rounds integers to the nearest.
void WritePixels(const Host::ConstPixelView& from, const Places& columns, const Places& rows,
                 const HostPixels& to);

/// Sets all channels to 0: black, and transparent if there is an alpha channel.
void ClearPixels(const HostPixels& pixels);

} // namespace Kerovane::OpenFX
