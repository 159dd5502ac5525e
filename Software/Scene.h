#pragma once

#include "Software/CellGrid.h"
#include "Software/Fate.h"
#include "Software/Painter.h"
#include "Software/SizeSearch.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Kerovane::Software {

/// All that decides a frame's cells, and the picture that they are drawn into.
template <typename Channel>
struct Scene {
    const CellGrid& grid;
    const SizeSearch& search;
    const Fate& fate;
    const Painter<Channel>& painter;
    const Host::PixelView& out;

    std::byte* at(std::ptrdiff_t x, std::ptrdiff_t y) const {
        return out.row(y) + x * static_cast<std::ptrdiff_t>(sizeof(Pixel<Channel>));
    }

    /// Fills the pixels of row `y` from `begin` up to, but not including, `end`.
    void fill(const Paint<Channel>& paint, std::ptrdiff_t y, std::ptrdiff_t begin,
              std::ptrdiff_t end) const {
        std::byte* to = at(begin, y);
        for (std::ptrdiff_t x = begin; x < end; ++x, to += sizeof(Pixel<Channel>)) {
            StorePixel(paint.showsPicture ? painter.pixel(paint, x, y) : paint.pixel, to);
        }
    }
};

} // namespace Kerovane::Software
