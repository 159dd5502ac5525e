#include "Host/Pictures/Windows.h"

#include "Host/Pictures/PixelConversion.h"

#include <algorithm>
#include <type_traits>

namespace Kerovane::Host {

namespace {

template <typename Pixel>
void CopyWithinFrame(const World& data, const OIIO::ImageSpec& layout, World& frame) {
    const Overlap columns(layout.x, layout.width, layout.full_x, layout.full_width);
    const Overlap rows(layout.y, layout.height, layout.full_y, layout.full_height);
    if (columns.size() == 0) {
        return;
    }
    for (int y = rows.begin; y < rows.end; ++y) {
        const auto from = data.row<Pixel>(y - layout.y);
        const auto to = frame.row<Pixel>(y - layout.full_y);
        std::ranges::copy(from.subspan(columns.from(layout.x), columns.size()),
                          to.subspan(columns.from(layout.full_x)).begin());
    }
}

template <typename Pixel>
void FillBlack(World& world) {
    Pixel black{};
    black.alpha = static_cast<LayerChannel<Pixel>>(kLayerWhite<Pixel>);
    for (A_long y = 0; y < world.height(); ++y) {
        std::ranges::fill(world.row<Pixel>(y), black);
    }
}

} // namespace

bool FillsItsFrame(const OIIO::ImageSpec& layout) {
    return layout.x == layout.full_x && layout.y == layout.full_y &&
           layout.width == layout.full_width && layout.height == layout.full_height;
}

bool ReachesBeyondItsFrame(const OIIO::ImageSpec& layout) {
    return layout.x < layout.full_x || layout.y < layout.full_y ||
           layout.x + layout.width > layout.full_x + layout.full_width ||
           layout.y + layout.height > layout.full_y + layout.full_height;
}

World FrameOf(const World& world, const OIIO::ImageSpec& layout, bool isOpaque) {
    World frame(world.depth(), layout.full_width, layout.full_height);
    withPixelType(world.depth(), [&]<typename Pixel>(std::type_identity<Pixel>) {
        if (isOpaque) {
            FillBlack<Pixel>(frame);
        }
        CopyWithinFrame<Pixel>(world, layout, frame);
    });
    return frame;
}

void TakeFrame(OIIO::ImageSpec& layout) {
    layout.x = layout.full_x;
    layout.y = layout.full_y;
    layout.width = layout.full_width;
    layout.height = layout.full_height;
}

void CoverFrame(OIIO::ImageSpec& layout) {
    const int right = std::max(layout.x + layout.width, layout.full_x + layout.full_width);
    const int bottom = std::max(layout.y + layout.height, layout.full_y + layout.full_height);
    layout.x = std::min(layout.x, layout.full_x);
    layout.y = std::min(layout.y, layout.full_y);
    layout.width = right - layout.x;
    layout.height = bottom - layout.y;
}

} // namespace Kerovane::Host
