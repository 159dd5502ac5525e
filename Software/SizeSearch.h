#pragma once

#include "Software/MosaicParameters.h"
#include "Software/RandomSource.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace Kerovane::Software {

/**
 * Decides how large the cells are. Each rectangle on the ladder's top rung is searched if its
 * random number is below a limit: it stays whole, or falls into the four of the rung below, each of
 * which stays whole or falls in turn, with even chances. What isn't searched, or has fallen all the
 * way, are normal cells.
 */
class SizeSearch {
public:
    /// `rungs` above the normal size. If none is searched, the ladder has none.
    SizeSearch(const MosaicParameters& parameters, int rungs);

    int rungs() const { return mRungs; }

    /// Of the first rectangles of a row on some rung, as many as there is room for: whether they
    /// stay whole, and whether they are searched if that is the top rung.
    void decideRow(int rung, float row, std::span<std::int32_t> whole) const;
    void searchRow(float row, std::span<std::int32_t> searched) const;

    /// The rung of the cell that a normal rectangle lies in.
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
 * The outcome of a search for a row of normal rectangles, then for others. Keeps the rows of all
 * rungs, so that as long as rows come in order each rectangle is decided once.
 */
class SearchedRow {
public:
    /// For rows of `columns` normal rectangles. `search` has to outlive this.
    SearchedRow(const SizeSearch& search, int columns);

    /// To be called before rungAt.
    void moveTo(int row);

    /// The rung of the cell that the normal rectangle in `column` lies in.
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
