#include "Host/Pictures/ColourLayers.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <map>
#include <string_view>
#include <utility>

namespace Kerovane::Host {

namespace {

enum class Component { Red, Green, Blue, Alpha, Grey };

/// Returns the component named by the last word of a channel's name, or nothing if it is no colour.
std::optional<Component> ComponentOf(std::string word) {
    static const std::map<std::string, Component, std::less<>> kComponents{
        {"r", Component::Red},       {"red", Component::Red},     {"g", Component::Green},
        {"green", Component::Green}, {"b", Component::Blue},      {"blue", Component::Blue},
        {"a", Component::Alpha},     {"alpha", Component::Alpha}, {"y", Component::Grey},
    };
    std::ranges::transform(word, word.begin(), [](unsigned char letter) {
        return static_cast<char>(std::tolower(letter));
    });
    const auto found = kComponents.find(word);
    return found != kComponents.end() ? std::optional(found->second) : std::nullopt;
}

/// The places of the components found in a layer.
using Components = std::map<Component, int>;

int PlaceOf(const Components& components, Component component) {
    const auto found = components.find(component);
    return found != components.end() ? found->second : -1;
}

/// Returns nothing if the components are neither RGB nor grey.
std::optional<ChannelPlaces> PlacesOf(const Components& components) {
    const int alpha = PlaceOf(components, Component::Alpha);
    const ChannelPlaces colour{.red = PlaceOf(components, Component::Red),
                               .green = PlaceOf(components, Component::Green),
                               .blue = PlaceOf(components, Component::Blue),
                               .alpha = alpha};
    if (std::min({colour.red, colour.green, colour.blue}) >= 0) {
        return colour;
    }
    const int grey = PlaceOf(components, Component::Grey);
    return grey >= 0 ? std::optional<ChannelPlaces>(
                           {.red = grey, .green = grey, .blue = grey, .alpha = alpha})
                     : std::nullopt;
}

/// Returns the place of alpha, or -1. Some readers report an alpha channel beyond the picture's
/// channels. The channel named A then counts.
int AlphaOf(const OIIO::ImageSpec& layout) {
    return layout.alpha_channel < layout.nchannels ? layout.alpha_channel
                                                   : layout.channelindex("A");
}

/// Returns whether a layer is a stereo view. If two views share a part, only the channels of the
/// second view have its name in front.
bool IsView(const std::string& name) {
    return name == "left" || name == "right";
}

} // namespace

ColourLayer NamelessLayer(const OIIO::ImageSpec& layout) {
    const int alpha = AlphaOf(layout);
    const int red = layout.channelindex("R");
    const int green = layout.channelindex("G");
    const int blue = layout.channelindex("B");
    if (red >= 0 && green >= 0 && blue >= 0) {
        return {.name = "", .places = {.red = red, .green = green, .blue = blue, .alpha = alpha}};
    }
    const bool colour = layout.nchannels - (alpha >= 0 ? 1 : 0) >= 3;
    const int first = alpha == 0 && layout.nchannels > 1 ? 1 : 0;
    return {.name = "",
            .places = {.red = first,
                       .green = first + (colour ? 1 : 0),
                       .blue = first + (colour ? 2 : 0),
                       .alpha = alpha}};
}

std::vector<ColourLayer> NamedLayers(const OIIO::ImageSpec& layout) {
    std::vector<std::pair<std::string, Components>> found;
    for (int place = 0; place < layout.nchannels; ++place) {
        const std::string& channel = layout.channelnames[static_cast<std::size_t>(place)];
        const std::size_t dot = channel.rfind('.');
        const std::string layer = dot != std::string::npos ? channel.substr(0, dot) : "";
        const auto component =
            ComponentOf(dot != std::string::npos ? channel.substr(dot + 1) : channel);
        if (!component) {
            continue;
        }
        auto known = std::ranges::find(found, layer, &decltype(found)::value_type::first);
        if (known == found.end()) {
            known = found.insert(found.end(), {layer, {}});
        }
        known->second.emplace(*component, place);
    }
    std::vector<ColourLayer> layers;
    for (const auto& [name, components] : found) {
        if (const auto places = PlacesOf(components)) {
            layers.push_back({.name = name, .places = *places});
        }
    }
    return layers;
}

std::vector<ColourLayer> Chosen(std::vector<ColourLayer> layers, const OIIO::ImageSpec& part,
                                const LayerChoice& choice) {
    const bool isNamed =
        !choice.layer.empty() && part.get_string_attribute("oiio:subimagename") == choice.layer;
    std::erase_if(layers, [&](const ColourLayer& layer) {
        return choice.layer.empty()
                   ? !layer.name.empty() && !IsView(layer.name)
                   : layer.name != choice.layer && !(isNamed && layer.name.empty());
    });
    return layers;
}

std::string ChannelList(const std::vector<std::string>& names) {
    constexpr std::size_t kMost = 12;
    const std::size_t shown = std::min(names.size(), kMost);
    const std::string text = fmt::format(
        "{}", fmt::join(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(shown), ", "));
    return names.size() > kMost ? fmt::format("{} and {} more", text, names.size() - kMost) : text;
}

std::vector<int> OtherPlaces(const OIIO::ImageSpec& layout,
                             const std::vector<ColourLayer>& layers) {
    std::vector<int> others;
    for (int place = 0; place < layout.nchannels; ++place) {
        const bool isColour = std::ranges::any_of(layers, [place](const ColourLayer& layer) {
            const ChannelPlaces& at = layer.places;
            return place == at.red || place == at.green || place == at.blue || place == at.alpha;
        });
        if (!isColour) {
            others.push_back(place);
        }
    }
    return others;
}

} // namespace Kerovane::Host
