#pragma once

#include "Software/CellGrid.h"
#include "Software/Fate.h"
#include "Software/PaintedCells.h"
#include "Software/Painter.h"
#include "Software/SizeSearch.h"

namespace Kerovane::Software {

/// Everything that drawing a frame needs: what decides its cells, and the picture to draw into.
template <typename Channel>
struct Scene {
    const CellGrid& grid;
    const SizeSearch& search;
    const Fate& fate;
    const Painter<Channel>& painter;
    const Host::PixelView& out;
};

} // namespace Kerovane::Software
