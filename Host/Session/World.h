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
/// PF_PixelFloat) and returns the call's result.
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
 * A layer's pixels as effects see them: alpha, red, green, blue with straight alpha, top row first,
 * with padding after each row. Owns its memory; movable, not copyable.
 */
class World {
public:
    static constexpr A_long kMaxSide = 30000; ///< in pixels

    /**
     * Creates a transparent black world. Rows are padded to a multiple of 16 bytes plus another 16
     * bytes. Throws Error if a side is negative or above kMaxSide, std::bad_alloc if memory is
     * exhausted.
     */
    World(Depth depth, std::ptrdiff_t width, std::ptrdiff_t height);

    /// Creates a transparent black world with `rowBytes` from row to row. Throws Error also if
    /// LayerOver rejects `rowBytes`.
    World(Depth depth, std::ptrdiff_t width, std::ptrdiff_t height, std::ptrdiff_t rowBytes);

    Depth depth() const { return mDepth; }
    A_long width() const { return mLayer.width; }
    A_long height() const { return mLayer.height; }
    A_long rowBytes() const { return mLayer.rowbytes; }

    /// The record that represents this world in calls to the effect. Copies of it are valid until
    /// the world is destroyed or moved from.
    PF_LayerDef& layer() { return mLayer; }
    const PF_LayerDef& layer() const { return mLayer; }

    /// All bytes, padding included: rowBytes() times height().
    std::span<std::byte> bytes();
    std::span<const std::byte> bytes() const;

    /// Returns the pixels of row `y`. `Pixel` must match depth(): PF_Pixel8, PF_Pixel16 or
    /// PF_PixelFloat.
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

/// Returns a copy of all bytes, padding included.
World CopyOf(const World& world);

/**
 * Returns the record that represents pixels owned by the caller in calls to the effect: rows of
 * `width` pixels of `depth`, in a World's channel order, `rowBytes` apart. Throws Error if a side
 * is negative or above World::kMaxSide, or if `rowBytes` is too small for a row or not a multiple
 * of a channel's size.
 */
PF_LayerDef LayerOver(void* pixels, Depth depth, std::ptrdiff_t width, std::ptrdiff_t height,
                      std::ptrdiff_t rowBytes);

/// Returns the bytes per pixel: 4, 8 or 16.
A_long BytesPerPixel(Depth depth);

PF_PixelFormat PixelFormatOf(Depth depth);

/// Returns nothing if `format` is none of the three depths.
std::optional<Depth> DepthOf(PF_PixelFormat format);

/// Returns the depth of a layer whose record was made by World or LayerOver, also of a copy of the
/// record. Returns nothing for other layers.
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
