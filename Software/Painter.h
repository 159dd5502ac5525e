#pragma once

#include "Software/Rgba.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

namespace Kerovane::Software {

/// Between which pixels of a line a place lies, and the share of the second. A place outside of the
/// line lies between the outermost pixel and itself.
struct Between {
    std::int32_t first;
    std::int32_t second;
    float share;
};

/// As texture coordinates are, which count from the middle of a pixel, in a line of `size` pixels.
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
 * Paints cells in a picture's colours: reads pixels of one form, and makes those of another, both
 * with channels of the type `Channel`.
 *
 * A cell's colour is weighed by its alpha on its way onto nothing or onto the picture, and once
 * more as its product with the alpha that comes out. At 8 bits the product is kept in 8 bits before
 * it is divided again, as the effect's own targets keep it.
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

    /// The picture's colour between these pixels, as a texture is read with a linear filter.
    Rgba colour(const Between& x, const Between& y) const {
        return mIn.fromMemoryOrder((1 - x.share) * (1 - y.share) * texel(x.first, y.first) +
                                   x.share * (1 - y.share) * texel(x.second, y.first) +
                                   (1 - x.share) * y.share * texel(x.first, y.second) +
                                   x.share * y.share * texel(x.second, y.second));
    }

    /// Whether the picture shows through cells of that colour.
    bool isShowing(Rgba cell) const { return !mUseAlpha && cell[kAlpha] != 1; }

    /// What becomes of the colour of a cell through which nothing shows.
    Rgba straight(Rgba cell) const {
        return finished(cell[kAlpha] == 1 ? cell : mixed(Rgba{}, cell));
    }

    void makePixels(std::span<const Rgba> straight, std::span<Pixel<Channel>> pixels) const {
        mOut.makePixels(straight, pixels);
    }

    /// At `x`, `y` of a cell through which the picture shows.
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

    /// Multiplied by its alpha and divided again.
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
