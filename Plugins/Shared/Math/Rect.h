#pragma once

#include "Plugins/Shared/Math/Vec2.h"
#include "Plugins/Shared/Math/Vec4.h"

#include <algorithm>
#include <type_traits>

namespace Kerovane::Tesselune {

/**
 * An axis-aligned rectangle: left, top, width and height, stored in the four numbers of its base.
 * The y axis points down. Width and height may be negative; they are never normalised.
 *
 * Inherited operations treat the four numbers as a vector: the operators return a Vec4, `lerp`
 * scales to length 1, and `equal` compares the distance, unlike `==`.
 */
class Rect : public Vec4 {
public:
    // Construction and assignment

    constexpr Rect() noexcept = default;
    constexpr Rect(const Vec2& point, const Vec2& size) noexcept
        : Rect(point.x, point.y, size.x, size.y) {}
    constexpr Rect(double left, double top, double width, double height) noexcept
        : Vec4(left, top, width, height) {}

    // Comparison

    /// Returns whether each of the four numbers differs by at most 1e-12, inclusive.
    constexpr bool operator==(const Rect& other) const noexcept;

    // Origin and size

    constexpr Vec2 getPoint() const noexcept { return {getLeft(), getTop()}; }
    constexpr void setPoint(const Vec2& point) noexcept;
    constexpr double getWidth() const noexcept { return z; }
    constexpr double getHeight() const noexcept { return w; }
    constexpr Vec2 getSize() const noexcept { return {getWidth(), getHeight()}; }
    constexpr void setSize(const Vec2& size) noexcept;
    constexpr double getArea() const noexcept { return getWidth() * getHeight(); }
    /// Returns whether the width or the height is 0 or below.
    constexpr bool isEmpty() const noexcept { return getWidth() <= 0.0 || getHeight() <= 0.0; }

    // Edges

    constexpr double getLeft() const noexcept { return x; }
    constexpr double getTop() const noexcept { return y; }
    constexpr double getRight() const noexcept { return getLeft() + getWidth(); }
    constexpr double getBottom() const noexcept { return getTop() + getHeight(); }
    /// Move the rectangle; the size is unchanged.
    constexpr void setLeft(double newLeft) noexcept { left() = newLeft; }
    constexpr void setTop(double newTop) noexcept { top() = newTop; }
    /// Changes the width; the left edge is unchanged.
    constexpr void setRight(double right) noexcept { width() = right - getLeft(); }
    /// Changes the height; the top edge is unchanged. `bottom` is in single precision: 0.1 counts
    /// as 0.1F.
    constexpr void setBottom(float bottom) noexcept { height() = bottom - getTop(); }

    // Centre; setting it moves the rectangle

    constexpr double getCenterX() const noexcept { return getLeft() + getWidth() * 0.5; }
    constexpr double getCenterY() const noexcept { return getTop() + getHeight() * 0.5; }
    constexpr Vec2 getCenter() const noexcept { return {getCenterX(), getCenterY()}; }
    constexpr void setCenterX(double centerX) noexcept { left() = centerX - getWidth() * 0.5; }
    constexpr void setCenterY(double centerY) noexcept { top() = centerY - getHeight() * 0.5; }
    constexpr void setCenter(const Vec2& center) noexcept;

    // Corners

    constexpr Vec2 getTopLeft() const noexcept { return {getLeft(), getTop()}; }
    constexpr Vec2 getTopRight() const noexcept { return {getRight(), getTop()}; }
    constexpr Vec2 getBottomLeft() const noexcept { return {getLeft(), getBottom()}; }
    constexpr Vec2 getBottomRight() const noexcept { return {getRight(), getBottom()}; }

    // Relation to points and rectangles

    /// Inclusive: points and edges on the border count as inside.
    constexpr bool containsRect(const Rect& other) const noexcept;
    constexpr bool containsPoint(const Vec2& point) const noexcept;
    /// Strict: rectangles that only share an edge do not intersect.
    constexpr bool intersects(const Rect& other) const noexcept;
    /// Inclusive: rectangles that only share an edge or a corner touch.
    constexpr bool touches(const Rect& other) const noexcept;

    // Return new rectangles. `float` arguments are in single precision, as in setBottom.

