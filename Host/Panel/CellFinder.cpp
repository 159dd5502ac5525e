#include "Host/Panel/CellFinder.h"

#include <algorithm>
#include <cstddef>
#include <span>

namespace Kerovane::Host {

CellFinder::CellFinder(FrameRenderer& renderer, const Footage& footage, const Look& look,
                       A_long frame, const World& shape)
    : mPlaces(Depth::Float32, shape.width(), shape.height()) {
    World in(Depth::Float32, shape.width(), shape.height());
    for (A_long y = 0; y < in.height(); ++y) {
        float x = 0;
        for (PF_PixelFloat& pixel : in.row<PF_PixelFloat>(y)) {
            pixel = {.alpha = 1, .red = x++, .green = static_cast<float>(y), .blue = 0};
        }
    }
    Draw(renderer, footage, look, frame, in, mPlaces);
}

bool CellFinder::isSame(const PF_PixelFloat& pixel, const PF_PixelFloat& other) const {
    return pixel.alpha == 1 && pixel.red == other.red && pixel.green == other.green;
}

Cell::Run CellFinder::runAt(A_long x, A_long y, const PF_PixelFloat& wanted) const {
    const std::span<const PF_PixelFloat> row = mPlaces.row<PF_PixelFloat>(y);
    const auto is = [&](A_long place) {
        return isSame(row[static_cast<std::size_t>(place)], wanted);
    };
    Cell::Run run{.y = y, .begin = x, .end = x};
    while (run.begin > 0 && is(run.begin - 1)) {
        --run.begin;
    }
    while (run.end < mPlaces.width() && is(run.end)) {
        ++run.end;
    }
    return run;
}

std::optional<Cell> CellFinder::cellAt(A_long x, A_long y) const {
    if (x < 0 || y < 0 || x >= mPlaces.width() || y >= mPlaces.height()) {
        return std::nullopt;
    }
    const PF_PixelFloat wanted = mPlaces.row<PF_PixelFloat>(y)[static_cast<std::size_t>(x)];
    if (!isSame(wanted, wanted)) {
        return std::nullopt;
    }
    Cell cell{.referenceX = wanted.red, .referenceY = wanted.green, .runs = {}};
    // Cells are convex: each row has one run, which overlaps or touches the run in the row before.
    for (const A_long step : {-1, 1}) {
        Cell::Run run = runAt(x, y, wanted);
        if (step < 0) {
            cell.runs.push_back(run);
        }
        for (A_long next = y + step; next >= 0 && next < mPlaces.height(); next += step) {
            const std::span<const PF_PixelFloat> row = mPlaces.row<PF_PixelFloat>(next);
            A_long found = -1;
            for (A_long i = std::max<A_long>(0, run.begin - 1);
                 i < std::min(mPlaces.width(), run.end + 1) && found < 0; ++i) {
                found = isSame(row[static_cast<std::size_t>(i)], wanted) ? i : -1;
            }
            if (found < 0) {
                break;
            }
            run = runAt(found, next, wanted);
            cell.runs.push_back(run);
        }
    }
    return cell;
}

} // namespace Kerovane::Host
