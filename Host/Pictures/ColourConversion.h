#pragma once

#include "Host/Pictures/Picture.h"

#include <OpenImageIO/color.h>

#include <memory>
#include <string>

namespace Kerovane::Host {

/** From one colour space to another, through the configuration that $OCIO names, else a built-in.
 */
class ColourConversion {
public:
    /// Throws Error, which lists the spaces that there are, if there is no such conversion.
    ColourConversion(const std::string& from, std::string to);

    void apply(World& world) const;

    /// Converts the colour of all layers that are worked on, and has the picture say so.
    void apply(Picture& picture) const;

private:
    std::string mTo;
    std::shared_ptr<const OIIO::ColorProcessor> mProcessor;
};

} // namespace Kerovane::Host
