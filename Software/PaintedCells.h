#pragma once

#include "Software/Fate.h"
#include "Software/Painter.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace Kerovane::Software {

/** Cells that are decided and painted together, in steps that the compiler makes vectors of. */
template <typename Channel>
class PaintedCells {
public:
    void clear() { mPoints.clear(); }

    /// A cell with that reference point.
    void add(Location point) { mPoints.push_back(point); }

    /// To be called when all cells are there, and before any is drawn.
    void paint(const Fate& fate, const Painter<Channel>& painter) {
        const std::size_t count = mPoints.size();
        mLeft.resize(count);
        mColumns.resize(count);
        mRows.resize(count);
        mColours.resize(count);
        mStraight.resize(count);
        mPixels.resize(count);
        fate.decide(mPoints, mLeft);
        for (std::size_t cell = 0; cell < count; ++cell) {
            mColumns[cell] = painter.columnsAround(mPoints[cell].x);
        }
        for (std::size_t cell = 0; cell < count; ++cell) {
            mRows[cell] = painter.rowsAround(mPoints[cell].y);
        }
        for (std::size_t cell = 0; cell < count; ++cell) {
            mColours[cell] =
                mLeft[cell] != 0 ? painter.colour(mColumns[cell], mRows[cell]) : Rgba{};
            mStraight[cell] = painter.straight(mColours[cell]);
        }
        painter.makePixels(mStraight, mPixels);
        mAnyShows = std::any_of(mColours.begin(), mColours.end(), [&painter](const Rgba& colour) {
            return painter.isShowing(colour);
        });
    }

    /// Of a cell through which nothing shows.
    const Pixel<Channel>& pixel(std::size_t cell) const { return mPixels[cell]; }

    /// Whether the picture shows through any cell.
    bool anyShows() const { return mAnyShows; }

    /// If the picture shows through the cell, draws its pixels in row `y` of `out` from `begin` up
    /// to, but not including, `end`.
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
    std::vector<std::int32_t> mLeft;
    std::vector<Between> mColumns;
    std::vector<Between> mRows;
    std::vector<Rgba> mColours; ///< transparent black if the cell has gone
    std::vector<Rgba> mStraight;
    std::vector<Pixel<Channel>> mPixels;
    bool mAnyShows = false;
};

} // namespace Kerovane::Software
