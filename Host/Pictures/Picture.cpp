#include "Host/Pictures/Picture.h"

#include "Host/Pictures/ColourLayers.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace Kerovane::Host {

namespace {

const PicturePart& FirstWithColour(const std::vector<PicturePart>& parts) {
    return *std::ranges::find_if(parts,
                                 [](const PicturePart& part) { return !part.layers.empty(); });
}

} // namespace

const PictureLayer& Picture::first() const {
    return FirstWithColour(parts).layers.front();
}

PictureLayer& Picture::first() {
    return const_cast<PictureLayer&>(std::as_const(*this).first());
}

const OIIO::ImageSpec& Picture::origin() const {
    return FirstWithColour(parts).origin;
}

std::string LossOfOtherChannels(const PicturePart& part) {
    std::vector<std::string> others = part.stored.layout().channelnames;
    if (!part.layers.empty()) {
        std::erase_if(others, [&](const std::string& name) {
            const std::vector<std::string>& first = part.layers.front().channelNames;
            return std::ranges::find(first, name) != first.end();
        });
    }
    return others.empty() ? "" : "other channels are left out: " + ChannelList(others);
}

std::string LossOfParts(const Picture& picture, std::size_t kept) {
    const std::size_t parts = picture.parts.size();
    return kept < parts ? fmt::format("{} of the file's {} parts {} left out", parts - kept, parts,
                                      parts - kept == 1 ? "is" : "are")
                        : "";
}

Picture PictureOf(World world, OIIO::ImageSpec origin, ColourChannels channels) {
    Picture picture;
    picture.parts.push_back({.origin = std::move(origin)});
    picture.parts.front().layers.push_back({.world = std::move(world), .channels = channels});
    return picture;
}

} // namespace Kerovane::Host
