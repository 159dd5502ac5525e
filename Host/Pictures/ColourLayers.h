#pragma once

#include "Host/Pictures/PixelConversion.h"

#include <OpenImageIO/imageio.h>

#include <optional>
#include <string>
#include <vector>

namespace Kerovane::Host {

/** Where a part of a file has a layer of colour. */
struct ColourLayer {
    std::string name; ///< "left" for left.R; empty for R
    ChannelPlaces places;

    bool isGrey() const { return places.red == places.green; }
    bool hasAlpha() const { return places.alpha >= 0; }
};

/// Which layers a user wants to be worked on; by default those of all parts.
struct LayerChoice {
    std::string layer{};       ///< or the name of a part; empty: the nameless one, and views
    std::optional<int> part{}; ///< counted from 0
};

/// The one layer of a format that doesn't name channels: those named R, G and B, else the first
/// three; a single one is grey.
ColourLayer NamelessLayer(const OIIO::ImageSpec& layout);

/// All layers of a format that names channels: those with R, G and B, or with Y for grey, or as
/// words. Each may have an A.
std::vector<ColourLayer> NamedLayers(const OIIO::ImageSpec& layout);

/// Those of `layers`, which `part` has, that are to be worked on.
std::vector<ColourLayer> Chosen(std::vector<ColourLayer> layers, const OIIO::ImageSpec& part,
                                const LayerChoice& choice);

/// What there is in a part, for users: "R, G, B, A and diffuse.R, ...".
std::string ChannelList(const std::vector<std::string>& names);

/// The channels of `layout` that belong to none of `layers`.
std::vector<int> OtherPlaces(const OIIO::ImageSpec& layout, const std::vector<ColourLayer>& layers);

} // namespace Kerovane::Host
