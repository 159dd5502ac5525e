#include "Plugins/Shared/Math/Vec3.h"

#include "Plugins/Shared/Math/Mat4.h"
#include "Plugins/Shared/Math/Quaternion.h"

#include <cmath>

namespace Kerovane::Tesselune {

Vec3 Vec3::floor() const noexcept {
    return {std::floor(x), std::floor(y), std::floor(z)};
}

double Vec3::angleBetween(const Vec3& other) const noexcept {
    return std::acos(dot(other) / (length() * other.length()));
}

void Vec3::ortho(const Vec3& other) noexcept {
    const int largest = largestAbsComponent();
    Vec3 axis;
    axis.set(largest == 0 ? 2 : largest - 1, 1.0);
    *this = other.cross(axis);
    normalize();
}

void Vec3::applyMatrix4(const Mat4& m) noexcept {
    *this = m.mult(*this);
}

void Vec3::applyProjection(const Mat4& m) noexcept {
    *this = m.multAndProject(*this);
}

void Vec3::transformDirection(const Mat4& m) noexcept {
    *this = m.multWithoutTranslate(*this);
    normalize();
}

void Vec3::applyQuaternion(const Quaternion& q) noexcept {
    const double ix = q.w * x + q.y * z - q.z * y;
    const double iy = q.w * y + q.z * x - q.x * z;
    const double iz = q.w * z + q.x * y - q.y * x;
    const double iw = -q.x * x - q.y * y - q.z * z;
    set(ix * q.w - iw * q.x - iy * q.z + iz * q.y, //
        iy * q.w - iw * q.y - iz * q.x + ix * q.z, //
        iz * q.w - iw * q.z - ix * q.y + iy * q.x);
}

void Vec3::setFromMatrixPosition(const Mat4& m) noexcept {
    setFromMatrixColumn(m, 3);
}

void Vec3::setFromMatrixColumn(const Mat4& m, int index) noexcept {
    *this = m.getColumn(index).getVec3();
}

} // namespace Kerovane::Tesselune
