#pragma once

#include "Host/Panel/FramePainter.h"

#include <optional>
#include <vector>

namespace Kerovane::Host {

/** A cell of the mosaic. */
struct Cell {
    /// The pixels of row `y` from column `begin` to before `end`.
    struct Run {
        A_long y = 0;
        A_long begin = 0;
        A_long end = 0;
    };

    double referenceX = 0; ///< the place that the cell takes its colour from, in pixels
    double referenceY = 0;
    std::vector<Run> runs;
};

/** Finds the cell at a pixel of a frame. */
class CellFinder {
public:
    /// Renders a picture whose colours are their own coordinates, so that each cell shows those of
    /// its reference point. `shape` gives the size. Throws Error if rendering fails.
    CellFinder(FrameRenderer& renderer, const Footage& footage, const Look& look, A_long frame,
               const World& shape);

    /// Returns the cell at a pixel. Returns nothing if the pixel lies outside the picture, in a
    /// hole or on a cell's border.
    std::optional<Cell> cellAt(A_long x, A_long y) const;

private:
    bool isSame(const PF_PixelFloat& pixel, const PF_PixelFloat& other) const;
    Cell::Run runAt(A_long x, A_long y, const PF_PixelFloat& wanted) const;

    World mPlaces; ///< each pixel's colour is the place that its cell takes its colour from
};

} // namespace Kerovane::Host
