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

    /// In canonical coordinates; nothing if the host can't tell.
    std::optional<OfxRectD> regionOfDefinition(OfxTime time) const;

    /// Width of a pixel over its height: 1 if the host can't tell.
    double pixelAspect() const;

    /// kOfxImageComponentRGB or kOfxImageComponentRGBA, as the clip comes to the host.
    Name components() const;

    /// kOfxImageOpaque, kOfxImagePreMultiplied or kOfxImageUnPreMultiplied.
    Name premultiplication() const;

    /// The whole image at `time`, of `scale` unless it says otherwise itself; nothing if there is
    /// none. Throws Error if it is of a form that is not supported.
    std::optional<HostImage> image(OfxTime time, const OfxPointD& scale,
                                   const std::string& field) const;

private:
    OfxImageClipHandle mHandle = nullptr;
    OfxPropertySetHandle mProperties = nullptr;
};

} // namespace Kerovane::OpenFX
