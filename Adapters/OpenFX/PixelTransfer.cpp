#include "Adapters/OpenFX/PixelTransfer.h"

#define IMATH_HALF_NO_LOOKUP_TABLE
#include <half.h>

#include <algorithm>
#include <concepts>
#include <cstdint>
#include <cstring>
#include <limits>

namespace Kerovane::OpenFX {

namespace {

template <typename Value>
Value Load(const std::byte* at) {
    Value value;
    std::memcpy(&value, at, sizeof value);
    return value;
}

/// The value that stands for 1.0.
template <typename Channel>
constexpr Channel kFull = std::numeric_limits<Channel>::max();
template <>
const Imath::half kFull<Imath::half> = Imath::half(1.0F);
template <>
constexpr float kFull<float> = 1.0F;

template <typename To, typename From>
To Converted(From value) {
    if constexpr (std::same_as<To, From>) {
        return value;
    } else if constexpr (std::integral<To>) {
        const float scaled = static_cast<float>(value) * kFull<To> + 0.5F;
        return scaled > 0 ? static_cast<To>(std::min<float>(scaled, kFull<To>)) : To{};
    } else if constexpr (std::integral<From>) {
        return To(static_cast<float>(value) / kFull<From>);
    } else {
        return To(value);
    }
}

/// Calls `work` with a value of the channel's type.
template <typename Work>
void WithChannel(Channel channel, Work work) {
    switch (channel) {
    case Channel::Byte:
        return work(std::uint8_t{});
    case Channel::Short:
        return work(std::uint16_t{});
    case Channel::Half:
        return work(Imath::half{});
    default:
        return work(float{});
    }
}

/// Calls `work` with a value of the type of `channel` and a pixel of an effect's of `depth`, which
/// are bytes or floats here.
template <typename Work>
void WithTypes(Channel channel, Host::Depth depth, Work work) {
    WithChannel(channel, [&](auto sample) {
        if (depth == Host::Depth::Bits8) {
            work(sample, PF_Pixel8{});
        } else {
            work(sample, PF_PixelFloat{});
        }
    });
}

template <typename Sample, typename Pixel>
void ReadRow(const std::byte* row, std::ptrdiff_t channels, bool isOpaque, const Places& columns,
             std::byte* to) {
    using Value = decltype(Pixel::alpha);
    const Pixel nothing{
        .alpha = isOpaque ? kFull<Value> : Value{}, .red = {}, .green = {}, .blue = {}};
    for (const std::ptrdiff_t column : columns) {
        Pixel pixel = nothing;
        if (row != nullptr && column != kNoPlace) {
            const auto sample = [&](std::ptrdiff_t channel) {
                constexpr auto kBytes = static_cast<std::ptrdiff_t>(sizeof(Sample));
                const std::ptrdiff_t at = (column * channels + channel) * kBytes;
                return Converted<Value>(Load<Sample>(row + at));
            };
            pixel = {.alpha = isOpaque ? kFull<Value> : sample(3),
                     .red = sample(0),
                     .green = sample(1),
                     .blue = sample(2)};
        }
        std::memcpy(to, &pixel, sizeof pixel);
        to += sizeof pixel;
    }
}

template <typename Sample, typename Pixel>
void WriteRow(const std::byte* row, const Places& columns, int channels, std::byte* to) {
    for (const std::ptrdiff_t column : columns) {
        const auto pixel = Load<Pixel>(row + column * static_cast<std::ptrdiff_t>(sizeof(Pixel)));
        const Sample samples[] = {Converted<Sample>(pixel.red), Converted<Sample>(pixel.green),
                                  Converted<Sample>(pixel.blue), Converted<Sample>(pixel.alpha)};
        const std::size_t bytes = static_cast<std::size_t>(channels) * sizeof(Sample);
        std::memcpy(to, samples, bytes);
        to += bytes;
    }
}

} // namespace

void ReadPixels(const HostPixels& from, const Places& columns, const Places& rows,
                const Host::PixelView& to) {
    WithTypes(from.channel, to.depth, [&](auto sample, auto pixel) {
        for (std::ptrdiff_t y = 0; y < to.height; ++y) {
            const std::ptrdiff_t place = rows[static_cast<std::size_t>(y)];
            const std::byte* row = place != kNoPlace ? from.top + place * from.rowBytes : nullptr;
            ReadRow<decltype(sample), decltype(pixel)>(
                row, from.channels, from.coverage == Coverage::Opaque, columns, to.row(y));
        }
    });
}

void WritePixels(const Host::ConstPixelView& from, const Places& columns, const Places& rows,
                 const HostPixels& to) {
    WithTypes(to.channel, from.depth, [&](auto sample, auto pixel) {
        for (std::size_t y = 0; y < rows.size(); ++y) {
            WriteRow<decltype(sample), decltype(pixel)>(from.row(rows[y]), columns, to.channels,
                                                        to.top + static_cast<std::ptrdiff_t>(y) *
                                                                     to.rowBytes);
        }
    });
}

void ClearPixels(const HostPixels& pixels) {
    const std::size_t bytes = static_cast<std::size_t>(pixels.columns.size()) * pixels.pixelBytes();
    for (int y = 0; y < pixels.rows.size(); ++y) {
        std::memset(pixels.top + y * pixels.rowBytes, 0, bytes);
    }
}

} // namespace Kerovane::OpenFX
