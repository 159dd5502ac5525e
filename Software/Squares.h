#pragma once

#include "Software/Scene.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace Kerovane::Software {

/** Draws square cells: the first row of a band cell by cell, the others as copies of it. */
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
        const std::ptrdiff_t top = mScene.grid.rowEdge(band);
        const std::ptrdiff_t bottom = mScene.grid.rowEdge(band + 1);
        for (std::size_t cell = 0; cell < mRuns.size(); ++cell) {
            mScene.fill(mCells[cell], top, mRuns[cell].begin, mRuns[cell].end);
        }
        const auto bytes = static_cast<std::size_t>(mScene.out.width) * sizeof(Pixel<Channel>);
        for (std::ptrdiff_t y = top + 1; y < bottom; ++y) {
            std::memcpy(mScene.out.row(y), mScene.out.row(top), bytes);
            for (std::size_t cell = 0; cell < mRuns.size(); ++cell) {
                if (mCells[cell].showsPicture) {
                    mScene.fill(mCells[cell], y, mRuns[cell].begin, mRuns[cell].end);
                }
            }
        }
    }

private:
    /// A cell's pixels in each row of the band.
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
    std::vector<std::ptrdiff_t> mEdges; ///< the first pixel of each column
    std::vector<Run> mRuns;
    PaintedCells<Channel> mCells;
};

} // namespace Kerovane::Software
