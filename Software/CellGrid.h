#pragma once

#include "Software/MosaicParameters.h"

#include <array>
#include <cstddef>
#include <vector>

namespace Kerovane::Software {

/// A position in the picture, in pixels from its top left corner.
struct Location {
    float x = 0;
    float y = 0;
};

/**
 * The layout of cells on a picture. Rectangles of one size, the normal size, tile the picture from
 * its top left corner; `column` and `row` count them. On rung g of the size ladder a cell is 2^g
 * times as wide and as high and covers 2^g by 2^g normal ones.
 *
 * Triangles are halves of such rectangles, cut from the top left to the bottom right corner. They
 * are laid out in sheared space, in which the pixels of row y lie `shear` times y further right.
 */
class CellGrid {
public:
    static constexpr int kMostRungs = 24; ///< above the normal size; no picture needs more

    /// For a picture of `width` by `height` pixels, both above 0.
    CellGrid(const MosaicParameters& parameters, std::ptrdiff_t width, std::ptrdiff_t height);

    Shape shape() const { return mShape; }
    int rungs() const { return mRungs; } ///< number of rungs above the normal size
    float cellWidth(int rung) const { return mWidths[static_cast<std::size_t>(rung)]; } ///< pixels
    float cellHeight(int rung) const {
        return mHeights[static_cast<std::size_t>(rung)];
    } ///< pixels

    /// Returns whether normal cells are narrower than a pixel. If so, columns() and columnEdge()
    /// must not be called.
    bool isFinerThanPixels() const { return cellWidth(0) < 1; }

    /// Returns how far the pixels of row `y` are moved right in sheared space.
    float shift(std::ptrdiff_t y) const { return mShear * static_cast<float>(y); }

    /// The number of columns and rows of normal cells that contain pixels.
    int columns() const { return static_cast<int>(mColumnEdges.size()) - 1; }
    int rows() const { return static_cast<int>(mRowEdges.size()) - 1; }

    /// Returns the column of normal cells at x in sheared space.
    float columnAt(float x) const;

    /// Returns the left edge of a column of normal cells: the smallest x for which columnAt(x) is
    /// `column` or more. Returns infinity for the column after the last.
    float columnEdge(int column) const { return mColumnEdges[static_cast<std::size_t>(column)]; }

    /// Returns the first row of pixels of a row of normal cells. Returns the picture's height for
    /// the row after the last.
    std::ptrdiff_t rowEdge(int row) const { return mRowEdges[static_cast<std::size_t>(row)]; }

    /// The left and the top edge of a rectangle of the rung, in sheared space.
    float left(int rung, float column) const { return cellWidth(rung) * column; }
    float top(int rung, float row) const { return cellHeight(rung) * row; }

    /// Returns the reference point of a square: its centre.
    Location centre(int rung, float column, float row) const;

    /// Return the reference points of a rectangle's two triangles, in the picture.
    Location lowerPoint(int rung, float column, float row) const; ///< of the triangle below the cut
    Location upperPoint(int rung, float column, float row) const;

    /// Returns whether a pixel is in the upper triangle. `x` and `y` count from the left and the
    /// top edge of its rectangle.
    bool isUpper(float x, float y) const;

    /// Returns the smallest `x` for which isUpper(x, y) is true.
    float cut(float y) const;

private:
    Location inPicture(Location sheared) const;

    Shape mShape;
    int mRungs;
    std::array<float, kMostRungs + 1> mWidths{}; ///< by rung, in pixels
    std::array<float, kMostRungs + 1> mHeights{};
    float mShear;
    std::vector<float> mColumnEdges;
    std::vector<std::ptrdiff_t> mRowEdges;
};

} // namespace Kerovane::Software
