#pragma once

#include "Host/Pixels/PixelView.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace Kerovane::Host {

/**
 * Maps each pixel of a frame to the place where its cell takes its colour. The map is found by
 * rendering a picture whose colours encode their own coordinates. It lets frames be drawn in
 * formats that the renderers do not support, such as planes of luma and chroma.
 */
class CellMap {
public:
    /// A position in pixels from the centre of the first pixel, with fractions.
    struct Place {
        float x = 0;
        float y = 0;
    };

    /// Consecutive pixels of a row that lie in one cell; `end` is the column after the last.
    struct Run {
        std::int32_t end = 0;
        std::uint32_t cell = 0; ///< index of the cell's place in cells()

        bool operator==(const Run&) const = default;
    };

    using Draw = std::function<void(const ConstPixelView& in, const PixelView& out)>;

    /// Returns the map of `draw`, which renders with constant settings. Returns nothing if some
    /// pixels are not opaque, or if a map is not worthwhile because the frame is too large or the
    /// cells are too small.
    static std::optional<CellMap> of(std::ptrdiff_t width, std::ptrdiff_t height, const Draw& draw);

    std::ptrdiff_t width() const { return mWidth; }
    std::ptrdiff_t height() const { return static_cast<std::ptrdiff_t>(mRows.size()); }

    const std::vector<Place>& cells() const { return mCells; }

    /// The runs of row `y`, from left to right.
    const std::vector<Run>& runs(std::ptrdiff_t y) const { return row(firstAlike(y)).runs; }

    /// Returns the first row of the group of consecutive identical rows that `y` belongs to.
    std::ptrdiff_t firstAlike(std::ptrdiff_t y) const { return row(y).firstAlike; }

private:
    struct Row {
        std::ptrdiff_t firstAlike = 0;
        std::vector<Run> runs; ///< empty unless the row is the first of its group
    };

    CellMap() = default;

    const Row& row(std::ptrdiff_t y) const { return mRows[static_cast<std::size_t>(y)]; }

    std::ptrdiff_t mWidth = 0;
    std::vector<Place> mCells;
    std::vector<Row> mRows;
};

} // namespace Kerovane::Host
