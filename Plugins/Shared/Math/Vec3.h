#pragma once

#include "Plugins/Shared/Math/Vec2.h"
#include "Plugins/Shared/Math/VectorFamily.h"

#include <type_traits>

namespace Kerovane::Tesselune {

class Mat4;
class Quaternion;

/** A point, a direction or a size in space, right-handed. Angles are in radians. */
class Vec3 : public PointFamily<Vec3> {
public:
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    // Construction and assignment

    constexpr Vec3() noexcept = default;
    explicit constexpr Vec3(double value) noexcept : Vec3(value, value, value) {}
    constexpr Vec3(const Vec2& xy, double newZ) noexcept : Vec3(xy.x, xy.y, newZ) {}
    constexpr Vec3(double newX, double newY, double newZ) noexcept : x(newX), y(newY), z(newZ) {}

    constexpr void set(const Vec2& xy, double newZ) noexcept { *this = Vec3(xy, newZ); }
    constexpr void set(double newX, double newY, double newZ) noexcept;
    /// Sets x at index 0, y at index 1, and z at any other.
    constexpr void set(int index, double value) noexcept;

    /// Reads three numbers at array[offset].
    constexpr void fromArray(const double* array, int offset) noexcept;
    /// Writes three numbers at array[offset].
    constexpr void toArray(double* array, int offset) const noexcept;

    constexpr Vec2 getVec2() const noexcept { return {x, y}; }

    /// Applies `function` to the components of `vectors`, one component at a time.
    template <typename Function, typename... Vectors>
    static constexpr Vec3 map(Function function, const Vectors&... vectors) {
        return {function(vectors.x...), function(vectors.y...), function(vectors.z...)};
    }

    // Comparison

    /// Returns whether every component is exactly 0.
    constexpr bool isZero() const noexcept { return x == 0.0 && y == 0.0 && z == 0.0; }

    /// Returns whether each component differs by at most the tolerance, inclusive.
    constexpr bool equal(const Vec3& other, double tolerance = Float::epsilon) const noexcept;

    // Arithmetic, in addition to that of VectorFamily

    constexpr void setNegate() noexcept { *this = negate(); }
    /// Returns the reciprocals of the components.
    [[nodiscard]] constexpr Vec3 invert() const noexcept { return Vec3(1.0) / *this; }
    constexpr void setInvert() noexcept { *this = invert(); }
    /// Returns the components rounded down.
    [[nodiscard]] Vec3 floor() const noexcept;
    /// Returns this - other. Angles are not wrapped.
    constexpr Vec3 rotationalDifference(const Vec3& other) const noexcept { return *this - other; }

    // Products

    constexpr double dot(const Vec3& other) const noexcept;
    [[nodiscard]] constexpr Vec3 cross(const Vec3& other) const noexcept;

    // Length and direction

    constexpr double distanceSquare(const Vec3& other) const noexcept;

    /// Returns the angle in radians, 0 to pi; NaN for a zero vector, or if rounding takes the
    /// cosine beyond 1.
    double angleBetween(const Vec3& other) const noexcept;

    /// Returns the index of the component of largest magnitude; of equal ones, the last.
    constexpr int largestAbsComponent() const noexcept;

    /**
     * Becomes a unit vector perpendicular to `other`: the normalised cross product of `other` and
     * an axis. largestAbsComponent() of this vector's old value selects the axis: z if it is x, x
     * if it is y, y if it is z. Becomes (1, 0, 0), which need not be perpendicular, if `other` is
     * zero or parallel to the axis.
     */
    void ortho(const Vec3& other) noexcept;

    // Transformation, in place

    /// Transforms a point; ignores the matrix's fourth row.
    void applyMatrix4(const Mat4& m) noexcept;
    /// Transforms a point and divides by w, the result of the fourth row.
    void applyProjection(const Mat4& m) noexcept;
    /// Multiplies by the matrix's upper-left 3x3 part, then scales to length 1.
    void transformDirection(const Mat4& m) noexcept;
    /// Becomes q v q*, without division: a quaternion of another length than 1 scales by the square
    /// of its length.
    void applyQuaternion(const Quaternion& q) noexcept;

    /// Becomes the matrix's translation.
    void setFromMatrixPosition(const Mat4& m) noexcept;
    /// Becomes the upper three elements of column `index`, 0 to 3.
    void setFromMatrixColumn(const Mat4& m, int index) noexcept;
};

static_assert(std::is_trivially_copyable_v<Vec3> && std::is_standard_layout_v<Vec3>);
static_assert(sizeof(Vec3) == 3 * sizeof(double));

constexpr void Vec3::set(double newX, double newY, double newZ) noexcept {
    *this = Vec3(newX, newY, newZ);
}

constexpr void Vec3::set(int index, double value) noexcept {
    if (index == 0) {
        x = value;
    } else if (index == 1) {
        y = value;
    } else {
        z = value;
    }
}

constexpr void Vec3::fromArray(const double* array, int offset) noexcept {
    set(array[offset], array[offset + 1], array[offset + 2]);
}

constexpr void Vec3::toArray(double* array, int offset) const noexcept {
    array[offset] = x;
    array[offset + 1] = y;
    array[offset + 2] = z;
}

constexpr bool Vec3::equal(const Vec3& other, double tolerance) const noexcept {
    return Float::fuzzyEqual(x, other.x, tolerance) && Float::fuzzyEqual(y, other.y, tolerance) &&
           Float::fuzzyEqual(z, other.z, tolerance);
}

constexpr double Vec3::dot(const Vec3& other) const noexcept {
    return x * other.x + y * other.y + z * other.z;
}

constexpr Vec3 Vec3::cross(const Vec3& other) const noexcept {
    return {y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x};
}

constexpr double Vec3::distanceSquare(const Vec3& other) const noexcept {
    return (*this - other).lengthSquare();
}

constexpr int Vec3::largestAbsComponent() const noexcept {
    const double xSize = x < 0.0 ? -x : x;
    const double ySize = y < 0.0 ? -y : y;
    const double zSize = z < 0.0 ? -z : z;
    if (xSize > ySize) {
        return xSize > zSize ? 0 : 2;
    }
    return ySize > zSize ? 1 : 2;
}

} // namespace Kerovane::Tesselune
