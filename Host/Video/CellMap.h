#pragma once

#include "Host/Pixels/PixelView.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace Kerovane::Host {

/**
 * Where each pixel of a frame takes its colour from, learnt from what the effect makes of a picture
 * whose colours are places. With it, frames of any kind can be drawn that the renderers know
 * nothing of.
 */
class CellMap {
public:
    /// In pixels from the centre of the first; lies between pixels, too.
    struct Place {
        float x = 0;
        float y = 0;
    };

    /// Pixels of a row that lie in one cell, up to `end`.
    struct Run {
        std::int32_t end = 0;
        std::uint32_t cell = 0; ///< index of its place

        bool operator==(const Run&) const = default;
    };

    using Draw = std::function<void(const ConstPixelView& in, const PixelView& out)>;

    /// `draw` is the effect with settings that stay. Nothing if pixels come out of it that aren't
    /// opaque, or if the frame is so large or the cells so small that a map isn't worth it.
    static std::optional<CellMap> of(std::ptrdiff_t width, std::ptrdiff_t height, const Draw& draw);

    std::ptrdiff_t width() const { return mWidth; }
    std::ptrdiff_t height() const { return static_cast<std::ptrdiff_t>(mRows.size()); }

    const std::vector<Place>& cells() const { return mCells; }

    /// Of row `y`, from left to right.
    const std::vector<Run>& runs(std::ptrdiff_t y) const { return row(firstAlike(y)).runs; }

    /// The first of the rows above `y` that are like it without a break; `y` itself if there is
    /// none.
    std::ptrdiff_t firstAlike(std::ptrdiff_t y) const { return row(y).firstAlike; }

private:
    struct Row {
        std::ptrdiff_t firstAlike = 0;
        std::vector<Run> runs; ///< of the first of alike rows
    };

    CellMap() = default;

    const Row& row(std::ptrdiff_t y) const { return mRows[static_cast<std::size_t>(y)]; }

    std::ptrdiff_t mWidth = 0;
    std::vector<Place> mCells;
    std::vector<Row> mRows;
};

} // namespace Kerovane::Host
