#include "Adapters/OpenFX/PixelTransfer.h"

#define IMATH_HALF_NO_LOOKUP_TABLE
#include <half.h>

#include <algorithm>
#include <array>
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

/// The value of a channel that stands for 1.0.
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

/// Calls `work` with a zero of the channel's type.
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

/// A pixel in the effect's channel order: alpha, red, green, blue.
template <typename Value>
using Argb = std::array<Value, 4>;

/// Calls `work` with a zero of the type of `channel` and a zero of the type of `depth`, which is 8
/// bits or float here.
template <typename Work>
void WithTypes(Channel channel, Host::Depth depth, Work work) {
    WithChannel(channel, [&](auto sample) {
        if (depth == Host::Depth::Bits8) {
            work(sample, std::uint8_t{});
        } else {
            work(sample, float{});
        }
    });
}

template <typename Sample, typename Value>
Argb<Value> ReadPixel(const std::byte* at, bool isOpaque) {
    const auto sample = [at](std::size_t channel) {
        return Converted<Value>(Load<Sample>(at + channel * sizeof(Sample)));
    };
    return {isOpaque ? kFull<Value> : sample(3), sample(0), sample(1), sample(2)};
}

/// Reads one row. `row` is null if the row is kNoPlace.
template <typename Sample, typename Value>
void ReadRow(const HostPixels& from, const std::byte* row, const Places& columns, std::byte* to) {
    const bool isOpaque = from.coverage == Coverage::Opaque;
    const Argb<Value> nothing{isOpaque ? kFull<Value> : Value{}};
    const std::ptrdiff_t step = from.channels * static_cast<std::ptrdiff_t>(sizeof(Sample));
    for (const std::ptrdiff_t column : columns) {
        const bool isThere = row != nullptr && column != kNoPlace;
        const Argb<Value> pixel =
            isThere ? ReadPixel<Sample, Value>(row + column * step, isOpaque) : nothing;
        std::memcpy(to, &pixel, sizeof pixel);
        to += sizeof pixel;
    }
}

template <typename Sample, typename Value>
void WriteRow(const std::byte* row, const Places& columns, int channels, std::byte* to) {
    const std::size_t bytes = static_cast<std::size_t>(channels) * sizeof(Sample);
    constexpr auto kStep = static_cast<std::ptrdiff_t>(sizeof(Argb<Value>));
    for (const std::ptrdiff_t column : columns) {
        const auto [alpha, red, green, blue] = Load<Argb<Value>>(row + column * kStep);
        const Sample samples[] = {Converted<Sample>(red), Converted<Sample>(green),
                                  Converted<Sample>(blue), Converted<Sample>(alpha)};
        std::memcpy(to, samples, bytes);
        to += bytes;
    }
}

} // namespace

void ReadPixels(const HostPixels& from, const Places& columns, const Places& rows,
                const Host::PixelView& to) {
    WithTypes(from.channel, to.depth, [&](auto sample, auto value) {
        for (std::ptrdiff_t y = 0; y < to.height; ++y) {
            const std::ptrdiff_t place = rows[static_cast<std::size_t>(y)];
            const std::byte* row = place != kNoPlace ? from.top + place * from.rowBytes : nullptr;
            ReadRow<decltype(sample), decltype(value)>(from, row, columns, to.row(y));
        }
    });
}

void WritePixels(const Host::ConstPixelView& from, const Places& columns, const Places& rows,
                 const HostPixels& to) {
    WithTypes(to.channel, from.depth, [&](auto sample, auto value) {
        std::byte* row = to.top;
        for (const std::ptrdiff_t place : rows) {
            WriteRow<decltype(sample), decltype(value)>(from.row(place), columns, to.channels, row);
            row += to.rowBytes;
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
