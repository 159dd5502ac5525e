#pragma once

#include "Adapters/OpenFX/HostPixels.h"
#include "Adapters/OpenFX/Interface/Core.h"
#include "Adapters/OpenFX/PropertySet.h"

#include <memory>
#include <optional>

namespace Kerovane::OpenFX {

/// Values for the properties that an image does not have.
struct ImageDefaults {
    OfxPointD scale{1, 1};
    std::string field;
    std::string premultiplication;
};

/// Releases an image to the host.
struct ReleaseImage {
    void operator()(OfxPropertySetHandle image) const;
};

/** An image of the host; released in the destructor. */
struct HostImage {
    std::unique_ptr<OfxPropertySetStruct, ReleaseImage> handle;
    HostPixels pixels;
    OfxPointD scale{1, 1}; ///< image pixels per full-size pixel
};

/// Reads the properties of the image `handle` and takes ownership of it. Throws Error if its form
/// is not supported: another depth or other components, a single field, overlapping rows.
HostImage TakeImage(OfxPropertySetHandle handle, const ImageDefaults& defaults);

} // namespace Kerovane::OpenFX
