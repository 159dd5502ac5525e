#pragma once

#include "Host/Pictures/PixelConversion.h"

#include <OpenImageIO/imageio.h>

#include <optional>
#include <string>
#include <vector>

namespace Kerovane::Host {

/** The places of a colour layer's channels in a part of a file. */
struct ColourLayer {
    std::string name; ///< "left" for left.R; empty for R
    ChannelPlaces places;

    bool isGrey() const { return places.red == places.green; }
    bool hasAlpha() const { return places.alpha >= 0; }
};

/// The user's choice of layers to work on. The default is the unnamed layer and the views of every
/// part.
struct LayerChoice {
    std::string layer{};       ///< a layer's or part's name; empty: the unnamed layer and the views
    std::optional<int> part{}; ///< counted from 0
};

/// Returns the layer of a format whose channels have no layer names: the channels R, G and B, or
/// else the first three. Fewer than three colour channels are read as grey, from the first of them.
ColourLayer NamelessLayer(const OIIO::ImageSpec& layout);

/// Returns all layers of a format with named channels. A layer has R, G and B, or Y for grey, and
/// may have A; the names may also be words such as "red".
std::vector<ColourLayer> NamedLayers(const OIIO::ImageSpec& layout);

/// Returns those of `layers` that the user chose. `part` is the layout of the part that the layers
/// belong to.
std::vector<ColourLayer> Chosen(std::vector<ColourLayer> layers, const OIIO::ImageSpec& part,
                                const LayerChoice& choice);

/// Returns a list of channels for users: "R, G, B, A and 5 more".
std::string ChannelList(const std::vector<std::string>& names);

/// Returns the places of the channels of `layout` that belong to none of `layers`.
std::vector<int> OtherPlaces(const OIIO::ImageSpec& layout, const std::vector<ColourLayer>& layers);

} // namespace Kerovane::Host
