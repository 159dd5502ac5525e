#pragma once

#include "Software/Fate.h"
#include "Software/Painter.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace Kerovane::Software {

/** Cells that are decided and painted together, in loops that the compiler vectorises. */
template <typename Channel>
class PaintedCells {
public:
    void clear() { mPoints.clear(); }

    /// Adds the cell with that reference point.
    void add(Location point) { mPoints.push_back(point); }

    /// Decides and paints the cells. Call it after the last `add` and before drawing.
    void paint(const Fate& fate, const Painter<Channel>& painter) {
        const std::size_t count = mPoints.size();
        mRemains.resize(count);
        mColumns.resize(count);
        mRows.resize(count);
        mColours.resize(count);
        mStraight.resize(count);
        mPixels.resize(count);
        fate.decide(mPoints, mRemains);
        for (std::size_t cell = 0; cell < count; ++cell) {
            mColumns[cell] = painter.columnsAround(mPoints[cell].x);
        }
        for (std::size_t cell = 0; cell < count; ++cell) {
            mRows[cell] = painter.rowsAround(mPoints[cell].y);
        }
        for (std::size_t cell = 0; cell < count; ++cell) {
            mColours[cell] =
                mRemains[cell] != 0 ? painter.colour(mColumns[cell], mRows[cell]) : Rgba{};
            mStraight[cell] = painter.straight(mColours[cell]);
        }
        painter.makePixels(mStraight, mPixels);
        mAnyShows = std::any_of(mColours.begin(), mColours.end(), [&painter](const Rgba& colour) {
            return painter.isShowing(colour);
        });
    }

    /// Returns the pixel of a cell through which the picture does not show.
    const Pixel<Channel>& pixel(std::size_t cell) const { return mPixels[cell]; }

    /// Returns whether the picture shows through any cell.
    bool anyShows() const { return mAnyShows; }

    /// Draws the cell's pixels in row `y` of `out` from `begin` up to, but not including, `end`, if
    /// the picture shows through the cell.
    void drawShowing(std::size_t cell, const Painter<Channel>& painter, const Host::PixelView& out,
                     std::ptrdiff_t y, std::ptrdiff_t begin, std::ptrdiff_t end) const {
        if (painter.isShowing(mColours[cell])) {
            constexpr auto kBytes = static_cast<std::ptrdiff_t>(sizeof(Pixel<Channel>));
            for (std::ptrdiff_t x = begin; x < end; ++x) {
                StorePixel(painter.pixel(mColours[cell], x, y), out.row(y) + x * kBytes);
            }
        }
    }

private:
    std::vector<Location> mPoints;
    std::vector<std::int32_t> mRemains;
    std::vector<Between> mColumns;
    std::vector<Between> mRows;
    std::vector<Rgba> mColours; ///< transparent black for a removed cell
    std::vector<Rgba> mStraight;
    std::vector<Pixel<Channel>> mPixels;
    bool mAnyShows = false;
};

} // namespace Kerovane::Software
