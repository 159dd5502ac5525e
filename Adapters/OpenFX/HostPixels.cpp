#include "Adapters/OpenFX/HostPixels.h"

namespace Kerovane::OpenFX {

std::size_t BytesOf(Channel channel) {
    switch (channel) {
    case Channel::Byte:
        return 1;
    case Channel::Short:
    case Channel::Half:
        return 2;
    default:
        return 4;
    }
}

HostPixels HostPixels::within(const Span& someColumns, const Span& someRows) const {
    HostPixels part = *this;
    part.top += (someRows.begin - rows.begin) * rowBytes +
                (someColumns.begin - columns.begin) * static_cast<std::ptrdiff_t>(pixelBytes());
    part.columns = someColumns;
    part.rows = someRows;
    return part;
}

std::optional<Host::PixelView> HostPixels::view() const {
    const bool isKnown = channel == Channel::Byte || channel == Channel::Float;
    if (!isKnown || channels != 4 || coverage == Coverage::Opaque) {
        return std::nullopt;
    }
    return Host::PixelView{.top = top,
                           .rowBytes = rowBytes,
                           .width = columns.size(),
                           .height = rows.size(),
                           .depth =
                               channel == Channel::Byte ? Host::Depth::Bits8 : Host::Depth::Float32,
                           .order = Host::ChannelOrder::Rgba,
                           .alpha = coverage == Coverage::Straight ? Host::Alpha::Straight
                                                                   : Host::Alpha::Premultiplied};
}

} // namespace Kerovane::OpenFX