    /// Returns the intersection; its size is negative on an axis on which the two are apart.
    [[nodiscard]] constexpr Rect intersect(const Rect& other) const noexcept;
    /// Returns the smallest rectangle around both, even if one is empty.
    [[nodiscard]] constexpr Rect unite(const Rect& other) const noexcept;
    /// Returns the rectangle grown by d.x at left and right and by d.y at top and bottom.
    [[nodiscard]] constexpr Rect expand(const Vec2& d) const noexcept;
    [[nodiscard]] constexpr Rect expand(float d) const noexcept { return expand(Vec2(d, d)); }
    /// Moves each side outwards by (factor - 1) times the size: the size becomes 2 factor - 1 times
    /// the old size. The centre is unchanged.
    [[nodiscard]] constexpr Rect scale(float factorX, float factorY) const noexcept;

    // Growth to a point

    /// Grows in place until the point lies on or in the rectangle.
    constexpr void include(const Vec2& p) noexcept;
    [[nodiscard]] constexpr Rect getInclude(const Vec2& p) const noexcept;

private:
    // The fields of the base by their meaning here

    constexpr double& left() noexcept { return x; }
    constexpr double& top() noexcept { return y; }
    constexpr double& width() noexcept { return z; }
    constexpr double& height() noexcept { return w; }

    /// Grows the span that begins at `start` and is `extent` long until it contains `value`.
    static constexpr void include(double& start, double& extent, double value) noexcept;
};

static_assert(std::is_trivially_copyable_v<Rect> && std::is_standard_layout_v<Rect>);
static_assert(sizeof(Rect) == sizeof(Vec4));

constexpr bool Rect::operator==(const Rect& other) const noexcept {
    return getPoint() == other.getPoint() && getSize() == other.getSize();
}

constexpr void Rect::setPoint(const Vec2& point) noexcept {
    left() = point.x;
    top() = point.y;
}

constexpr void Rect::setSize(const Vec2& size) noexcept {
    width() = size.x;
    height() = size.y;
}

constexpr void Rect::setCenter(const Vec2& center) noexcept {
    setCenterX(center.x);
    setCenterY(center.y);
}

constexpr bool Rect::containsRect(const Rect& other) const noexcept {
    return getLeft() <= other.getLeft() && other.getRight() <= getRight() &&
           getTop() <= other.getTop() && other.getBottom() <= getBottom();
}

constexpr bool Rect::containsPoint(const Vec2& point) const noexcept {
    return getLeft() <= point.x && point.x <= getRight() && getTop() <= point.y &&
           point.y <= getBottom();
}

constexpr bool Rect::intersects(const Rect& other) const noexcept {
    return getLeft() < other.getRight() && other.getLeft() < getRight() &&
           getTop() < other.getBottom() && other.getTop() < getBottom();
}

constexpr bool Rect::touches(const Rect& other) const noexcept {
    return getLeft() <= other.getRight() && other.getLeft() <= getRight() &&
           getTop() <= other.getBottom() && other.getTop() <= getBottom();
}

constexpr Rect Rect::intersect(const Rect& other) const noexcept {
    const double left = std::max(getLeft(), other.getLeft());
    const double top = std::max(getTop(), other.getTop());
    const double right = std::min(getRight(), other.getRight());
    const double bottom = std::min(getBottom(), other.getBottom());
    return {left, top, right - left, bottom - top};
}

constexpr Rect Rect::unite(const Rect& other) const noexcept {
    const double left = std::min(getLeft(), other.getLeft());
    const double top = std::min(getTop(), other.getTop());
    const double right = std::max(getRight(), other.getRight());
    const double bottom = std::max(getBottom(), other.getBottom());
    return {left, top, right - left, bottom - top};
}

constexpr Rect Rect::expand(const Vec2& d) const noexcept {
    return {getPoint() - d, getSize() + d * 2.0};
}

constexpr Rect Rect::scale(float factorX, float factorY) const noexcept {
    return expand(Vec2(factorX * getWidth() - getWidth(), factorY * getHeight() - getHeight()));
}

constexpr void Rect::include(const Vec2& p) noexcept {
    include(left(), width(), p.x);
    include(top(), height(), p.y);
}

constexpr Rect Rect::getInclude(const Vec2& p) const noexcept {
    Rect result = *this;
    result.include(p);
    return result;
}

constexpr void Rect::include(double& start, double& extent, double value) noexcept {
    const double end = start + extent;
    if (value < start) {
        start = value;
        extent = std::max(end, value) - value;
    } else if (value > end) {
        extent = value - start;
    }
}

} // namespace Kerovane::Tesselune
