#pragma once

#include "Host/Pixels/PixelView.h"
#include "Software/CellGrid.h"
#include "Software/Fate.h"
#include "Software/MosaicParameters.h"
#include "Software/SizeSearch.h"

#include <cstddef>

namespace Kerovane::Software {

/**
 * Draws the mosaic of one frame on the processor. The size, fate and colour of a cell are decided
 * once, and its rows are filled. The result equals the effect's per-pixel formulas and has the same
 * bytes on every machine, however it is split into bands.
 */
class Mosaic {
public:
    /// For pictures of `width` by `height` pixels, up to 2^24 each.
    Mosaic(const MosaicParameters& parameters, std::ptrdiff_t width, std::ptrdiff_t height);

    /// Returns the number of bands, rows of cells of the normal size; 0 if the picture has no
    /// pixels.
    int bands() const;

    /// Returns the first row of pixels of a band. Returns the picture's height for the band after
    /// the last.
    std::ptrdiff_t top(int band) const { return mGrid.rowEdge(band); }

    /// Draws the bands from `first` up to, but not including, `end` of `in` into `out`, pictures of
    /// the mosaic's size and the same depth that share no memory. Thread-safe.
    void draw(const Host::ConstPixelView& in, const Host::PixelView& out, int first, int end) const;

private:
    bool mIsEmpty;
    bool mUseAlpha;
    CellGrid mGrid;
    SizeSearch mSearch;
    Fate mFate;
};

} // namespace Kerovane::Software
