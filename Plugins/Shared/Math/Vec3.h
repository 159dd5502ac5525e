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

    /// The vector of what the function gives for each component of the others.
    template <typename Function, typename... Vectors>
    static constexpr Vec3 map(Function function, const Vectors&... vectors) {
        return {function(vectors.x...), function(vectors.y...), function(vectors.z...)};
    }

    // Comparison

    /// Whether every component is exactly 0.
    constexpr bool isZero() const noexcept { return x == 0.0 && y == 0.0 && z == 0.0; }

    /// Whether each component differs by at most the tolerance, inclusive.
    constexpr bool equal(const Vec3& other, double tolerance = Float::epsilon) const noexcept;

    // Arithmetic, beside that of VectorFamily

    constexpr void setNegate() noexcept { *this = negate(); }
    /// The reciprocals of the components.
    [[nodiscard]] constexpr Vec3 invert() const noexcept { return Vec3(1.0) / *this; }
    constexpr void setInvert() noexcept { *this = invert(); }
    /// The components rounded down.
    [[nodiscard]] Vec3 floor() const noexcept;
    /// Component by component, without wrapping.
    constexpr Vec3 rotationalDifference(const Vec3& other) const noexcept { return *this - other; }

    // Products

    constexpr double dot(const Vec3& other) const noexcept;
    [[nodiscard]] constexpr Vec3 cross(const Vec3& other) const noexcept;

    // Length and direction

    constexpr double distanceSquare(const Vec3& other) const noexcept;

    /// In radians, 0 to pi. NaN for a zero vector, and if rounding takes the cosine beyond 1.
    double angleBetween(const Vec3& other) const noexcept;

    /// The index of the component of greatest magnitude; the later one of equals.
    constexpr int largestAbsComponent() const noexcept;

    /**
     * Becomes the direction of the other's cross product with an axis: a unit vector perpendicular
     * to both. The axis is chosen by the present value: the one before that of
     * largestAbsComponent(), cyclically. Becomes (1, 0, 0), whether that is perpendicular or not,
     * if the other is zero or lies along the axis.
     */
    void ortho(const Vec3& other) noexcept;

    // Transformation, in place

    /// As a point; the matrix's fourth row is not used.
    void applyMatrix4(const Mat4& m) noexcept;
    /// As a point, divided by what the fourth row gives.
    void applyProjection(const Mat4& m) noexcept;
    /// By the upper three by three of the matrix, then scaled to length 1.
    void transformDirection(const Mat4& m) noexcept;
    /// q v q*, without a division: a quaternion that is not of length 1 scales by its square.
    void applyQuaternion(const Quaternion& q) noexcept;

    /// Becomes the matrix's translation.
    void setFromMatrixPosition(const Mat4& m) noexcept;
    /// Becomes the upper three of a column, 0 to 3.
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
