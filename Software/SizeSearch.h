#pragma once

#include "Software/MosaicParameters.h"
#include "Software/RandomSource.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace Kerovane::Software {

/**
 * Decides the size of cells. The size ladder has a rung for each size, each twice as wide and high
 * as the one below. A rectangle on the top rung is searched if its random number is below a limit.
 * A searched rectangle stays whole or splits into the four rectangles of the rung below, with even
 * chances; these are searched in turn. Rectangles that are not searched, or have split all the way,
 * become cells of normal size.
 */
class SizeSearch {
public:
    /// `rungs` counts the sizes above the normal one. Without random sizes the ladder has no rungs.
    SizeSearch(const MosaicParameters& parameters, int rungs);

    int rungs() const { return mRungs; }

    /// Decide about the first rectangles of a row, as many as the span holds. decideRow decides
    /// whether they stay whole; searchRow decides whether rectangles of the top rung are searched.
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
 * The result of the search for one row of rectangles of normal size at a time. Keeps the row of
 * each rung, so that each rectangle is decided once as long as rows come in order.
 */
class SearchedRow {
public:
    /// For rows of `columns` rectangles of normal size. `search` must outlive this object.
    SearchedRow(const SizeSearch& search, int columns);

    /// Moves to a row. Must be called before rungAt.
    void moveTo(int row);

    /// Returns the rung of the cell that covers the rectangle of normal size in `column`.
    int rungAt(int column) const;

private:
    struct Rung {
        int row = -1;
        std::vector<std::int32_t> whole; ///< by column of the rung: 1 if the rectangle stays whole
    };

    const SizeSearch& mSearch;
    std::vector<Rung> mRungs;            ///< above the normal size, the lowest first
    std::vector<std::int32_t> mSearched; ///< by column of the top rung: 1 if searched
};

} // namespace Kerovane::Software
