#pragma once

#include "Host/Pictures/Picture.h"

#include <OpenImageIO/color.h>

#include <memory>
#include <string>

namespace Kerovane::Host {

/**
 * A conversion between two colour spaces of the OpenColorIO configuration that $OCIO names, or else
 * of OpenImageIO's built-in one.
 */
class ColourConversion {
public:
    /// Throws Error, which lists the known colour spaces, if there is no such conversion.
    ColourConversion(const std::string& from, std::string to);

    void apply(World& world) const;

    /// Converts all layers to work on, and sets the colour space in the picture's metadata.
    void apply(Picture& picture) const;

private:
    std::string mTo;
    std::shared_ptr<const OIIO::ColorProcessor> mProcessor;
};

} // namespace Kerovane::Host
