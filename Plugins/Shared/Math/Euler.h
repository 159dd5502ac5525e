#pragma once

#include "Plugins/Shared/Math/Float.h"

#include <cstdint>
#include <type_traits>

namespace Kerovane::Tesselune {

class Mat4;
class Quaternion;

/** A rotation in space: three turns about the axes, in radians, and their order. */
class Euler {
public:
    /// The letters name the factors of the rotation matrix from left to right: OrderXYZ is Rx Ry
    /// Rz. The turn of the rightmost factor is applied first.
    enum RotationOrder : std::int32_t {
        OrderUnset = 0, ///< no order; as an argument: keep the order that the object holds
        OrderXYZ = 1,
        OrderYZX = 2,
        OrderZXY = 3,
        OrderXZY = 4,
        OrderYXZ = 5,
        OrderZYX = 6,
    };

    static constexpr RotationOrder mDefaultOrder = OrderXYZ;

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    RotationOrder order = mDefaultOrder;

    // Construction and assignment

    constexpr Euler() noexcept = default;
    /// Takes any order as it is, including OrderUnset.
    constexpr Euler(double newX, double newY, double newZ, RotationOrder newOrder) noexcept
        : x(newX), y(newY), z(newZ), order(newOrder) {}

    constexpr void set(double newX, double newY, double newZ, RotationOrder newOrder) noexcept;

    /**
     * Reads the angles from the upper-left 3x3 part, which must be a pure rotation. The middle
     * angle is within a quarter turn either way; near a quarter turn, where the two outer angles
     * turn about the same axis, one of them is set to 0.
     *
     * The middle angle is the arcsine of one matrix element. The element's sign is not corrected
     * for the order. For OrderXYZ, OrderYZX and OrderZXY the angles therefore reproduce the matrix;
     * for OrderXZY and OrderZYX the middle angle comes out negated; for OrderYXZ all three do. An
     * unknown order is stored and the angles stay unchanged. OrderUnset keeps the present order.
     */
    void setWithMat4(const Mat4& m, RotationOrder newOrder) noexcept;
    /// Reads the angles from a quaternion of length 1, with the limits of setWithMat4.
    void setWithQuaternion(const Quaternion& q, RotationOrder newOrder) noexcept;

    // Comparison

    /// Returns whether each angle differs by at most 1e-12, inclusive, and the orders are equal.
    constexpr bool operator==(const Euler& other) const noexcept;
};

static_assert(std::is_trivially_copyable_v<Euler> && std::is_standard_layout_v<Euler>);

constexpr void Euler::set(double newX, double newY, double newZ, RotationOrder newOrder) noexcept {
    *this = Euler(newX, newY, newZ, newOrder == OrderUnset ? order : newOrder);
}

constexpr bool Euler::operator==(const Euler& other) const noexcept {
    return Float::fuzzyEqual(x, other.x) && Float::fuzzyEqual(y, other.y) &&
           Float::fuzzyEqual(z, other.z) && order == other.order;
}

} // namespace Kerovane::Tesselune
