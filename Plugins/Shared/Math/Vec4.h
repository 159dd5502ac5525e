#pragma once

#include "Plugins/Shared/Math/Vec3.h"
#include "Plugins/Shared/Math/VectorFamily.h"

#include <type_traits>

namespace Kerovane::Tesselune {

/** Four numbers: a homogeneous point, or a row or a column of a Mat4. */
class Vec4 : public VectorFamily<Vec4> {
public:
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    double w = 0.0;

    // Construction and assignment

    constexpr Vec4() noexcept = default;
    constexpr Vec4(const Vec3& xyz, double newW) noexcept : Vec4(xyz.x, xyz.y, xyz.z, newW) {}
    constexpr Vec4(double newX, double newY, double newZ, double newW) noexcept
        : x(newX), y(newY), z(newZ), w(newW) {}

    constexpr void set(double newX, double newY, double newZ, double newW) noexcept;

    constexpr Vec3 getVec3() const noexcept { return {x, y, z}; }

    /// Applies `function` to the components of `vectors`, one component at a time.
    template <typename Function, typename... Vectors>
    static constexpr Vec4 map(Function function, const Vectors&... vectors) {
        return {function(vectors.x...), function(vectors.y...), function(vectors.z...),
                function(vectors.w...)};
    }

    // Comparison

    /// Returns whether every component is exactly 0.
    constexpr bool isZero() const noexcept { return x == 0.0 && y == 0.0 && z == 0.0 && w == 0.0; }

    /// Returns whether the distance is below the tolerance, strictly. Vec2 and Vec3 compare each
    /// component instead.
    constexpr bool equal(const Vec4& other, double tolerance = Float::epsilon) const noexcept;

    // Arithmetic, in addition to that of VectorFamily

    /// Returns the reciprocals of the components.
    [[nodiscard]] constexpr Vec4 invert() const noexcept {
        return Vec4(1.0, 1.0, 1.0, 1.0) / *this;
    }

    // Products and length

    constexpr double dot(const Vec4& other) const noexcept;
    /// Returns the sum of the components' magnitudes.
    double lengthManhattan() const noexcept;

    // Interpolation

    /**
     * Spherical interpolation: a weighted sum of a and b, scaled to length 1. If their directions
     * are more than a right angle apart, -b replaces b. The weights are 1 - t and t if the cosine
     * between the directions is above 0.99, else sin((1 - t) angle) and sin(t angle), both divided
     * by sin(angle), in single precision. The weights apply to unnormalised vectors, so the longer
     * one has more influence.
     *
     * Returns a unchanged at t = 0 and b unchanged at t = 1. NaN at any other t if a or b is zero.
     */
    [[nodiscard]] static Vec4 lerp(const Vec4& a, const Vec4& b, double t) noexcept;
};

static_assert(std::is_trivially_copyable_v<Vec4> && std::is_standard_layout_v<Vec4>);
static_assert(sizeof(Vec4) == 4 * sizeof(double));

constexpr void Vec4::set(double newX, double newY, double newZ, double newW) noexcept {
    *this = Vec4(newX, newY, newZ, newW);
}

constexpr bool Vec4::equal(const Vec4& other, double tolerance) const noexcept {
    return (*this - other).lengthSquare() < tolerance * tolerance;
}

constexpr double Vec4::dot(const Vec4& other) const noexcept {
    return x * other.x + y * other.y + z * other.z + w * other.w;
}

} // namespace Kerovane::Tesselune
