#include "Fuzz/FuzzedFrame.h"

#include <algorithm>
#include <limits>
#include <random>

namespace Kerovane::Fuzz {

namespace {

using Host::Depth;
using Host::World;

constexpr Depth kDepths[] = {Depth::Bits8, Depth::Bits16, Depth::Float32};

/// Edge cases of popups, of sizes and of fixed-point numbers, which are stored times 65536.
constexpr A_long kWholes[] = {
    std::numeric_limits<A_long>::min(), -1, 0, 1, 2, 3, 4, 24, 50 << 16, 100 << 16, 101 << 16,
    std::numeric_limits<A_long>::max()};

constexpr double kReals[] = {-std::numeric_limits<double>::infinity(),
                             std::numeric_limits<double>::lowest(),
                             -1,
                             -0.0,
                             0,
                             std::numeric_limits<double>::denorm_min(),
                             0.1,
                             1,
                             10,
                             std::numeric_limits<double>::max(),
                             std::numeric_limits<double>::infinity(),
                             std::numeric_limits<double>::quiet_NaN()};

template <typename Number, std::size_t kCount>
Number EdgeOr(FuzzedDataProvider& data, const Number (&edges)[kCount], Number other) {
    const auto place = data.ConsumeIntegralInRange<std::size_t>(0, kCount);
    return place < kCount ? edges[place] : other;
}

RawValue TakeValue(FuzzedDataProvider& data) {
    return {.whole = EdgeOr(data, kWholes, data.ConsumeIntegral<A_long>()),
            .real = EdgeOr(data, kReals, data.ConsumeFloatingPoint<double>())};
}

/// Takes a layer's size and row padding. Most layers are small, because a software rasteriser draws
/// large ones slowly.
FuzzedFrame::Layer TakeLayer(FuzzedDataProvider& data) {
    constexpr A_long kLargeSide = 4096;
    constexpr A_long kSmallSide = 64;
    constexpr A_long kMostPixels = 1 << 18;
    constexpr A_long kMostPadding = 9;
    const bool isLarge = data.ConsumeIntegral<std::uint8_t>() == 0xff;
    const A_long longest = isLarge ? kLargeSide : kSmallSide;
    FuzzedFrame::Layer layer;
    layer.width = data.ConsumeIntegralInRange<A_long>(0, longest);
    layer.height = data.ConsumeIntegralInRange<A_long>(0, longest);
    layer.height = std::min(layer.height, kMostPixels / std::max(layer.width, 1));
    layer.padding = data.ConsumeIntegralInRange<A_long>(0, kMostPadding);
    return layer;
}

PF_RationalScale TakeScale(FuzzedDataProvider& data) {
    return {.num = EdgeOr(data, kWholes, 1),
            .den = static_cast<A_u_long>(EdgeOr(data, kWholes, 1))};
}

} // namespace

World FuzzedFrame::Layer::make(Depth bits) const {
    const A_long pixel = Host::BytesPerPixel(bits);
    return {bits, width, height, width * pixel + padding * (pixel / 4)};
}

FuzzedFrame::FuzzedFrame(FuzzedDataProvider& data)
    : depth(data.PickValueInArray(kDepths)), inputLayer(TakeLayer(data)) {
    outputLayer = data.ConsumeBool() ? inputLayer : TakeLayer(data);
    noise = data.ConsumeIntegral<std::uint8_t>();
    time = data.ConsumeIntegral<A_long>();
    timeScale = data.ConsumeIntegral<std::uint8_t>();
    downsampleX = TakeScale(data);
    downsampleY = TakeScale(data);
    std::ranges::generate(values, [&data] { return TakeValue(data); });
}

World FuzzedFrame::input() const {
    World world = inputLayer.make(depth);
    std::minstd_rand random(noise);
    std::ranges::generate(world.bytes(),
                          [&random] { return static_cast<std::byte>(random() >> 8); });
    return world;
}

} // namespace Kerovane::Fuzz
