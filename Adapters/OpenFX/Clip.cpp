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

bool Clip::hasAlpha() const {
    return properties().text(kOfxImageEffectPropComponents) != kOfxImageComponentRGB &&
           properties().text(kOfxImageEffectPropPreMultiplication) != kOfxImageOpaque;
}

std::optional<HostImage> Clip::image(OfxTime time, const OfxPointD& scale,
                                     const std::string& field) const {
    OfxPropertySetHandle handle = nullptr;
    if (HostSuites().effects->clipGetImage(mHandle, time, nullptr, &handle) != kOfxStatOK ||
        handle == nullptr) {
        return std::nullopt;
    }
    const std::optional<std::string> premultiplication =
        properties().text(kOfxImageEffectPropPreMultiplication);
    HostImage image = TakeImage(
        handle, {.scale = scale,
                 .field = field,
                 .premultiplication = premultiplication.value_or(kOfxImagePreMultiplied)});
    return image.pixels.top != nullptr ? std::optional(std::move(image)) : std::nullopt;
}

} // namespace Kerovane::OpenFX
