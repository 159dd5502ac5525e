#include "Host/Video/CellMap.h"

#include "Host/Frames/WorldView.h"

#include <bit>
#include <unordered_map>

namespace Kerovane::Host {

namespace {

/// Returns a picture with each pixel's column in red and its row in green.
World Places(std::ptrdiff_t width, std::ptrdiff_t height) {
    World places(Depth::Float32, width, height);
    for (A_long y = 0; y < places.height(); ++y) {
        float column = 0;
        for (PF_PixelFloat& pixel : places.row<PF_PixelFloat>(y)) {
            pixel = {.alpha = 1, .red = column, .green = static_cast<float>(y), .blue = 0};
            ++column;
        }
    }
    return places;
}

/// Assigns consecutive numbers to distinct places.
class CellNumbers {
public:
    explicit CellNumbers(std::vector<CellMap::Place>& cells) : mCells(cells) {}

    std::uint32_t of(CellMap::Place place) {
        const auto key = std::bit_cast<std::uint64_t>(place);
        const auto [found, isNew] =
            mNumbers.try_emplace(key, static_cast<std::uint32_t>(mCells.size()));
        if (isNew) {
            mCells.push_back(place);
        }
        return found->second;
    }

private:
    std::vector<CellMap::Place>& mCells;
    std::unordered_map<std::uint64_t, std::uint32_t> mNumbers;
};

/// Returns the runs of a row of a drawn Places() picture, or nothing if a pixel is not opaque.
std::optional<std::vector<CellMap::Run>> RunsOf(std::span<const PF_PixelFloat> row,
                                                CellNumbers& numbers) {
    std::vector<CellMap::Run> runs;
    for (std::size_t x = 0; x < row.size(); ++x) {
        const PF_PixelFloat& pixel = row[x];
        if (pixel.alpha != 1) {
            return std::nullopt;
        }
        const bool isSame = x > 0 && pixel.red == row[x - 1].red && pixel.green == row[x - 1].green;
        if (!isSame) {
            runs.push_back({.cell = numbers.of({pixel.red, pixel.green})});
        }
        runs.back().end = static_cast<std::int32_t>(x + 1);
    }
    return runs;
}

} // namespace

std::optional<CellMap> CellMap::of(std::ptrdiff_t width, std::ptrdiff_t height, const Draw& draw) {
    constexpr std::ptrdiff_t kMostPixels = std::ptrdiff_t{4096} * 2304;
    constexpr std::ptrdiff_t kLeastPixelsOfCell = 8;
    if (width * height > kMostPixels) {
        return std::nullopt;
    }
    World places = Places(width, height);
    draw(ViewOf(std::as_const(places)), ViewOf(places));
    CellMap map;
    map.mWidth = width;
    CellNumbers numbers(map.mCells);
    for (A_long y = 0; y < places.height(); ++y) {
        std::optional<std::vector<Run>> runs =
            RunsOf(std::as_const(places).row<PF_PixelFloat>(y), numbers);
        if (!runs || std::ssize(map.mCells) * kLeastPixelsOfCell > width * height) {
            return std::nullopt;
        }
        if (y > 0 && *runs == map.runs(y - 1)) {
            map.mRows.push_back({.firstAlike = map.firstAlike(y - 1), .runs = {}});
        } else {
            map.mRows.push_back({.firstAlike = y, .runs = std::move(*runs)});
        }
    }
    return map;
}

} // namespace Kerovane::Host
