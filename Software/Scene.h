#pragma once

#include "Software/CellGrid.h"
#include "Software/Fate.h"
#include "Software/PaintedCells.h"
#include "Software/Painter.h"
#include "Software/SizeSearch.h"

namespace Kerovane::Software {

/// All that decides a frame's cells, and the picture that they are drawn into.
template <typename Channel>
struct Scene {
    const CellGrid& grid;
    const SizeSearch& search;
    const Fate& fate;
    const Painter<Channel>& painter;
    const Host::PixelView& out;
};

} // namespace Kerovane::Software
