#pragma once

#include "Adapters/OpenFX/HostPixels.h"
#include "Adapters/OpenFX/Interface/Core.h"
#include "Adapters/OpenFX/PropertySet.h"

#include <memory>
#include <optional>

namespace Kerovane::OpenFX {

/// What holds for an image, or for all of a clip's, that tells nothing itself.
struct ImageDefaults {
    OfxPointD scale{1, 1};
    std::string field;
    std::string premultiplication;
};

/// Gives an image back to the host.
struct ReleaseImage {
    void operator()(OfxPropertySetHandle image) const;
};

/** An image of the host's, until it is given back. */
struct HostImage {
    std::unique_ptr<OfxPropertySetStruct, ReleaseImage> handle;
    HostPixels pixels;
    OfxPointD scale{1, 1}; ///< image pixels over full-size pixels
};

/// Reads what the host says of the image `handle` and takes hold of it. Throws Error if it is of a
/// form that is not supported: another depth or other components, a single field, rows that
/// overlap.
HostImage TakeImage(OfxPropertySetHandle handle, const ImageDefaults& defaults);

} // namespace Kerovane::OpenFX
