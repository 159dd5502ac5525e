#pragma once

#include "Software/MosaicParameters.h"

#include <array>
#include <cstddef>
#include <vector>

namespace Kerovane::Software {

/// A place in the picture in pixels, from its top left corner.
struct Location {
    float x = 0;
    float y = 0;
};

/**
 * How cells lie on a picture. Rectangles of one size tile it from its top left corner on; `column`
 * and `row` count them. On rung g of the ladder of sizes they are 2^g times as wide and as high,
 * and hold 2^g by 2^g normal ones.
 *
 * Triangles are the halves of such rectangles, cut from the top left corner to the opposite one, in
 * a space in which each row of pixels lies `shear` times its y further right.
 */
class CellGrid {
public:
    static constexpr int kMostRungs = 24; ///< above the normal size; beyond any picture's

    /// Of a picture of `width` by `height` pixels, both above 0.
    CellGrid(const MosaicParameters& parameters, std::ptrdiff_t width, std::ptrdiff_t height);

    Shape shape() const { return mShape; }
    int rungs() const { return mRungs; } ///< above the normal size
    float cellWidth(int rung) const { return mWidths[static_cast<std::size_t>(rung)]; } ///< pixels
    float cellHeight(int rung) const {
        return mHeights[static_cast<std::size_t>(rung)];
    } ///< pixels

    /// Whether a column of pixels may hold several columns of cells, which have then no edges here.
    bool isFinerThanPixels() const { return cellWidth(0) < 1; }

    /// How far to the right the pixels of row `y` lie in the space of the cells.
    float shift(std::ptrdiff_t y) const { return mShear * static_cast<float>(y); }

    /// Of normal cells, up to the last one that holds a pixel.
    int columns() const { return static_cast<int>(mColumnEdges.size()) - 1; }
    int rows() const { return static_cast<int>(mRowEdges.size()) - 1; }

    /// The normal column of a location in the space of the cells.
    float columnAt(float x) const;

    /// The least location in the space of the cells that lies in the normal column, or right of
    /// it; of the column behind the last one, infinity.
    float columnEdge(int column) const { return mColumnEdges[static_cast<std::size_t>(column)]; }

    /// The first row of pixels of a row of normal cells; of the row behind the last one, the
    /// picture's height.
    std::ptrdiff_t rowEdge(int row) const { return mRowEdges[static_cast<std::size_t>(row)]; }

    /// Where rectangle `column` of the rung begins in the space of the cells.
    float left(int rung, float column) const { return cellWidth(rung) * column; }
    float top(int rung, float row) const { return cellHeight(rung) * row; }

    /// The reference point of a square: its centre.
    Location centre(int rung, float column, float row) const;

    /// The reference points of a rectangle's two triangles, in the picture.
    Location lowerPoint(int rung, float column, float row) const; ///< of the one below the cut
    Location upperPoint(int rung, float column, float row) const;

    /// Whether a pixel that lies so far from the left and the top edge of its rectangle is in the
    /// upper triangle.
    bool isUpper(float x, float y) const;

    /// The least `x` of which isUpper(x, y) holds.
    float cut(float y) const;

private:
    Location inPicture(Location sheared) const;

    Shape mShape;
    int mRungs;
    std::array<float, kMostRungs + 1> mWidths{}; ///< of cells, by rung
    std::array<float, kMostRungs + 1> mHeights{};
    float mShear;
    std::vector<float> mColumnEdges;
    std::vector<std::ptrdiff_t> mRowEdges;
};

} // namespace Kerovane::Software
