#pragma once

#include "Host/Pixels/PixelView.h"
#include "Software/CellGrid.h"
#include "Software/Fate.h"
#include "Software/MosaicParameters.h"
#include "Software/SizeSearch.h"

#include <cstddef>

namespace Kerovane::Software {

/**
 * The mosaic of one frame, drawn on the processor. Every cell is decided once, its size, its fate
 * and its colour, and its rows are filled; the picture is the one that the formulas of a single
 * pixel give. It has the same bytes on every machine, drawn in whatever bands.
 */
class Mosaic {
public:
    /// For pictures of `width` by `height` pixels, up to 2^24 each.
    Mosaic(const MosaicParameters& parameters, std::ptrdiff_t width, std::ptrdiff_t height);

    /// A band is a row of cells of the normal size. None if the picture has no pixels.
    int bands() const;

    /// The first row of pixels of a band; of the one behind the last, the picture's height.
    std::ptrdiff_t top(int band) const { return mGrid.rowEdge(band); }

    /// Draws the bands from `first` up to, but not including, `end` of `in` into `out`, pictures of
    /// the mosaic's size and one depth that share no memory. Threads may draw at the same time.
    void draw(const Host::ConstPixelView& in, const Host::PixelView& out, int first, int end) const;

private:
    bool mIsEmpty;
    bool mUseAlpha;
    CellGrid mGrid;
    SizeSearch mSearch;
    Fate mFate;
};

} // namespace Kerovane::Software
