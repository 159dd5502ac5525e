#include "Host/Pictures/OtherChannels.h"

#include "Host/Pictures/Windows.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>

namespace Kerovane::Host {

OtherChannels::OtherChannels(const OIIO::ImageSpec& layout, const std::vector<bool>& isColour) {
    for (int place = 0; place < layout.nchannels; ++place) {
        if (!isColour[static_cast<std::size_t>(place)]) {
            mChannels.push_back({place, layout.channel_name(place), layout.channelformat(place)});
            mPixelBytes += mChannels.back().type.size();
        }
    }
}

std::string OtherChannels::names() const {
    constexpr std::size_t kMost = 8;
    std::string text;
    for (std::size_t i = 0; i < std::min(mChannels.size(), kMost); ++i) {
        text += (i > 0 ? ", " : "") + mChannels[i].name;
    }
    return mChannels.size() > kMost ? fmt::format("{} and {} more", text, mChannels.size() - kMost)
                                    : text;
}

bool OtherChannels::read(OIIO::ImageInput& input) {
    const OIIO::ImageSpec& layout = input.spec();
    const Overlap columns(layout.x, layout.width, layout.full_x, layout.full_width);
    const Overlap rows(layout.y, layout.height, layout.full_y, layout.full_height);
    mRowBytes = mPixelBytes * static_cast<std::size_t>(layout.full_width);
    mPixels =
        std::make_unique<std::byte[]>(mRowBytes * static_cast<std::size_t>(layout.full_height));
    std::byte* to = mPixels.get() + columns.from(layout.full_x) * mPixelBytes;
    for (const Channel& channel : mChannels) {
        const std::size_t bytes = channel.type.size();
        const std::size_t planeRow = bytes * static_cast<std::size_t>(layout.width);
        const auto plane = std::make_unique_for_overwrite<std::byte[]>(
            planeRow * static_cast<std::size_t>(layout.height));
        if (!input.read_image(0, 0, channel.place, channel.place + 1, channel.type, plane.get())) {
            return false;
        }
        for (std::size_t row = 0; row < rows.size(); ++row) {
            const std::byte* from = plane.get() + (rows.from(layout.y) + row) * planeRow +
                                    columns.from(layout.x) * bytes;
            std::byte* pixel = to + (rows.from(layout.full_y) + row) * mRowBytes;
            for (std::size_t column = 0; column < columns.size(); ++column) {
                std::memcpy(pixel + column * mPixelBytes, from + column * bytes, bytes);
            }
        }
        to += bytes;
    }
    return true;
}

void OtherChannels::addTo(OIIO::ImageSpec& layout) const {
    layout.channelformats.resize(static_cast<std::size_t>(layout.nchannels), layout.format);
    for (const Channel& channel : mChannels) {
        layout.channelnames.push_back(channel.name);
        layout.channelformats.push_back(channel.type);
    }
    layout.nchannels += static_cast<int>(mChannels.size());
}

std::string LossOf(const OtherChannels& channels) {
    return "channels that hold no colour are left out: " + channels.names();
}

} // namespace Kerovane::Host
