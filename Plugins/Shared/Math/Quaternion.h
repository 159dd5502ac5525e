#pragma once

#include "Plugins/Shared/Math/Vec3.h"

#include <type_traits>

namespace Kerovane::Tesselune {

class Euler;
class Mat4;

/**
 * A quaternion; at length 1, a right-handed rotation in space. w is the scalar part. Angles are in
 * radians, except in getRotationAngle. In a product the right factor is applied first.
 */
class Quaternion {
public:
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    double w = 1.0;

    // Construction and assignment

    constexpr Quaternion() noexcept = default;
    /// Sets w to 1. Does not normalise.
    constexpr Quaternion(double newX, double newY, double newZ) noexcept
        : Quaternion(newX, newY, newZ, 1.0) {}
    constexpr Quaternion(double newX, double newY, double newZ, double newW) noexcept
        : x(newX), y(newY), z(newZ), w(newW) {}
    /// Rotates about `axis`, which must have length 1.
    Quaternion(const Vec3& axis, double angle) noexcept;
    Quaternion(const Vec3& from, const Vec3& to) noexcept { setWithDirection(from, to); }

    /// Leaves w unchanged.
    constexpr void set(double newX, double newY, double newZ) noexcept { set(newX, newY, newZ, w); }
    constexpr void set(double newX, double newY, double newZ, double newW) noexcept;
    /// Rotates about an axis of any length. A zero axis counts as (1, 0, 0).
    void set(const Vec3& axis, double angle) noexcept;

    /// Becomes the shortest rotation from one unit vector to the other; for opposite vectors a half
    /// turn about some perpendicular axis.
    void setWithDirection(const Vec3& from, const Vec3& to) noexcept;
    /// Reads the upper-left 3x3 part, which must be a pure rotation.
    void setWithMat4(const Mat4& m) noexcept;
    /// Becomes the rotation of `e`. Computes the sines and cosines in double and narrows them;
    /// computes their products in single precision. OrderUnset gives (0, 0, 0, 0); an unknown order
    /// changes nothing.
    void setWithEuler(const Euler& e) noexcept;

    /// Reads x, y, z, w at a[offset].
    constexpr void setWithArray(const double* a, int offset) noexcept;
    /// Writes x, y, z, w at a[offset].
    constexpr void toArray(double* a, int offset) const noexcept;

    // Comparison

    /// Compares exactly, without a tolerance.
    constexpr bool operator==(const Quaternion& other) const noexcept = default;

    // Length and inverse

    constexpr double dot(const Quaternion& q) const noexcept;
    constexpr double lengthSq() const noexcept { return dot(*this); }
    double length() const noexcept;
    /// Scales to length 1 in place. A zero quaternion becomes the identity.
    void normalize() noexcept;
    /// Negates x, y and z in place.
    constexpr void conjugate() noexcept { set(-x, -y, -z); }
    /// Becomes the inverse rotation, scaled to length 1.
    void setInverse() noexcept;

    // Angle and axis

    /// Returns the angle in degrees, 0 to 360; NaN if w is outside -1 to 1.
    double getRotationAngle() const noexcept;
    /// Returns the axis; (0, 0, 1) if the angle is almost 0 or 360 degrees, that is, if 1 - w w is
    /// below 1e-12, strictly.
    Vec3 getRotationAxis() const noexcept;

    // Product

    /// this = this * q
    constexpr void multiply(const Quaternion& q) noexcept { multiplyQuaternions(*this, q); }
    /// this = q * this
    constexpr void premultiply(const Quaternion& q) noexcept { multiplyQuaternions(q, *this); }
    /// this = a * b; a or b may be this quaternion.
    constexpr void multiplyQuaternions(const Quaternion& a, const Quaternion& b) noexcept;
    /// Returns the vector rotated by q, which must have length 1.
    [[nodiscard]] static constexpr Vec3 quaternionMulVec3(const Quaternion& q,
                                                          const Vec3& v) noexcept;

    // Interpolation

    /**
     * Interpolates along the shorter arc: stays at this rotation at t = 0 and becomes q at t = 1.
     * If the rotations are less than about 0.002 radians apart, any other t gives their mean, not
     * scaled to length 1.
     */
    void slerp(const Quaternion& q, double t) noexcept;
    /// Returns the result of a.slerp(b, t), although the name says linear; exactly a if a and b are
    /// equal.
    [[nodiscard]] static Quaternion lerp(const Quaternion& a, const Quaternion& b,
                                         double t) noexcept;
};

static_assert(std::is_trivially_copyable_v<Quaternion> && std::is_standard_layout_v<Quaternion>);
static_assert(sizeof(Quaternion) == 4 * sizeof(double));

constexpr void Quaternion::set(double newX, double newY, double newZ, double newW) noexcept {
    *this = Quaternion(newX, newY, newZ, newW);
}

constexpr void Quaternion::setWithArray(const double* a, int offset) noexcept {
    set(a[offset], a[offset + 1], a[offset + 2], a[offset + 3]);
}

constexpr void Quaternion::toArray(double* a, int offset) const noexcept {
    a[offset] = x;
    a[offset + 1] = y;
    a[offset + 2] = z;
    a[offset + 3] = w;
}

constexpr double Quaternion::dot(const Quaternion& q) const noexcept {
    return x * q.x + y * q.y + z * q.z + w * q.w;
}

constexpr void Quaternion::multiplyQuaternions(const Quaternion& a, const Quaternion& b) noexcept {
    set(a.x * b.w + a.w * b.x + a.y * b.z - a.z * b.y, //
        a.y * b.w + a.w * b.y + a.z * b.x - a.x * b.z, //
        a.z * b.w + a.w * b.z + a.x * b.y - a.y * b.x, //
        a.w * b.w - a.x * b.x - a.y * b.y - a.z * b.z);
}

constexpr Vec3 Quaternion::quaternionMulVec3(const Quaternion& q, const Vec3& v) noexcept {
    const Vec3 axis(q.x, q.y, q.z);
    const Vec3 t = axis.cross(v);
    const Vec3 u = axis.cross(t);
    return v + (t * q.w + u) * 2.0;
}

} // namespace Kerovane::Tesselune
