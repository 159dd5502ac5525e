#include "Host/Video/Palette.h"

#include "Host/Video/ScalerPool.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

namespace Kerovane::Host {

namespace {

constexpr std::size_t kColors = 255;
constexpr std::uint8_t kTransparent = 255; ///< the transparent colour's index in the palette
constexpr std::size_t kChannels = 3;
constexpr int kOpaque = 128;
constexpr std::uint32_t kFullAlpha = 0xFF000000;

using Rgb = std::array<std::uint8_t, kChannels>;

/// A set of equal or similar colours: how many pixels have them, and the sum of each channel.
struct Shade {
    std::uint32_t key = 0;
    std::uint64_t count = 0;
    std::array<std::uint64_t, kChannels> sum{};

    double mean(std::size_t channel) const {
        return static_cast<double>(sum[channel]) / static_cast<double>(count);
    }
};

std::uint32_t ShadeKey(const std::uint8_t* pixel) {
    constexpr unsigned kDropped = 3;
    constexpr unsigned kKept = 5;
    return (static_cast<unsigned>(pixel[0]) >> kDropped << 2 * kKept) |
           (static_cast<unsigned>(pixel[1]) >> kDropped << kKept) |
           (static_cast<unsigned>(pixel[2]) >> kDropped);
}

std::uint32_t ExactKey(const std::uint8_t* pixel) {
    return static_cast<std::uint32_t>(pixel[0]) << 16 | static_cast<std::uint32_t>(pixel[1]) << 8 |
           pixel[2];
}

template <typename Action>
void ForEachPixel(const AVFrame& rgba, const Action& action) {
    for (int y = 0; y < rgba.height; ++y) {
        const std::uint8_t* pixel = rgba.data[0] + std::ptrdiff_t{y} * rgba.linesize[0];
        for (int x = 0; x < rgba.width; ++x, pixel += 4) {
            action(x, y, pixel);
        }
    }
}

template <typename Key>
std::vector<Shade> Histogram(const AVFrame& rgba, const Key& keyOf) {
    std::unordered_map<std::uint32_t, Shade> shades;
    ForEachPixel(rgba, [&](int, int, const std::uint8_t* pixel) {
        if (pixel[3] < kOpaque) {
            return;
        }
        const std::uint32_t key = keyOf(pixel);
        Shade& shade = shades[key];
        shade.key = key;
        ++shade.count;
        for (std::size_t channel = 0; channel < kChannels; ++channel) {
            shade.sum[channel] += pixel[channel];
        }
    });
    std::vector<Shade> list;
    list.reserve(shades.size());
    for (const auto& [key, shade] : shades) {
        list.push_back(shade);
    }
    std::ranges::sort(list, {}, &Shade::key);
    return list;
}

/// A set of shades that share one palette colour.
struct Box {
    std::span<Shade> shades;
    std::size_t widest = 0; ///< the channel with the greatest range
    double weight = 0;      ///< that range times the number of pixels; the heaviest box is split

    explicit Box(std::span<Shade> of) : shades(of) {
        std::uint64_t count = 0;
        for (const Shade& shade : shades) {
            count += shade.count;
        }
        for (std::size_t channel = 0; channel < kChannels; ++channel) {
            const auto [least, most] = std::ranges::minmax(
                shades, {}, [channel](const Shade& shade) { return shade.mean(channel); });
            const double range = most.mean(channel) - least.mean(channel);
            if (range * static_cast<double>(count) > weight) {
                weight = range * static_cast<double>(count);
                widest = channel;
            }
        }
    }

    /// Splits the shades at the median of the widest channel: sorts them and returns how many
    /// belong to the first half, at least 1 and not all.
    std::size_t divide() {
        std::ranges::sort(shades, {}, [this](const Shade& shade) { return shade.mean(widest); });
        std::uint64_t all = 0;
        for (const Shade& shade : shades) {
            all += shade.count;
        }
        std::uint64_t before = 0;
        std::size_t near = 0;
        while (near + 1 < shades.size() && (near == 0 || 2 * before < all)) {
            before += shades[near++].count;
        }
        return near;
    }

    Rgb mean() const {
        Shade sum;
        for (const Shade& shade : shades) {
            sum.count += shade.count;
            for (std::size_t channel = 0; channel < kChannels; ++channel) {
                sum.sum[channel] += shade.sum[channel];
            }
        }
        Rgb rgb{};
        for (std::size_t channel = 0; channel < kChannels; ++channel) {
            rgb[channel] = static_cast<std::uint8_t>(sum.mean(channel) + 0.5);
        }
        return rgb;
    }
};

std::vector<Box> MedianCut(std::vector<Shade>& shades) {
    std::vector<Box> boxes;
    if (shades.empty()) {
        return boxes;
    }
    boxes.emplace_back(shades);
    while (boxes.size() < kColors) {
        const auto heaviest = std::ranges::max_element(boxes, {}, &Box::weight);
        if (heaviest->weight == 0 || heaviest->shades.size() < 2) {
            break;
        }
        const std::size_t near = heaviest->divide();
        const std::span<Shade> all = heaviest->shades;
        *heaviest = Box(all.first(near));
        boxes.emplace_back(all.subspan(near));
    }
    return boxes;
}

template <typename Key>
AvFrame PalettizedBy(const AVFrame& rgba, std::vector<Shade> shades, const Key& keyOf) {
    const std::vector<Box> boxes = MedianCut(shades);
    AvFrame frame = NewFrame(AV_PIX_FMT_PAL8, rgba.width, rgba.height);
    auto* const palette = reinterpret_cast<std::uint32_t*>(frame->data[1]);
    std::fill_n(palette, kColors, kFullAlpha);
    palette[kTransparent] = 0;
    std::unordered_map<std::uint32_t, std::uint8_t> places;
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        palette[i] = kFullAlpha | ExactKey(boxes[i].mean().data());
        for (const Shade& shade : boxes[i].shades) {
            places[shade.key] = static_cast<std::uint8_t>(i);
        }
    }
    ForEachPixel(rgba, [&](int x, int y, const std::uint8_t* pixel) {
        frame->data[0][std::ptrdiff_t{y} * frame->linesize[0] + x] =
            pixel[3] < kOpaque ? kTransparent : places.at(keyOf(pixel));
    });
    return frame;
}

} // namespace

AvFrame Palettized(const AVFrame& rgba) {
    std::vector<Shade> exact = Histogram(rgba, ExactKey);
    return exact.size() <= kColors ? PalettizedBy(rgba, std::move(exact), ExactKey)
                                   : PalettizedBy(rgba, Histogram(rgba, ShadeKey), ShadeKey);
}

} // namespace Kerovane::Host
