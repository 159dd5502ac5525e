#pragma once

#include "Software/FillRun.h"
#include "Software/Scene.h"

#include <cmath>

namespace Kerovane::Software {

/**
 * Draws cells narrower than a pixel. Most of them contain one pixel of a row or none, so the
 * formulas are evaluated pixel by pixel.
 */
template <typename Channel>
class NarrowCells {
public:
    explicit NarrowCells(const Scene<Channel>& scene) : mScene(scene) {}

    void draw(int band) {
        for (std::ptrdiff_t y = mScene.grid.rowEdge(band); y < mScene.grid.rowEdge(band + 1); ++y) {
            mCells.clear();
            for (std::ptrdiff_t x = 0; x < mScene.out.width; ++x) {
                mCells.add(pointOf(x, y, band));
            }
            mCells.paint(mScene.fate, mScene.painter);
            for (std::ptrdiff_t x = 0; x < mScene.out.width; ++x) {
                const auto cell = static_cast<std::size_t>(x);
                FillRun(mScene.out.row(y), x, x + 1, mScene.out.width, mCells.pixel(cell));
            }
            for (std::ptrdiff_t x = 0; mCells.anyShows() && x < mScene.out.width; ++x) {
                const auto cell = static_cast<std::size_t>(x);
                mCells.drawShowing(cell, mScene.painter, mScene.out, y, x, x + 1);
            }
        }
    }

private:
    /// Returns the reference point of the cell that contains the pixel.
    Location pointOf(std::ptrdiff_t x, std::ptrdiff_t y, int band) const {
        const CellGrid& grid = mScene.grid;
        const float inGrid = static_cast<float>(x) + grid.shift(y);
        const float normalColumn = grid.columnAt(inGrid);
        const int rung = mScene.search.rungAt(normalColumn, static_cast<float>(band));
        const float column = std::floor(std::ldexp(normalColumn, -rung));
        const auto row = static_cast<float>(band >> rung);
        if (grid.shape() == Shape::Square) {
            return grid.centre(rung, column, row);
        }
        const bool isUpper = grid.isUpper(inGrid - grid.left(rung, column),
                                          static_cast<float>(y) - grid.top(rung, row));
        return isUpper ? grid.upperPoint(rung, column, row) : grid.lowerPoint(rung, column, row);
    }

    Scene<Channel> mScene;
    PaintedCells<Channel> mCells; ///< one for each pixel of a row
};

} // namespace Kerovane::Software
