#pragma once

#include "Software/Rgba.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

namespace Kerovane::Software {

/// The two pixels of a row or column between which a position lies, and the weight of the second.
/// Outside of the line both are the outermost pixel.
struct Between {
    std::int32_t first;
    std::int32_t second;
    float share;
};

/// Returns the pixels around `place` in a line of `size` pixels. As in a texture, a pixel's middle
/// is at its index plus 0.5.
inline Between PixelsAround(float place, float size) {
    const float at = place / size * size - 0.5F;
    const float kept = std::min(std::max(at, -1.0F), size);
    const auto last = static_cast<std::int32_t>(size) - 1;
    const auto towardsZero = static_cast<std::int32_t>(kept);
    const std::int32_t floor = towardsZero - (static_cast<float>(towardsZero) > kept ? 1 : 0);
    return {std::min(std::max(floor, 0), last), std::min(floor + 1, last),
            kept - static_cast<float>(floor)};
}

/**
 * Paints cells in the colours of a picture: reads pixels of one form and makes pixels of another,
 * both with channels of type `Channel`.
 *
 * A colour is weighted by its alpha when it is drawn over nothing or over the picture. The result
 * is then multiplied by its alpha and divided again. At 8 bits the product is rounded to 8 bits in
 * between, as in the effect's render targets.
 */
template <typename Channel>
class Painter {
public:
    Painter(const Host::ConstPixelView& in, const Host::PixelView& out, bool useAlpha)
        : mPicture(in),
          mIn(in),
          mOut(out),
          mUseAlpha(useAlpha),
          mWidth(static_cast<float>(in.width)),
          mHeight(static_cast<float>(in.height)) {}

    Between columnsAround(float x) const { return PixelsAround(x, mWidth); }
    Between rowsAround(float y) const { return PixelsAround(y, mHeight); }

    /// Returns the picture's colour between these pixels, by bilinear interpolation.
    Rgba colour(const Between& x, const Between& y) const {
        return mIn.fromMemoryOrder((1 - x.share) * (1 - y.share) * texel(x.first, y.first) +
                                   x.share * (1 - y.share) * texel(x.second, y.first) +
                                   (1 - x.share) * y.share * texel(x.first, y.second) +
                                   x.share * y.share * texel(x.second, y.second));
    }

    /// Returns whether the picture shows through cells of that colour.
    bool isShowing(Rgba cell) const { return !mUseAlpha && cell[kAlpha] != 1; }

    /// Returns the final colour of a cell through which the picture does not show.
    Rgba straight(Rgba cell) const {
        return finished(cell[kAlpha] == 1 ? cell : mixed(Rgba{}, cell));
    }

    void makePixels(std::span<const Rgba> straight, std::span<Pixel<Channel>> pixels) const {
        mOut.makePixels(straight, pixels);
    }

    /// Returns the pixel at `x`, `y` of a cell through which the picture shows.
    Pixel<Channel> pixel(Rgba cell, std::ptrdiff_t x, std::ptrdiff_t y) const {
        return mOut.pixel(finished(mixed(mIn.fromMemoryOrder(texel(x, y)), cell)));
    }

private:
    static Rgba mixed(Rgba ground, Rgba colour) {
        const float alpha = colour[kAlpha];
        return ground * (1 - alpha) + colour * alpha;
    }

    Rgba texel(std::ptrdiff_t x, std::ptrdiff_t y) const {
        constexpr auto kBytes = static_cast<std::ptrdiff_t>(sizeof(Pixel<Channel>));
        return mIn.inMemoryOrder(mPicture.row(y) + x * kBytes);
    }

    /// Multiplies a colour by its alpha and divides it again.
    [[gnu::always_inline]] static Rgba finished(Rgba colour);

    Host::ConstPixelView mPicture;
    PixelForm<Channel> mIn;
    PixelForm<Channel> mOut;
    bool mUseAlpha;
    float mWidth;
    float mHeight;
};

template <typename Channel>
inline Rgba Painter<Channel>::finished(Rgba colour) {
    const float alpha = colour[kAlpha];
    if (alpha == 1) {
        return colour;
    }
    Rgba product = colour * alpha;
    product[kAlpha] = alpha;
    if constexpr (sizeof(Channel) == 1) {
        product = __builtin_convertvector(Rounded<Channel>(product), Rgba) /
                  static_cast<float>(Host::kWhite<Channel>);
    }
    const float kept = product[kAlpha];
    if (kept == 0) {
        return Rgba{};
    }
    Rgba straight = product / kept;
    straight[kAlpha] = kept;
    return straight;
}

} // namespace Kerovane::Software
