#pragma once

#include "Plugins/Shared/Math/Vec3.h"

#include <limits>
#include <type_traits>

namespace Kerovane::Tesselune {

/**
 * An axis-aligned box, stored as its lowest and its highest corner. The empty box has the largest
 * double in `min` and the smallest positive normal double in `max`. A box that is grown from it by
 * negative coordinates only therefore keeps that tiny positive `max`.
 */
class Box3 {
public:
    Vec3 min = Vec3(std::numeric_limits<double>::max());
    Vec3 max = Vec3(std::numeric_limits<double>::min());

    // Construction and assignment

    /// Makes the empty box.
    constexpr Box3() noexcept = default;
    constexpr Box3(const Vec3& newMin, const Vec3& newMax) noexcept : min(newMin), max(newMax) {}

    constexpr void set(const Vec3& newMin, const Vec3& newMax) noexcept;
    constexpr void makeEmpty() noexcept { *this = Box3(); }
    /// Grows the empty box around points given as `count` numbers, x, y and z in turn. Fewer than
    /// three numbers give the empty box; one or two left over at the end are ignored.
    constexpr void setFromArray(const float* array, int count) noexcept;
    /// Becomes the bounding box of the points. Null or a count of 0 gives the empty box.
    constexpr void setFromPoints(const Vec3* points, int count) noexcept;
    constexpr void setFromCenterAndSize(const Vec3& center, const Vec3& size) noexcept;

    // Comparison

    /// Returns whether each component differs by at most 1e-12, inclusive.
    constexpr bool operator==(const Box3& other) const noexcept = default;

    // Properties. Centre and size of the empty box are meaningless.

    /// Returns whether `min` is above `max` on any axis, or both are exactly zero.
    constexpr bool isEmpty() const noexcept;
    constexpr Vec3 getCenter() const noexcept { return (min + max) * 0.5; }
    constexpr Vec3 getSize() const noexcept { return max - min; }

    // Relation to points and boxes, inclusive on all faces

    constexpr bool containsPoint(const Vec3& p) const noexcept;
    constexpr bool containsBox(const Box3& other) const noexcept;
    constexpr bool intersectsBox(const Box3& other) const noexcept;
    /// Returns the position of p relative to `min` (0) and `max` (1) on each axis; infinite or NaN
    /// on an axis without extent.
    constexpr Vec3 getParameter(const Vec3& p) const noexcept { return (p - min) / (max - min); }
    /// Returns the point of the box that is nearest to p.
    [[nodiscard]] constexpr Vec3 clampPoint(Vec3 p) const noexcept;
    /// Returns 0 for a point inside.
    double distanceToPoint(const Vec3& p) const noexcept { return (clampPoint(p) - p).length(); }

    // In place

    constexpr void expandByPoint(const Vec3& p) noexcept;
    // Grow both ends of each axis by v, or by s. s is in single precision: 0.1 counts as 0.1F.

    constexpr void expandByVector(const Vec3& v) noexcept { set(min - v, max + v); }
    constexpr void expandByScalar(float s) noexcept { expandByVector(Vec3(s)); }
    /// Becomes the intersection with `other`; empty if the two boxes do not meet.
    constexpr void intersects(const Box3& other) noexcept;
    /// Becomes the smallest box that contains both.
    constexpr void unionBox(const Box3& other) noexcept;
    constexpr void translate(const Vec3& v) noexcept { set(min + v, max + v); }
};

static_assert(std::is_trivially_copyable_v<Box3> && std::is_standard_layout_v<Box3>);
static_assert(sizeof(Box3) == 2 * sizeof(Vec3));

constexpr void Box3::set(const Vec3& newMin, const Vec3& newMax) noexcept {
    *this = Box3(newMin, newMax);
}

constexpr void Box3::setFromArray(const float* array, int count) noexcept {
    makeEmpty();
    for (int i = 0; i + 3 <= count; i += 3) {
        expandByPoint({array[i], array[i + 1], array[i + 2]});
    }
}

constexpr void Box3::setFromPoints(const Vec3* points, int count) noexcept {
    makeEmpty();
    if (points == nullptr || count <= 0) {
        return;
    }
    set(points[0], points[0]);
    for (int i = 1; i < count; ++i) {
        expandByPoint(points[i]);
    }
}

constexpr void Box3::setFromCenterAndSize(const Vec3& center, const Vec3& size) noexcept {
    const Vec3 half = size * 0.5;
    set(center - half, center + half);
}

constexpr bool Box3::isEmpty() const noexcept {
    return min.x > max.x || min.y > max.y || min.z > max.z || (min.isZero() && max.isZero());
}

constexpr bool Box3::containsPoint(const Vec3& p) const noexcept {
    return containsBox(Box3(p, p));
}

constexpr bool Box3::containsBox(const Box3& other) const noexcept {
    return min.x <= other.min.x && other.max.x <= max.x && //
           min.y <= other.min.y && other.max.y <= max.y && //
           min.z <= other.min.z && other.max.z <= max.z;
}

constexpr bool Box3::intersectsBox(const Box3& other) const noexcept {
    return min.x <= other.max.x && other.min.x <= max.x && //
           min.y <= other.max.y && other.min.y <= max.y && //
           min.z <= other.max.z && other.min.z <= max.z;
}

constexpr Vec3 Box3::clampPoint(Vec3 p) const noexcept {
    p.clamp(min, max);
    return p;
}

constexpr void Box3::expandByPoint(const Vec3& p) noexcept {
    min.getMin(p);
    max.getMax(p);
}

constexpr void Box3::intersects(const Box3& other) noexcept {
    min.getMax(other.min);
    max.getMin(other.max);
    if (isEmpty()) {
        makeEmpty();
    }
}

constexpr void Box3::unionBox(const Box3& other) noexcept {
    min.getMin(other.min);
    max.getMax(other.max);
}

} // namespace Kerovane::Tesselune
