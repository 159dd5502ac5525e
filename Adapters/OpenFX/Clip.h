#pragma once

#include "Adapters/OpenFX/HostImage.h"
#include "Adapters/OpenFX/PropertySet.h"
#include "Adapters/OpenFX/Suites.h"

#include <optional>
#include <string>

namespace Kerovane::OpenFX {

/** An input or the output of an effect. */
class Clip {
public:
    /// Throws Error if the effect has no clip of that name.
    Clip(OfxImageEffectHandle effect, Name name);

    PropertySet properties() const { return PropertySet(mProperties); }

    /// Returns the region in canonical coordinates; nothing if the host does not provide it.
    std::optional<OfxRectD> regionOfDefinition(OfxTime time) const;

    /// Returns the width of a pixel over its height; 1 if the host does not provide it.
    double pixelAspect() const;

    /// Returns kOfxImageComponentRGB or kOfxImageComponentRGBA: the components before the host maps
    /// them for the effect.
    Name components() const;

    /// Returns kOfxImageOpaque, kOfxImagePreMultiplied or kOfxImageUnPreMultiplied.
    Name premultiplication() const;

    /// Fetches the whole image at `time`; nothing if there is none. `scale` and `field` apply if
    /// the image does not tell its own. Throws Error if the form of the image is not supported.
    std::optional<HostImage> image(OfxTime time, const OfxPointD& scale,
                                   const std::string& field) const;

private:
    OfxImageClipHandle mHandle = nullptr;
    OfxPropertySetHandle mProperties = nullptr;
};

} // namespace Kerovane::OpenFX
