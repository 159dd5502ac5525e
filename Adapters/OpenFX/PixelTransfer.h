#pragma once

#include "Adapters/OpenFX/HostPixels.h"
#include "Adapters/OpenFX/Span.h"

namespace Kerovane::OpenFX {

/**
 * Fills `to`, in the effect's channel order, with the pixels of `from` at `columns` and `rows`.
 * Pixels without a place become transparent, or black if `from` is opaque. Does not multiply or
 * divide by alpha.
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
