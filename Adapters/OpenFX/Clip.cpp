#include "Adapters/OpenFX/Clip.h"

#include <string>

namespace Kerovane::OpenFX {

Clip::Clip(OfxImageEffectHandle effect, Name name) {
    Require(HostSuites().effects->clipGetHandle(effect, name, &mHandle, &mProperties),
            std::string("the clip ") + name);
}

std::optional<OfxRectD> Clip::regionOfDefinition(OfxTime time) const {
    OfxRectD region;
    const OfxStatus status =
        HostSuites().effects->clipGetRegionOfDefinition(mHandle, time, &region);
    return status == kOfxStatOK ? std::optional(region) : std::nullopt;
}

double Clip::pixelAspect() const {
    const double aspect = properties().real(kOfxImagePropPixelAspectRatio).value_or(1);
    return aspect > 0 ? aspect : 1;
}

Name Clip::components() const {
    const std::optional<std::string> unmapped =
        properties().text(kOfxImageClipPropUnmappedComponents);
    const std::optional<std::string> components =
        unmapped ? unmapped : properties().text(kOfxImageEffectPropComponents);
    return components == kOfxImageComponentRGB ? kOfxImageComponentRGB : kOfxImageComponentRGBA;
}

Name Clip::premultiplication() const {
    const std::optional<std::string> said = properties().text(kOfxImageEffectPropPreMultiplication);
    if (components() == kOfxImageComponentRGB || said == kOfxImageOpaque) {
        return kOfxImageOpaque;
    }
    return said == kOfxImageUnPreMultiplied ? kOfxImageUnPreMultiplied : kOfxImagePreMultiplied;
}

std::optional<HostImage> Clip::image(OfxTime time, const OfxPointD& scale,
                                     const std::string& field) const {
    OfxPropertySetHandle handle = nullptr;
    if (HostSuites().effects->clipGetImage(mHandle, time, nullptr, &handle) != kOfxStatOK ||
        handle == nullptr) {
        return std::nullopt;
    }
    HostImage image = TakeImage(
        handle, {.scale = scale, .field = field, .premultiplication = premultiplication()});
    return image.pixels.top != nullptr ? std::optional(std::move(image)) : std::nullopt;
}

} // namespace Kerovane::OpenFX
