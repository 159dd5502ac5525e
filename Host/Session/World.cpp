#include "Host/Session/World.h"

#include "Host/Text/Error.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <new>
#include <utility>

namespace Kerovane::Host {

namespace {

struct DepthTraits {
    Depth depth;
    PF_PixelFormat format;
    A_long bytesPerPixel;

    A_long bytesPerChannel() const { return bytesPerPixel / 4; }
};

/// A record made by this host points with reserved0 at its row of this table, which tells the
/// depth.
constexpr std::array<DepthTraits, 3> kDepths{{
    {Depth::Bits8, PF_PixelFormat_ARGB32, sizeof(PF_Pixel8)},
    {Depth::Bits16, PF_PixelFormat_ARGB64, sizeof(PF_Pixel16)},
    {Depth::Float32, PF_PixelFormat_ARGB128, sizeof(PF_PixelFloat)},
}};

const DepthTraits& TraitsOf(Depth depth) {
    return *std::ranges::find(kDepths, depth, &DepthTraits::depth);
}

void CheckSides(std::ptrdiff_t width, std::ptrdiff_t height) {
    if (std::min(width, height) < 0 || std::max(width, height) > World::kMaxSide) {
        throw Error(fmt::format("a picture of {} x {} pixels is beyond {} pixels a side", width,
                                height, World::kMaxSide));
    }
}

std::ptrdiff_t PaddedRowBytes(Depth depth, std::ptrdiff_t width, std::ptrdiff_t height) {
    CheckSides(width, height);
    constexpr std::ptrdiff_t kAlignment = 16;
    const std::ptrdiff_t rowBytes = width * BytesPerPixel(depth);
    return (rowBytes + kAlignment - 1) / kAlignment * kAlignment + kAlignment;
}

static_assert(std::int64_t{World::kMaxSide} * sizeof(PF_PixelFloat) + 32 <=
                  std::numeric_limits<A_long>::max(),
              "a row's bytes fit into rowbytes");

} // namespace

World::World(Depth depth, std::ptrdiff_t width, std::ptrdiff_t height)
    : World(depth, width, height, PaddedRowBytes(depth, width, height)) {}

World::World(Depth depth, std::ptrdiff_t width, std::ptrdiff_t height, std::ptrdiff_t rowBytes)
    : mDepth(depth), mLayer(LayerOver(nullptr, depth, width, height, rowBytes)) {
    // calloc gets zeroed pages from the system when they are first touched, so an unused large
    // world costs nothing.
    mMemory.reset(std::calloc(std::max<std::size_t>(static_cast<std::size_t>(height), 1),
                              std::max<std::size_t>(static_cast<std::size_t>(rowBytes), 1)));
    if (mMemory == nullptr) {
        throw std::bad_alloc();
    }
    mLayer.data = static_cast<PF_PixelPtr>(mMemory.get());
}

std::span<std::byte> World::bytes() {
    return {static_cast<std::byte*>(mMemory.get()),
            static_cast<std::size_t>(mLayer.height) * static_cast<std::size_t>(mLayer.rowbytes)};
}

std::span<const std::byte> World::bytes() const {
    return {static_cast<const std::byte*>(mMemory.get()),
            static_cast<std::size_t>(mLayer.height) * static_cast<std::size_t>(mLayer.rowbytes)};
}

World CopyOf(const World& world) {
    World copy(world.depth(), world.width(), world.height(), world.rowBytes());
    std::ranges::copy(world.bytes(), copy.bytes().begin());
    return copy;
}

PF_LayerDef LayerOver(void* pixels, Depth depth, std::ptrdiff_t width, std::ptrdiff_t height,
                      std::ptrdiff_t rowBytes) {
    CheckSides(width, height);
    const DepthTraits& traits = TraitsOf(depth);
    if (rowBytes < width * traits.bytesPerPixel || rowBytes % traits.bytesPerChannel() != 0 ||
        !std::in_range<A_long>(rowBytes)) {
        throw Error(fmt::format("rows of {} pixels can't be {} bytes apart", width, rowBytes));
    }
    PF_LayerDef layer{};
    layer.reserved0 = const_cast<DepthTraits*>(&traits);
    layer.world_flags = PF_WorldFlag_WRITEABLE | (depth == Depth::Bits16 ? PF_WorldFlag_DEEP : 0);
    layer.data = static_cast<PF_PixelPtr>(pixels);
    layer.rowbytes = static_cast<A_long>(rowBytes);
    layer.width = static_cast<A_long>(width);
    layer.height = static_cast<A_long>(height);
    layer.extent_hint = {.left = 0, .top = 0, .right = layer.width, .bottom = layer.height};
    layer.pix_aspect_ratio = {.num = 1, .den = 1};
    return layer;
}

A_long BytesPerPixel(Depth depth) {
    return TraitsOf(depth).bytesPerPixel;
}

PF_PixelFormat PixelFormatOf(Depth depth) {
    return TraitsOf(depth).format;
}

std::optional<Depth> DepthOf(PF_PixelFormat format) {
    const auto* found = std::ranges::find(kDepths, format, &DepthTraits::format);
    return found != kDepths.end() ? std::optional(found->depth) : std::nullopt;
}

std::optional<Depth> DepthOf(const PF_LayerDef& layer) {
    const auto* found = std::ranges::find_if(
        kDepths, [&layer](const DepthTraits& traits) { return &traits == layer.reserved0; });
    return found != kDepths.end() ? std::optional(found->depth) : std::nullopt;
}

} // namespace Kerovane::Host
