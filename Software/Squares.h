#pragma once

#include "Software/FillRun.h"
#include "Software/Scene.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <vector>

namespace Kerovane::Software {

/**
 * Draws square cells: draws the top row of a band cell by cell and copies it to the band's other
 * rows.
 */
template <typename Channel>
class Squares {
public:
    explicit Squares(const Scene<Channel>& scene)
        : mScene(scene), mSearched(scene.search, scene.grid.columns()) {
        for (int column = 0; column <= scene.grid.columns(); ++column) {
            const float edge = std::ceil(scene.grid.columnEdge(column));
            const auto width = scene.out.width;
            mEdges.push_back(edge < static_cast<float>(width) ? static_cast<std::ptrdiff_t>(edge)
                                                              : width);
        }
    }

    void draw(int band) {
        decide(band);
        const Host::PixelView& out = mScene.out;
        const std::ptrdiff_t top = mScene.grid.rowEdge(band);
        for (std::size_t cell = 0; cell < mRuns.size(); ++cell) {
            FillRun(out.row(top), mRuns[cell].begin, mRuns[cell].end, out.width,
                    mCells.pixel(cell));
        }
        const auto bytes = static_cast<std::size_t>(out.width) * sizeof(Pixel<Channel>);
        for (std::ptrdiff_t y = top + 1; y < mScene.grid.rowEdge(band + 1); ++y) {
            std::memcpy(out.row(y), out.row(top), bytes);
        }
        for (std::ptrdiff_t y = top; y < mScene.grid.rowEdge(band + 1); ++y) {
            for (std::size_t cell = 0; mCells.anyShows() && cell < mRuns.size(); ++cell) {
                mCells.drawShowing(cell, mScene.painter, out, y, mRuns[cell].begin,
                                   mRuns[cell].end);
            }
        }
    }

private:
    /// The columns of pixels that a cell covers.
    struct Run {
        std::ptrdiff_t begin;
        std::ptrdiff_t end;
    };

    void decide(int band) {
        mRuns.clear();
        mCells.clear();
        mSearched.moveTo(band);
        const int columns = mScene.grid.columns();
        for (int column = 0; column < columns;) {
            const int rung = mSearched.rungAt(column);
            const int index = column >> rung;
            const int next = std::min((index + 1) << rung, columns);
            mCells.add(mScene.grid.centre(rung, static_cast<float>(index),
                                          static_cast<float>(band >> rung)));
            mRuns.push_back(
                {mEdges[static_cast<std::size_t>(column)], mEdges[static_cast<std::size_t>(next)]});
            column = next;
        }
        mCells.paint(mScene.fate, mScene.painter);
    }

    Scene<Channel> mScene;
    SearchedRow mSearched;
    std::vector<std::ptrdiff_t> mEdges; ///< the first pixel of each column of cells
    std::vector<Run> mRuns;
    PaintedCells<Channel> mCells;
};

} // namespace Kerovane::Software
