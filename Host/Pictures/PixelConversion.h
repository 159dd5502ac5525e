#pragma once

#include "AE_Effect.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>

namespace Kerovane::Host {

/// The value of a channel that stands for 1.0, in files and in layers.
template <typename Channel>
inline constexpr double kFileWhite = 1.0;
template <>
inline constexpr double kFileWhite<std::uint8_t> = 255;
template <>
inline constexpr double kFileWhite<std::uint16_t> = 65535;

template <typename Pixel>
inline constexpr double kLayerWhite = 1.0;
template <>
inline constexpr double kLayerWhite<PF_Pixel8> = 255;
template <>
inline constexpr double kLayerWhite<PF_Pixel16> = 32768;

/// The type of a layer pixel's channels.
template <typename Pixel>
using LayerChannel = decltype(Pixel::alpha);

/// Where a file's pixel has the layer's channels, counted from 0.
struct ChannelPlaces {
    int red = 0;
    int green = 0;
    int blue = 0;
    int alpha = -1; ///< -1 if the file has none: opaque
};

/// `value` of `fromWhite` on the scale of `toWhite`, rounded to the nearest and kept within 0 to
/// white if `To` is an integer.
template <typename To, typename From>
To Rescale(From value, double fromWhite, double toWhite) {
    if constexpr (std::same_as<To, From>) {
        if (fromWhite == toWhite) {
            return value;
        }
    }
    const double scaled = static_cast<double>(value) * (toWhite / fromWhite);
    if constexpr (std::floating_point<To>) {
        return static_cast<To>(scaled);
    } else {
        // Written so that what is not a number becomes 0.
        const double bounded = scaled > 0 ? (scaled < toWhite ? scaled : toWhite) : 0;
        const double raised = bounded + 0.5; // not negative, so that cutting it off rounds
        return static_cast<To>(raised);
    }
}

/// Fills a layer's row from a file's, `stride` channels from pixel to pixel.
template <typename FileChannel, typename Pixel>
void ReadRow(const FileChannel* file, std::size_t stride, ChannelPlaces places,
             std::span<Pixel> row) {
    using Channel = LayerChannel<Pixel>;
    const auto channel = [&file](int place) {
        return Rescale<Channel>(file[place], kFileWhite<FileChannel>, kLayerWhite<Pixel>);
    };
    for (Pixel& pixel : row) {
        pixel = {.alpha = places.alpha < 0 ? static_cast<Channel>(kLayerWhite<Pixel>)
                                           : channel(places.alpha),
                 .red = channel(places.red),
                 .green = channel(places.green),
                 .blue = channel(places.blue)};
        file += stride;
    }
}

/// Fills a file's row of RGBA pixels from a layer's.
template <typename FileChannel, typename Pixel>
void WriteRow(std::span<const Pixel> row, FileChannel* file) {
    const auto channel = [](LayerChannel<Pixel> value) {
        return Rescale<FileChannel>(value, kLayerWhite<Pixel>, kFileWhite<FileChannel>);
    };
    for (const Pixel& pixel : row) {
        file[0] = channel(pixel.red);
        file[1] = channel(pixel.green);
        file[2] = channel(pixel.blue);
        file[3] = channel(pixel.alpha);
        file += 4;
    }
}

} // namespace Kerovane::Host
