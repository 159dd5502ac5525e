#include "Software/Mosaic.h"

#include "Software/NarrowCells.h"
#include "Software/Squares.h"
#include "Software/Triangles.h"

#include <algorithm>
#include <utility>

namespace Kerovane::Software {

namespace {

template <typename Rows>
void DrawBands(Rows rows, int first, int end) {
    for (int band = first; band < end; ++band) {
        rows.draw(band);
    }
}

} // namespace

Mosaic::Mosaic(const MosaicParameters& parameters, std::ptrdiff_t width, std::ptrdiff_t height)
    : mIsEmpty(width <= 0 || height <= 0),
      mUseAlpha(parameters.useAlpha),
      mGrid(parameters, std::max<std::ptrdiff_t>(width, 1), std::max<std::ptrdiff_t>(height, 1)),
      mSearch(parameters, mGrid.rungs()),
      mFate(parameters, width, height) {}

int Mosaic::bands() const {
    return mIsEmpty ? 0 : mGrid.rows();
}

void Mosaic::draw(const Host::ConstPixelView& in, const Host::PixelView& out, int first,
                  int end) const {
    Host::WithChannelType(in.depth, [&](auto type) {
        using Channel = typename decltype(type)::type;
        const Painter<Channel> painter(in, out, mUseAlpha);
        const Scene<Channel> scene{mGrid, mSearch, mFate, painter, out};
        if (mGrid.isFinerThanPixels()) {
            DrawBands(NarrowCells(scene), first, end);
        } else if (mGrid.shape() == Shape::Square) {
            DrawBands(Squares(scene), first, end);
        } else {
            DrawBands(Triangles(scene), first, end);
        }
    });
}

} // namespace Kerovane::Software
