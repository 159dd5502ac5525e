#include "Host/Pictures/ColourConversion.h"

#include "Host/Pictures/ColourLayers.h"
#include "Host/Pictures/PixelConversion.h"
#include "Host/Text/Error.h"

#include <fmt/format.h>

#include <span>
#include <type_traits>
#include <utility>
#include <vector>

namespace Kerovane::Host {

namespace {

std::string NamesOfSpaces(const OIIO::ColorConfig& config) {
    std::vector<std::string> names;
    for (int i = 0; i < config.getNumColorSpaces(); ++i) {
        names.emplace_back(config.getColorSpaceNameByIndex(i));
    }
    return ChannelList(names);
}

template <typename Pixel>
void Convert(World& world, const OIIO::ColorProcessor& processor) {
    constexpr ChannelPlaces kRgba{.red = 0, .green = 1, .blue = 2, .alpha = 3};
    constexpr OIIO::stride_t kPixel = 4 * sizeof(float);
    const OIIO::stride_t rowBytes = kPixel * world.width();
    std::vector<float> row(static_cast<std::size_t>(world.width()) * 4);
    for (A_long y = 0; y < world.height(); ++y) {
        WriteRow(std::span<const Pixel>(world.row<Pixel>(y)), row.data());
        processor.apply(row.data(), world.width(), 1, 3, sizeof(float), kPixel, rowBytes);
        ReadRow(row.data(), 4, kRgba, world.row<Pixel>(y));
    }
}

} // namespace

ColourConversion::ColourConversion(const std::string& from, std::string to) : mTo(std::move(to)) {
    const OIIO::ColorConfig config;
    mProcessor = config.createColorProcessor(from, mTo);
    if (mProcessor == nullptr) {
        throw Error(
            fmt::format("there is no conversion from '{}' to '{}'; the colour spaces are {}", from,
                        mTo, NamesOfSpaces(config)));
    }
}

void ColourConversion::apply(World& world) const {
    withPixelType(world.depth(), [&]<typename Pixel>(std::type_identity<Pixel>) {
        Convert<Pixel>(world, *mProcessor);
    });
}

void ColourConversion::apply(Picture& picture) const {
    for (PicturePart& part : picture.parts) {
        for (PictureLayer& layer : part.layers) {
            apply(layer.world);
            part.origin.attribute("oiio:ColorSpace", mTo);
            part.origin.erase_attribute("ICCProfile");
        }
    }
}

} // namespace Kerovane::Host
