#include "Host/Panel/PictureCoding.h"

#include "Host/Pictures/MemoryFile.h"
#include "Host/Pictures/PictureWriter.h"
#include "Host/Pictures/PixelConversion.h"
#include "Host/Text/Error.h"

#include <fmt/format.h>

#include <cstdint>
#include <memory>
#include <span>
#include <type_traits>
#include <utility>
#include <vector>

namespace Kerovane::Host {

namespace {

constexpr int kChannels = 3;

std::string ContentOf(MemoryFile& file) {
    const std::span<const std::byte> content = file.content();
    return {reinterpret_cast<const char*>(content.data()), content.size()};
}

} // namespace

World In8Bits(const World& world) {
    constexpr ChannelPlaces kRgba{.red = 0, .green = 1, .blue = 2, .alpha = 3};
    World copy(Depth::Bits8, world.width(), world.height());
    std::vector<std::uint8_t> row(static_cast<std::size_t>(world.width()) * 4);
    withPixelType(world.depth(), [&]<typename Pixel>(std::type_identity<Pixel>) {
        for (A_long y = 0; y < world.height(); ++y) {
            WriteRow(world.row<Pixel>(y), row.data());
            ReadRow(row.data(), 4, kRgba, copy.row<PF_Pixel8>(y));
        }
    });
    return copy;
}

std::string EncodePreview(const World& world, const PreviewView& view) {
    if (world.depth() != Depth::Bits8) {
        return EncodePreview(In8Bits(world), view);
    }
    const std::vector<std::uint8_t> pixels = PixelsOf(world, view);
    const std::unique_ptr<OIIO::ImageOutput> output = OIIO::ImageOutput::create("jpeg");
    OIIO::ImageSpec layout(view.shownWidth, view.shownHeight, kChannels, OIIO::TypeDesc::UINT8);
    layout.attribute("Compression", "jpeg:85");
    // Keeps colour at full resolution, because cells have hard borders.
    layout.attribute("jpeg:subsampling", "4:4:4");
    MemoryFile file;
    if (output == nullptr || !output->open(file.path().string(), layout) ||
        !output->write_image(OIIO::TypeDesc::UINT8, pixels.data()) || !output->close()) {
        throw Error(fmt::format("cannot encode a preview: {}",
                                output == nullptr ? OIIO::geterror() : output->geterror()));
    }
    return ContentOf(file);
}

std::string EncodeStill(World world, const Picture& source, PictureSettings settings) {
    settings.bits = ChannelBits::Bits8;
    Picture picture = PictureOf(std::move(world), source.origin(), source.first().channels);
    picture.format = source.format;
    MemoryFile file;
    EncodePicture(picture, OutputFormatOf("still.png"), settings, file);
    return ContentOf(file);
}

} // namespace Kerovane::Host
