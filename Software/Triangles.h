#pragma once

#include "Software/FillRun.h"
#include "Software/Scene.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace Kerovane::Software {

/**
 * Draws triangular cells. A row of pixels crosses a rectangle's left edge, its cut and its right
 * edge; these crossings are computed for the whole row first.
 */
template <typename Channel>
class Triangles {
public:
    explicit Triangles(const Scene<Channel>& scene)
        : mScene(scene), mSearched(scene.search, scene.grid.columns()) {}

    void draw(int band) {
        decide(band);
        for (std::ptrdiff_t y = mScene.grid.rowEdge(band); y < mScene.grid.rowEdge(band + 1); ++y) {
            cross(y, band);
            draw(y);
        }
    }

private:
    /// Returns the first pixel of a row, moved right by `shift`, that lies `distance` or more to
    /// the right of `left`. The first guess may be off by one, so the pixels around it are tested
    /// with the per-pixel formula.
    static std::int32_t firstPixel(float shift, float left, float distance, std::int32_t width) {
        const auto guess = left + distance - shift;
        auto x =
            static_cast<std::int32_t>(std::min(std::max(guess, -1.0F), static_cast<float>(width))) -
            1;
        const auto isBefore = [=](std::int32_t pixel) {
            return (static_cast<float>(pixel) + shift) - left >= distance ? 0 : 1;
        };
        x += isBefore(x) + isBefore(x + 1) + isBefore(x + 2);
        return std::min(std::max(x, 0), width);
    }

    void decide(int band) {
        mRungs.clear();
        mLefts.clear();
        mRights.clear();
        mCells.clear();
        mSearched.moveTo(band);
        const CellGrid& grid = mScene.grid;
        const auto columnOf = [&grid](std::ptrdiff_t x, std::ptrdiff_t y) {
            return static_cast<int>(grid.columnAt(static_cast<float>(x) + grid.shift(y)));
        };
        const int last = columnOf(mScene.out.width - 1, grid.rowEdge(band + 1) - 1);
        for (int column = columnOf(0, grid.rowEdge(band)); column <= last;) {
            const int rung = mSearched.rungAt(column);
            const int index = column >> rung;
            const int next = std::min((index + 1) << rung, grid.columns());
            const auto cellColumn = static_cast<float>(index);
            const auto cellRow = static_cast<float>(band >> rung);
            mRungs.push_back(static_cast<std::size_t>(rung));
            mLefts.push_back(grid.left(rung, cellColumn));
            mRights.push_back(grid.columnEdge(next));
            mCells.add(grid.lowerPoint(rung, cellColumn, cellRow));
            mCells.add(grid.upperPoint(rung, cellColumn, cellRow));
            column = next;
        }
        mCells.paint(mScene.fate, mScene.painter);
        mDistances.resize(mRungs.size());
        mCuts.resize(mRungs.size());
        mEnds.resize(mRungs.size());
    }

    void cross(std::ptrdiff_t y, int band) {
        const CellGrid& grid = mScene.grid;
        std::array<float, CellGrid::kMostRungs + 1>
            distances{}; // from the left edge to the cut, by rung
        for (int rung = 0; rung <= mScene.search.rungs(); ++rung) {
            const float top = grid.top(rung, static_cast<float>(band >> rung));
            distances[static_cast<std::size_t>(rung)] = grid.cut(static_cast<float>(y) - top);
        }
        for (std::size_t index = 0; index < mRungs.size(); ++index) {
            mDistances[index] = distances[mRungs[index]];
        }
        const float shift = grid.shift(y);
        const auto width = static_cast<std::int32_t>(mScene.out.width);
        for (std::size_t index = 0; index < mEnds.size(); ++index) {
            mEnds[index] = firstPixel(shift, 0, mRights[index], width);
        }
        for (std::size_t index = 0; index < mCuts.size(); ++index) {
            const std::int32_t cut = firstPixel(shift, mLefts[index], mDistances[index], width);
            mCuts[index] = std::min(cut, mEnds[index]);
        }
    }

    void draw(std::ptrdiff_t y) {
        std::byte* const row = mScene.out.row(y);
        forRuns([this, row](std::size_t cell, std::int32_t begin, std::int32_t end) {
            FillRun(row, begin, end, mScene.out.width, mCells.pixel(cell));
        });
        if (mCells.anyShows()) {
            forRuns([this, y](std::size_t cell, std::int32_t begin, std::int32_t end) {
                mCells.drawShowing(cell, mScene.painter, mScene.out, y, begin, end);
            });
        }
    }

    /// Calls `f` with each cell and its range of pixels in the row, from left to right.
    template <typename F>
    void forRuns(F f) const {
        std::int32_t begin = 0;
        for (std::size_t index = 0; index < mEnds.size(); ++index) {
            const std::int32_t cut = std::max(mCuts[index], begin);
            f(2 * index, begin, cut);
            f(2 * index + 1, cut, mEnds[index]);
            begin = mEnds[index];
        }
    }

    Scene<Channel> mScene;
    SearchedRow mSearched;
    PaintedCells<Channel>
        mCells; ///< two for each rectangle: the lower triangle, then the upper one

    // One element for each rectangle of the band:
    std::vector<std::size_t> mRungs;
    std::vector<float> mLefts;  ///< left edge in sheared space
    std::vector<float> mRights; ///< the smallest x right of the rectangle, in sheared space

    // One element for each rectangle, for one row of pixels:
    std::vector<float> mDistances;   ///< from the left edge to the cut
    std::vector<std::int32_t> mCuts; ///< the first pixel after the lower triangle
    std::vector<std::int32_t> mEnds; ///< the first pixel after the rectangle
};

} // namespace Kerovane::Software
