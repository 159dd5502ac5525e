#pragma once

#include "Software/MosaicParameters.h"
#include "Software/RandomSource.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace Kerovane::Software {

/**
 * Decides the size of cells. A rectangle on the top rung of the size ladder is searched if its
 * random number is below a limit: it stays whole or splits into the four of the rung below, with
 * even chances, and each of those does the same. Rectangles that are not searched, or have split
 * all the way, become normal cells.
 */
class SizeSearch {
public:
    /// `rungs` counts the sizes above the normal one. Without random sizes the ladder has no rungs.
    SizeSearch(const MosaicParameters& parameters, int rungs);

    int rungs() const { return mRungs; }

    /// Decide, for the first rectangles of a row, as many as the span holds, whether they stay
    /// whole, and, on the top rung, whether they are searched.
    void decideRow(int rung, float row, std::span<std::int32_t> whole) const;
    void searchRow(float row, std::span<std::int32_t> searched) const;

    /// Returns the rung of the cell that covers the rectangle of normal size at `column` and `row`.
    /// Rung 0 is the normal size.
    int rungAt(float column, float row) const;

private:
    bool isSearched(float random) const { return random < mLimit; }
    static bool staysWhole(float random) { return random >= 0.5F; }

    float random(int rung, float column, float row) const;

    template <typename Decide>
    void forRow(int rung, float row, std::span<std::int32_t> decided, Decide decide) const;

    int mRungs;
    float mLimit;
    RandomSource mSource;
};

/**
 * The result of the search for one row of normal rectangles at a time. Keeps the row of each rung,
 * so that each rectangle is decided once as long as rows come in order.
 */
class SearchedRow {
public:
    /// For rows of `columns` normal rectangles. `search` must outlive this object.
    SearchedRow(const SizeSearch& search, int columns);

    /// Moves to a row. Must be called before rungAt.
    void moveTo(int row);

    /// Returns the rung of the cell that contains the normal rectangle in `column`.
    int rungAt(int column) const;

private:
    struct Rung {
        int row = -1;
        std::vector<std::int32_t> whole; ///< by column of the rung
    };

    const SizeSearch& mSearch;
    std::vector<Rung> mRungs;            ///< above the normal size, the lowest first
    std::vector<std::int32_t> mSearched; ///< by column of the top rung
};

} // namespace Kerovane::Software
