#pragma once

#include "AE_Effect.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>

namespace Kerovane::Host {

/// The channel value that means 1.0, in files and in layers.
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

/// The channel type of a layer's pixel.
template <typename Pixel>
using LayerChannel = decltype(Pixel::alpha);

/// The places of a layer's channels within a file's pixel, counted from 0.
struct ChannelPlaces {
    int red = 0;
    int green = 0;
    int blue = 0;
    int alpha = -1; ///< -1: none, so the pixel is opaque
};

/// Converts `value` from a scale whose white is `fromWhite` to one whose white is `toWhite`.
/// Returns it unchanged if neither the type nor the white changes. Otherwise integer results are
/// rounded to nearest and limited to 0 to `toWhite`; NaN becomes 0 in them.
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
        // Written so that NaN becomes 0.
        const double bounded = scaled > 0 ? (scaled < toWhite ? scaled : toWhite) : 0;
        // Truncation rounds this to nearest, because it is not negative.
        const double raised = bounded + 0.5;
        return static_cast<To>(raised);
    }
}

/// Fills a layer's row from a file's row. `stride` is the number of channels per pixel in the file.
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

/// Fills a file's row of RGBA pixels from a layer's row.
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
