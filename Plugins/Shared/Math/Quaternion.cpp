#include "Plugins/Shared/Math/Quaternion.h"

#include "Plugins/Shared/Math/Angle.h"
#include "Plugins/Shared/Math/Euler.h"
#include "Plugins/Shared/Math/Mat4.h"

#include <cmath>

namespace Kerovane::Tesselune {

Quaternion::Quaternion(const Vec3& axis, double angle) noexcept
    : Quaternion(axis.x * std::sin(angle * 0.5), axis.y * std::sin(angle * 0.5),
                 axis.z * std::sin(angle * 0.5), std::cos(angle * 0.5)) {}

void Quaternion::set(const Vec3& axis, double angle) noexcept {
    Vec3 unit = axis;
    unit.normalize();
    *this = Quaternion(unit, angle);
}

void Quaternion::setWithDirection(const Vec3& from, const Vec3& to) noexcept {
    const double r = from.dot(to) + 1.0;
    if (r < Float::epsilon) {
        const bool isNearerToX = std::abs(from.x) > std::abs(from.z);
        *this = isNearerToX ? Quaternion(-from.y, from.x, 0.0, 0.0)
                            : Quaternion(0.0, -from.z, from.y, 0.0);
    } else {
        const Vec3 axis = from.cross(to);
        set(axis.x, axis.y, axis.z, r);
    }
    normalize();
}

void Quaternion::setWithMat4(const Mat4& m) noexcept {
    const auto [m11, m12, m13] = m.getRow(0).getVec3();
    const auto [m21, m22, m23] = m.getRow(1).getVec3();
    const auto [m31, m32, m33] = m.getRow(2).getVec3();
    const double trace = m11 + m22 + m33;
    // Computes w from the diagonal if w is far from 0, else the largest of x, y and z. Divides by
    // this component to compute the others, and so never by a number near 0.
    if (trace > 0.0) {
        const double s = 0.5 / std::sqrt(trace + 1.0);
        set((m32 - m23) * s, (m13 - m31) * s, (m21 - m12) * s, 0.25 / s);
    } else if (m11 > m22 && m11 > m33) {
        const double s = 2.0 * std::sqrt(1.0 + m11 - m22 - m33);
        set(0.25 * s, (m12 + m21) / s, (m13 + m31) / s, (m32 - m23) / s);
    } else if (m22 > m33) {
        const double s = 2.0 * std::sqrt(1.0 + m22 - m11 - m33);
        set((m12 + m21) / s, 0.25 * s, (m23 + m32) / s, (m13 - m31) / s);
    } else {
        const double s = 2.0 * std::sqrt(1.0 + m33 - m11 - m22);
        set((m13 + m31) / s, (m23 + m32) / s, 0.25 * s, (m21 - m12) / s);
    }
}

void Quaternion::setWithEuler(const Euler& e) noexcept {
    const auto s1 = static_cast<float>(std::sin(e.x * 0.5));
    const auto c1 = static_cast<float>(std::cos(e.x * 0.5));
    const auto s2 = static_cast<float>(std::sin(e.y * 0.5));
    const auto c2 = static_cast<float>(std::cos(e.y * 0.5));
    const auto s3 = static_cast<float>(std::sin(e.z * 0.5));
    const auto c3 = static_cast<float>(std::cos(e.z * 0.5));

    // Multiplies the three axis quaternions. The rotation order changes only the signs.
    const auto setWithSigns = [&](float signX, float signY, float signZ, float signW) {
        set(s1 * c2 * c3 + signX * (c1 * s2 * s3), c1 * s2 * c3 + signY * (s1 * c2 * s3),
            c1 * c2 * s3 + signZ * (s1 * s2 * c3), c1 * c2 * c3 + signW * (s1 * s2 * s3));
    };
    switch (e.order) {
    case Euler::OrderUnset:
        set(0.0, 0.0, 0.0, 0.0);
        break;
    case Euler::OrderXYZ:
        setWithSigns(1.0F, -1.0F, 1.0F, -1.0F);
        break;
    case Euler::OrderYZX:
        setWithSigns(1.0F, 1.0F, -1.0F, -1.0F);
        break;
    case Euler::OrderZXY:
        setWithSigns(-1.0F, 1.0F, 1.0F, -1.0F);
        break;
    case Euler::OrderXZY:
        setWithSigns(-1.0F, -1.0F, 1.0F, 1.0F);
        break;
    case Euler::OrderYXZ:
        setWithSigns(1.0F, -1.0F, -1.0F, 1.0F);
        break;
    case Euler::OrderZYX:
        setWithSigns(-1.0F, 1.0F, -1.0F, 1.0F);
        break;
    default:
        break;
    }
}

double Quaternion::length() const noexcept {
    return std::sqrt(lengthSq());
}

void Quaternion::normalize() noexcept {
    const double oldLength = length();
    if (oldLength == 0.0) {
        *this = Quaternion();
    } else {
        const double factor = 1.0 / oldLength;
        set(x * factor, y * factor, z * factor, w * factor);
    }
}

void Quaternion::setInverse() noexcept {
    conjugate();
    normalize();
}

double Quaternion::getRotationAngle() const noexcept {
    return toDegrees(2.0 * std::acos(w));
}

Vec3 Quaternion::getRotationAxis() const noexcept {
    const double sineSquare = 1.0 - w * w;
    if (sineSquare < Float::epsilon) {
        return {0.0, 0.0, 1.0};
    }
    return Vec3(x, y, z) / std::sqrt(sineSquare);
}

void Quaternion::slerp(const Quaternion& q, double t) noexcept {
    if (t == 0.0) {
        return;
    }
    if (t == 1.0) {
        *this = q;
        return;
    }

    const Quaternion from = *this;
    const double signedCosine = from.dot(q);
    const double cosine = std::abs(signedCosine);
    // q and -q are the same rotation: take the nearer one.
    const Quaternion to = signedCosine < 0.0 ? Quaternion(-q.x, -q.y, -q.z, -q.w) : q;
    if (cosine >= 1.0) {
        return;
    }

    const double sine = std::sqrt(1.0 - cosine * cosine);
    const double angle = std::atan2(sine, cosine);
    const bool isTooNear = sine < 0.001;
    const double weightFrom = isTooNear ? 0.5 : std::sin((1.0 - t) * angle) / sine;
    const double weightTo = isTooNear ? 0.5 : std::sin(angle * t) / sine;
    set(from.x * weightFrom + to.x * weightTo, from.y * weightFrom + to.y * weightTo,
        from.z * weightFrom + to.z * weightTo, from.w * weightFrom + to.w * weightTo);
}

Quaternion Quaternion::lerp(const Quaternion& a, const Quaternion& b, double t) noexcept {
    if (a == b) {
        return a;
    }
    Quaternion result = a;
    result.slerp(b, t);
    return result;
}

} // namespace Kerovane::Tesselune
