#pragma once

#include "Software/Scene.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace Kerovane::Software {

/** Draws triangular cells: each row of pixels crosses a rectangle's left edge, its cut and its
 * right edge, and these crossings are found for the whole row. */
template <typename Channel>
class Triangles {
public:
    explicit Triangles(const Scene<Channel>& scene)
        : mScene(scene), mSearched(scene.search, scene.grid.columns()) {}

    void draw(int band) {
        decide(band);
        for (std::ptrdiff_t y = mScene.grid.rowEdge(band); y < mScene.grid.rowEdge(band + 1); ++y) {
            cross(y, band);
            fill(y);
        }
    }

private:
    /// Two triangles, the lower one on the left.
    struct Rectangle {
        std::size_t rung;
        float left;  ///< where it begins in the space of the cells
        float right; ///< the least location behind it
    };

    /// Where a row of pixels leaves a rectangle's lower and its upper triangle.
    struct Crossing {
        std::int32_t cut;
        std::int32_t end;
    };

    /// The first pixel of a row at `shift` that lies `distance` or more to the right of `left`, as
    /// a pixel's own formula has it. The guess may be one pixel off.
    static std::int32_t FirstPixel(float shift, float left, float distance, std::int32_t width) {
        const auto guess = left + distance - shift;
        auto x =
            static_cast<std::int32_t>(std::min(std::max(guess, -1.0F), static_cast<float>(width))) -
            1;
        for (int step = 0; step < 3; ++step) {
            x += (static_cast<float>(x) + shift) - left >= distance ? 0 : 1;
        }
        return std::min(std::max(x, 0), width);
    }

    void decide(int band) {
        mRectangles.clear();
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
            mRectangles.push_back({static_cast<std::size_t>(rung), grid.left(rung, cellColumn),
                                   grid.columnEdge(next)});
            mCells.add(grid.lowerPoint(rung, cellColumn, cellRow));
            mCells.add(grid.upperPoint(rung, cellColumn, cellRow));
            column = next;
        }
        mCells.paint(mScene.fate, mScene.painter);
        mCrossings.resize(mRectangles.size());
    }

    void cross(std::ptrdiff_t y, int band) {
        for (std::size_t rung = 0; rung < static_cast<std::size_t>(mScene.search.rungs()) + 1;
             ++rung) {
            const auto row = static_cast<float>(band >> rung);
            mCuts[rung] = mScene.grid.cut(static_cast<float>(y) -
                                          mScene.grid.top(static_cast<int>(rung), row));
        }
        const float shift = mScene.grid.shift(y);
        const auto width = static_cast<std::int32_t>(mScene.out.width);
        for (std::size_t index = 0; index < mRectangles.size(); ++index) {
            const auto& [rung, left, right] = mRectangles[index];
            mCrossings[index] = {FirstPixel(shift, left, mCuts[rung], width),
                                 FirstPixel(shift, 0, right, width)};
        }
    }

    void fill(std::ptrdiff_t y) {
        std::int32_t begin = 0;
        std::size_t cell = 0;
        for (const Crossing& crossing : mCrossings) {
            const std::int32_t cut = std::clamp(crossing.cut, begin, crossing.end);
            mScene.fill(mCells[cell++], y, begin, cut);
            mScene.fill(mCells[cell++], y, cut, crossing.end);
            begin = crossing.end;
        }
    }

    Scene<Channel> mScene;
    SearchedRow mSearched;
    std::vector<Rectangle> mRectangles;
    std::vector<Crossing> mCrossings;                    ///< of a row of pixels with the rectangles
    std::array<float, CellGrid::kMostRungs + 1> mCuts{}; ///< of a row of pixels, by rung
    PaintedCells<Channel> mCells;
};

} // namespace Kerovane::Software
