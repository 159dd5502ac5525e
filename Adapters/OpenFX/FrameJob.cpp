#include "Adapters/OpenFX/FrameJob.h"

#include "Adapters/OpenFX/PixelTransfer.h"
#include "Host/Frames/WorldView.h"

#include <optional>

namespace Kerovane::OpenFX {

namespace {

Host::Depth DepthFor(const HostPixels& source, const HostPixels& output) {
    const bool areBytes = source.channel == Channel::Byte && output.channel == Channel::Byte;
    return areBytes ? Host::Depth::Bits8 : Host::Depth::Float32;
}

/// Returns the part of `pixels` at `columns` and `rows` if the renderer can use it without a copy.
std::optional<Host::PixelView> ViewInPlace(const HostPixels& pixels, const Places& columns,
                                           const Places& rows, Host::Depth depth) {
    if (!IsRun(columns) || !IsRun(rows)) {
        return std::nullopt;
    }
    const auto part = [](const Span& whole, const Places& places) {
        const int begin = whole.begin + static_cast<int>(places.front());
        return Span{begin, begin + static_cast<int>(places.size())};
    };
    const std::optional<Host::PixelView> view =
        pixels.within(part(pixels.columns, columns), part(pixels.rows, rows)).view();
    return view && view->depth == depth ? view : std::nullopt;
}

/// A picture of the frame's size, in the host's memory or in memory of its own.
class Layer {
public:
    Layer(std::optional<Host::PixelView> inPlace, const PixelArea& frame, Host::Depth depth,
          Coverage coverage) {
        if (inPlace) {
            mView = *inPlace;
            return;
        }
        mWorld.emplace(depth, frame.columns.size(), frame.rows.size());
        mView = ViewOf(*mWorld);
        if (coverage == Coverage::Premultiplied) {
            mView.alpha = Host::Alpha::Premultiplied;
        }
    }

    bool isInPlace() const { return !mWorld; }
    const Host::PixelView& view() const { return mView; }

private:
    std::optional<Host::World> mWorld;
    Host::PixelView mView;
};

} // namespace

void DrawFrame(const FrameArea& area, const HostImage& source, const HostImage& output,
               const PixelArea& window, const Draw& draw) {
    const PixelArea& frame = area.frame;
    const HostPixels& from = source.pixels;
    const HostPixels to = output.pixels.within(window.columns, window.rows);
    const Host::Depth depth = DepthFor(from, to);

    const Places readColumns =
        PlacesToRead(frame.columns, area.region.columns, from.columns, source.scale.x);
    const Places readRows = PlacesToRead(frame.rows, area.region.rows, from.rows, source.scale.y);
    const Layer in(ViewInPlace(from, readColumns, readRows, depth), frame, depth, from.coverage);
    if (!in.isInPlace()) {
        ReadPixels(from, readColumns, readRows, in.view());
    }

    const Places shownColumns = PlacesToShow(window.columns, frame.columns, output.scale.x);
    const Places shownRows = PlacesToShow(window.rows, frame.rows, output.scale.y);
    const bool isWhole = shownColumns.size() == static_cast<std::size_t>(frame.columns.size()) &&
                         shownRows.size() == static_cast<std::size_t>(frame.rows.size());
    // An output without alpha, or with an alpha that is ignored, shows holes as black.
    const Coverage shown =
        to.coverage == Coverage::Straight ? Coverage::Straight : Coverage::Premultiplied;
    const Layer out(isWhole ? ViewInPlace(to, shownColumns, shownRows, depth) : std::nullopt, frame,
                    depth, shown);
    draw(in.view(), out.view());
    if (!out.isInPlace()) {
        WritePixels(out.view(), shownColumns, shownRows, to);
    }
}

} // namespace Kerovane::OpenFX
