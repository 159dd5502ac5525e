#include "Host/Panel/PictureCoding.h"

#include "Host/Pictures/MemoryFile.h"
#include "Host/Pictures/PictureWriter.h"
#include "Host/Text/Error.h"

#include <fmt/format.h>

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace Kerovane::Host {

namespace {

constexpr int kChannels = 3;

std::string ContentOf(MemoryFile& file) {
    const std::span<const std::byte> content = file.content();
    return {reinterpret_cast<const char*>(content.data()), content.size()};
}

} // namespace

std::string EncodePreview(const World& world, const PreviewView& view) {
    const std::vector<std::uint8_t> pixels = PixelsOf(world, view);
    const std::unique_ptr<OIIO::ImageOutput> output = OIIO::ImageOutput::create("jpeg");
    OIIO::ImageSpec layout(view.shownWidth, view.shownHeight, kChannels, OIIO::TypeDesc::UINT8);
    layout.attribute("Compression", "jpeg:85");
    layout.attribute("jpeg:subsampling", "4:4:4"); // cells have hard borders
    MemoryFile file;
    if (output == nullptr || !output->open(file.path().string(), layout) ||
        !output->write_image(OIIO::TypeDesc::UINT8, pixels.data()) || !output->close()) {
        throw Error(fmt::format("cannot encode a preview: {}",
                                output == nullptr ? OIIO::geterror() : output->geterror()));
    }
    return ContentOf(file);
}

std::string EncodeStill(const World& world, const Picture& origin, bool canLeaveHoles) {
    PictureForm form = origin.form;
    form.hasAlpha = form.hasAlpha || canLeaveHoles;
    MemoryFile file;
    EncodePicture("still.png", world, origin.origin, form, nullptr, file);
    return ContentOf(file);
}

} // namespace Kerovane::Host
