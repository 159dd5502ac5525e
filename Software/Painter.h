#pragma once

#include "Software/CellGrid.h"
#include "Software/Fate.h"
#include "Software/Rgba.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace Kerovane::Software {

/// What a cell looks like.
template <typename Channel>
struct Paint {
    Pixel<Channel> pixel{}; ///< of the whole cell, unless the picture shows through
    bool showsPicture = false;
    Rgba colour{}; ///< that the picture shows through
};

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

    /// Of a cell that reads its colour between these pixels; of the hole that it leaves, if it has
    /// gone.
    Paint<Channel> paint(const Between& x, const Between& y, bool isLeft) const;

    Between columnsAround(float x) const { return PixelsAround(x, mWidth); }
    Between rowsAround(float y) const { return PixelsAround(y, mHeight); }

    /// The pixel at `x`, `y` of a cell that shows the picture.
    Pixel<Channel> pixel(const Paint<Channel>& paint, std::ptrdiff_t x, std::ptrdiff_t y) const {
        return finished(Mixed(mIn.fromMemoryOrder(texel(x, y)), paint.colour));
    }

private:
    static Rgba Mixed(Rgba ground, Rgba colour) {
        const float alpha = colour[kAlpha];
        return ground * (1 - alpha) + colour * alpha;
    }

    Rgba texel(std::ptrdiff_t x, std::ptrdiff_t y) const {
        constexpr auto kBytes = static_cast<std::ptrdiff_t>(sizeof(Pixel<Channel>));
        return mIn.inMemoryOrder(mPicture.row(y) + x * kBytes);
    }

    /// As a texture is read with a linear filter.
    Rgba filtered(const Between& x, const Between& y) const {
        return mIn.fromMemoryOrder((1 - x.share) * (1 - y.share) * texel(x.first, y.first) +
                                   x.share * (1 - y.share) * texel(x.second, y.first) +
                                   (1 - x.share) * y.share * texel(x.first, y.second) +
                                   x.share * y.share * texel(x.second, y.second));
    }

    Pixel<Channel> finished(Rgba colour) const;

    Host::ConstPixelView mPicture;
    PixelForm<Channel> mIn;
    PixelForm<Channel> mOut;
    bool mUseAlpha;
    float mWidth;
    float mHeight;
};

template <typename Channel>
Paint<Channel> Painter<Channel>::paint(const Between& x, const Between& y, bool isLeft) const {
    Paint<Channel> paint;
    const Rgba colour = isLeft ? filtered(x, y) : Rgba{};
    if (mUseAlpha) {
        paint.pixel = finished(Mixed(Rgba{}, colour));
    } else if (colour[kAlpha] == 1) {
        paint.pixel = finished(colour);
    } else {
        paint.showsPicture = true;
        paint.colour = colour;
    }
    return paint;
}

template <typename Channel>
Pixel<Channel> Painter<Channel>::finished(Rgba colour) const {
    const float alpha = colour[kAlpha];
    if (alpha == 1) {
        return mOut.pixel(colour);
    }
    Rgba product = colour * alpha;
    product[kAlpha] = alpha;
    if constexpr (sizeof(Channel) == 1) {
        product = __builtin_convertvector(Rounded<Channel>(product), Rgba) /
                  static_cast<float>(Host::kWhite<Channel>);
    }
    const float kept = product[kAlpha];
    if (kept == 0) {
        return {};
    }
    Rgba straight = product / kept;
    straight[kAlpha] = kept;
    return mOut.pixel(straight);
}

/// Cells, painted together.
template <typename Channel>
class PaintedCells {
public:
    void clear() { mPoints.clear(); }
    void add(Location point) { mPoints.push_back(point); }

    /// To be called when all cells are there, and before any is read.
    void paint(const Fate& fate, const Painter<Channel>& painter) {
        const std::size_t count = mPoints.size();
        mLeft.resize(count);
        mX.resize(count);
        mY.resize(count);
        mPaints.resize(count);
        fate.decide(mPoints, mLeft);
        for (std::size_t cell = 0; cell < count; ++cell) {
            mX[cell] = painter.columnsAround(mPoints[cell].x);
        }
        for (std::size_t cell = 0; cell < count; ++cell) {
            mY[cell] = painter.rowsAround(mPoints[cell].y);
        }
        for (std::size_t cell = 0; cell < count; ++cell) {
            mPaints[cell] = painter.paint(mX[cell], mY[cell], mLeft[cell] != 0);
        }
    }

    const Paint<Channel>& operator[](std::size_t cell) const { return mPaints[cell]; }

private:
    std::vector<Location> mPoints;
    std::vector<std::int32_t> mLeft;
    std::vector<Between> mX;
    std::vector<Between> mY;
    std::vector<Paint<Channel>> mPaints;
};

} // namespace Kerovane::Software
