#include "Adapters/OpenFX/HostImage.h"

#include "Adapters/OpenFX/Suites.h"
#include "Host/Text/Error.h"

#include <fmt/format.h>

#include <cstdlib>

namespace Kerovane::OpenFX {

namespace {

Channel ChannelOf(const PropertySet& image) {
    const std::string depth = image.text(kOfxImageEffectPropPixelDepth).value_or("no depth");
    if (depth == kOfxBitDepthByte) {
        return Channel::Byte;
    }
    if (depth == kOfxBitDepthShort) {
        return Channel::Short;
    }
    if (depth == kOfxBitDepthHalf) {
        return Channel::Half;
    }
    if (depth == kOfxBitDepthFloat) {
        return Channel::Float;
    }
    throw Host::Error(fmt::format("images of {} are not supported", depth));
}

int ChannelCountOf(const PropertySet& image) {
    const std::string components =
        image.text(kOfxImageEffectPropComponents).value_or("no components");
    if (components == kOfxImageComponentRGBA) {
        return 4;
    }
    if (components == kOfxImageComponentRGB) {
        return 3;
    }
    throw Host::Error(fmt::format("images of {} are not supported", components));
}

Coverage CoverageOf(const std::string& premultiplication, int channels) {
    if (channels == 3 || premultiplication == kOfxImageOpaque) {
        return Coverage::Opaque;
    }
    return premultiplication == kOfxImageUnPreMultiplied ? Coverage::Straight
                                                         : Coverage::Premultiplied;
}

void CheckWholeFrame(const std::string& field) {
    if (field != kOfxImageFieldNone && field != kOfxImageFieldBoth &&
        field != kOfxImageFieldDoubled) {
        throw Host::Error(fmt::format("only whole frames are supported, not {}", field));
    }
}

HostPixels PixelsOf(const PropertySet& image, const ImageDefaults& defaults) {
    const OfxRectI bounds = image.wholeRect(kOfxImagePropBounds).value_or(OfxRectI{});
    HostPixels pixels{.columns = {bounds.x1, bounds.x2},
                      .rows = {-bounds.y2, -bounds.y1},
                      .channel = ChannelOf(image),
                      .channels = ChannelCountOf(image)};
    const std::string premultiplication =
        image.text(kOfxImageEffectPropPreMultiplication).value_or(defaults.premultiplication);
    pixels.coverage = CoverageOf(premultiplication, pixels.channels);
    const auto packed = static_cast<std::ptrdiff_t>(pixels.pixelBytes()) * pixels.columns.size();
    const std::ptrdiff_t upwards =
        image.whole(kOfxImagePropRowBytes).value_or(static_cast<int>(packed));
    if (std::abs(upwards) < packed) {
        throw Host::Error(
            fmt::format("the host has {} bytes from row to row for {} of pixels", upwards, packed));
    }
    auto* const bottom = static_cast<std::byte*>(image.pointer(kOfxImagePropData));
    if (bottom != nullptr && pixels.rows.size() > 0) {
        pixels.top = bottom + (pixels.rows.size() - 1) * upwards;
    }
    pixels.rowBytes = -upwards;
    return pixels;
}

} // namespace

void ReleaseImage::operator()(OfxPropertySetHandle image) const {
    HostSuites().effects->clipReleaseImage(image);
}

HostImage TakeImage(OfxPropertySetHandle handle, const ImageDefaults& defaults) {
    HostImage image;
    image.handle.reset(handle);
    const PropertySet properties(handle);
    CheckWholeFrame(properties.text(kOfxImagePropField).value_or(defaults.field));
    image.pixels = PixelsOf(properties, defaults);
    image.scale = properties.point(kOfxImageEffectPropRenderScale).value_or(defaults.scale);
    if (!(image.scale.x > 0 && image.scale.y > 0)) {
        image.scale = defaults.scale;
    }
    return image;
}

} // namespace Kerovane::OpenFX
