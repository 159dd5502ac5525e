#include "Software/SizeSearch.h"

#include "Software/CellGrid.h"

#include <array>
#include <cmath>

namespace Kerovane::Software {

namespace {

/// Ten to the power of the rung: rectangles of different rungs have different random numbers,
/// whatever their column and row.
constexpr std::array<float, CellGrid::kMostRungs + 1> kScales = {
    1e0F,  1e1F,  1e2F,  1e3F,  1e4F,  1e5F,  1e6F,  1e7F,  1e8F,  1e9F,  1e10F, 1e11F, 1e12F,
    1e13F, 1e14F, 1e15F, 1e16F, 1e17F, 1e18F, 1e19F, 1e20F, 1e21F, 1e22F, 1e23F, 1e24F};

} // namespace

SizeSearch::SizeSearch(const MosaicParameters& parameters, int rungs)
    : mRungs(parameters.sizeRandom > 0 ? rungs : 0),
      mLimit(Share(parameters.sizeRandom)),
      mSource(0.12F, parameters.sizeRandomSeed) {}

float SizeSearch::random(int rung, float column, float row) const {
    const float scale = kScales[static_cast<std::size_t>(rung)];
    return mSource.at(column * scale, row * scale);
}

bool SizeSearch::isSearched(float topColumn, float topRow) const {
    return random(mRungs, topColumn, topRow) < mLimit;
}

bool SizeSearch::staysWhole(int rung, float column, float row) const {
    return random(rung, column, row) >= 0.5F;
}

int SizeSearch::rungAt(float column, float row) const {
    const auto of = [](float index, int rung) { return std::floor(std::ldexp(index, -rung)); };
    int rung = mRungs;
    if (rung == 0 || !isSearched(of(column, rung), of(row, rung))) {
        return 0;
    }
    while (rung > 0 && !staysWhole(rung, of(column, rung), of(row, rung))) {
        --rung;
    }
    return rung;
}

SearchedRow::SearchedRow(const SizeSearch& search, int columns)
    : mSearch(search), mRungs(static_cast<std::size_t>(search.rungs())) {
    int rung = 0;
    for (Rung& kept : mRungs) {
        kept.whole.resize(static_cast<std::size_t>(columns >> ++rung) + 1);
    }
    mSearched.resize(mRungs.empty() ? 0 : mRungs.back().whole.size());
}

void SearchedRow::moveTo(int row) {
    int rung = 0;
    for (auto& [keptRow, whole] : mRungs) {
        const int rungRow = row >> ++rung;
        if (keptRow == rungRow) {
            continue;
        }
        keptRow = rungRow;
        for (std::size_t column = 0; column < whole.size(); ++column) {
            whole[column] =
                mSearch.staysWhole(rung, static_cast<float>(column), static_cast<float>(rungRow));
        }
        if (rung == mSearch.rungs()) {
            for (std::size_t column = 0; column < mSearched.size(); ++column) {
                mSearched[column] =
                    mSearch.isSearched(static_cast<float>(column), static_cast<float>(rungRow));
            }
        }
    }
}

int SearchedRow::rungAt(int column) const {
    int rung = mSearch.rungs();
    const auto at = [column](int shift) { return static_cast<std::size_t>(column >> shift); };
    if (rung == 0 || mSearched[at(rung)] == 0) {
        return 0;
    }
    while (rung > 0 && mRungs[static_cast<std::size_t>(rung - 1)].whole[at(rung)] == 0) {
        --rung;
    }
    return rung;
}

} // namespace Kerovane::Software
