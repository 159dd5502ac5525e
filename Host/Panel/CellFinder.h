#pragma once

#include "Host/Panel/FramePainter.h"

#include <optional>
#include <vector>

namespace Kerovane::Host {

/** One of the pieces that the picture is broken into. */
struct Cell {
    /// Pixels `begin` up to `end` of row `y`.
    struct Run {
        A_long y = 0;
        A_long begin = 0;
        A_long end = 0;
    };

    double referenceX = 0; ///< where it has its colour from, in pixels
    double referenceY = 0;
    std::vector<Run> runs;
};

/** Which cells a frame has. */
class CellFinder {
public:
    /// Draws a picture whose colours are places. Throws Error if that fails.
    CellFinder(FrameRenderer& renderer, const Footage& footage, const Look& look, A_long frame,
               const World& shape);

    /// Nothing if the pixel lies in a hole or on a border.
    std::optional<Cell> cellAt(A_long x, A_long y) const;

private:
    bool isSame(const PF_PixelFloat& pixel, const PF_PixelFloat& other) const;
    Cell::Run runAt(A_long x, A_long y, const PF_PixelFloat& wanted) const;

    World mPlaces;
};

} // namespace Kerovane::Host
