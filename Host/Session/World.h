#pragma once

#include "AE_Effect.h"
#include "Host/Pixels/PixelView.h"

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <optional>
#include <span>
#include <type_traits>
#include <utility>

namespace Kerovane::Host {

/// Calls `f` with a std::type_identity of the pixel type of `depth` (PF_Pixel8, PF_Pixel16 or
/// PF_PixelFloat) and returns what it returns.
template <typename F>
auto withPixelType(Depth depth, F&& f) {
    switch (depth) {
    case Depth::Bits8:
        return std::forward<F>(f)(std::type_identity<PF_Pixel8>());
    case Depth::Bits16:
        return std::forward<F>(f)(std::type_identity<PF_Pixel16>());
    default:
        return std::forward<F>(f)(std::type_identity<PF_PixelFloat>());
    }
}

/**
 * A layer's pixels as effects see them: alpha, red, green, blue with straight alpha, the first row
 * on top, each row followed by padding. Owns its memory; movable, not copyable.
 */
class World {
public:
    static constexpr A_long kMaxSide = 30000; ///< pixels

    /**
     * A transparent black world, each row padded to a multiple of 16 bytes and 16 bytes more.
     * Throws Error if a side is negative or above kMaxSide, std::bad_alloc without memory.
     */
    World(Depth depth, std::ptrdiff_t width, std::ptrdiff_t height);

    /// The same with `rowBytes` from row to row. Throws Error also if LayerOver refuses them.
    World(Depth depth, std::ptrdiff_t width, std::ptrdiff_t height, std::ptrdiff_t rowBytes);

    Depth depth() const { return mDepth; }
    A_long width() const { return mLayer.width; }
    A_long height() const { return mLayer.height; }
    A_long rowBytes() const { return mLayer.rowbytes; }

    /// The record that stands for this world in calls to the effect. Copies of it stay valid while
    /// the world lives and is not moved from.
    PF_LayerDef& layer() { return mLayer; }
    const PF_LayerDef& layer() const { return mLayer; }

    /// All bytes, padding included: rowBytes() times height().
    std::span<std::byte> bytes();
    std::span<const std::byte> bytes() const;

    /// The pixels of row `y`. `Pixel` is PF_Pixel8, PF_Pixel16 or PF_PixelFloat, as depth() says.
    template <typename Pixel>
    std::span<Pixel> row(A_long y);
    template <typename Pixel>
    std::span<const Pixel> row(A_long y) const;

private:
    struct Free {
        void operator()(void* memory) const { std::free(memory); }
    };

    Depth mDepth;
    PF_LayerDef mLayer{};
    std::unique_ptr<void, Free> mMemory;
};

/// Copies all bytes, padding included.
World CopyOf(const World& world);

/**
 * The record that stands for pixels in anybody's memory in calls to the effect: rows of `width`
 * pixels of `depth`, laid out as a World's, `rowBytes` apart. Throws Error if a side is negative or
 * above World::kMaxSide, or if `rowBytes` is too small for a row or no multiple of a channel's
 * size.
 */
PF_LayerDef LayerOver(void* pixels, Depth depth, std::ptrdiff_t width, std::ptrdiff_t height,
                      std::ptrdiff_t rowBytes);

/// Bytes of a pixel: 4, 8 or 16.
A_long BytesPerPixel(Depth depth);

PF_PixelFormat PixelFormatOf(Depth depth);

/// Nothing if `format` is none of the three.
std::optional<Depth> DepthOf(PF_PixelFormat format);

/// The depth of a layer from its record or a copy of it; nothing if neither a World nor LayerOver
/// made it.
std::optional<Depth> DepthOf(const PF_LayerDef& layer);

template <typename Pixel>
std::span<Pixel> World::row(A_long y) {
    std::byte* start = bytes().data() + std::ptrdiff_t{y} * mLayer.rowbytes;
    return {reinterpret_cast<Pixel*>(start), static_cast<std::size_t>(mLayer.width)};
}

template <typename Pixel>
std::span<const Pixel> World::row(A_long y) const {
    const std::byte* start = bytes().data() + std::ptrdiff_t{y} * mLayer.rowbytes;
    return {reinterpret_cast<const Pixel*>(start), static_cast<std::size_t>(mLayer.width)};
}

} // namespace Kerovane::Host
