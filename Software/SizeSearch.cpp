#include "Software/SizeSearch.h"

#include "Software/CellGrid.h"

#include <array>
#include <cmath>

namespace Kerovane::Software {

namespace {

/// Ten to the power of the rung. Scaling by it gives rectangles of different rungs different random
/// numbers, even at the same column and row.
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

template <typename Decide>
void SizeSearch::forRow(int rung, float row, std::span<std::int32_t> decided, Decide decide) const {
    const float scale = kScales[static_cast<std::size_t>(rung)];
    const float y = row * scale;
    if (mSource.isNear(static_cast<float>(decided.size()) * scale, y)) {
        for (std::size_t column = 0; column < decided.size(); ++column) {
            const auto x = static_cast<float>(static_cast<std::int32_t>(column));
            decided[column] = decide(mSource.atNear(x * scale, y)) ? 1 : 0;
        }
    } else {
        for (std::size_t column = 0; column < decided.size(); ++column) {
            decided[column] = decide(mSource.at(static_cast<float>(column) * scale, y)) ? 1 : 0;
        }
    }
}

void SizeSearch::decideRow(int rung, float row, std::span<std::int32_t> whole) const {
    forRow(rung, row, whole, [](float random) { return staysWhole(random); });
}

void SizeSearch::searchRow(float row, std::span<std::int32_t> searched) const {
    forRow(mRungs, row, searched, [this](float random) { return isSearched(random); });
}

int SizeSearch::rungAt(float column, float row) const {
    const auto of = [](float index, int rung) { return std::floor(std::ldexp(index, -rung)); };
    int rung = mRungs;
    const auto randomOn = [&](int on) { return random(on, of(column, on), of(row, on)); };
    if (rung == 0 || !isSearched(randomOn(rung))) {
        return 0;
    }
    while (rung > 0 && !staysWhole(randomOn(rung))) {
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
        mSearch.decideRow(rung, static_cast<float>(rungRow), whole);
        if (rung == mSearch.rungs()) {
            mSearch.searchRow(static_cast<float>(rungRow), mSearched);
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
