#include "Plugins/Shared/Math/Mat4.h"

#include "Plugins/Shared/Math/Quaternion.h"

#include <algorithm>
#include <cmath>

namespace Kerovane::Tesselune {

void Mat4::setRotation(double angle, const Vec3& axis) noexcept {
    Vec3 unit = axis;
    unit.normalize();
    const auto [x, y, z] = unit;
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    const double t = 1.0 - c;
    set(t * x * x + c, t * x * y - s * z, t * x * z + s * y, 0.0, //
        t * x * y + s * z, t * y * y + c, t * y * z - s * x, 0.0, //
        t * x * z - s * y, t * y * z + s * x, t * z * z + c, 0.0, //
        0.0, 0.0, 0.0, 1.0);
}

void Mat4::setRotation(double angle, double x, double y, double z) noexcept {
    setRotation(angle, {x, y, z});
}

void Mat4::setXRotation(double angle) noexcept {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    set(1.0, 0.0, 0.0, 0.0, //
        0.0, c, -s, 0.0,    //
        0.0, s, c, 0.0,     //
        0.0, 0.0, 0.0, 1.0);
}

void Mat4::setYRotation(double angle) noexcept {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    set(c, 0.0, s, 0.0,     //
        0.0, 1.0, 0.0, 0.0, //
        -s, 0.0, c, 0.0,    //
        0.0, 0.0, 0.0, 1.0);
}

void Mat4::setZRotation(double angle) noexcept {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    set(c, -s, 0.0, 0.0,    //
        s, c, 0.0, 0.0,     //
        0.0, 0.0, 1.0, 0.0, //
        0.0, 0.0, 0.0, 1.0);
}

void Mat4::setWithQuaternion(const Quaternion& q) noexcept {
    const double x2 = q.x + q.x;
    const double y2 = q.y + q.y;
    const double z2 = q.z + q.z;
    const auto [x, y, z, w] = q;
    set(1.0 - (y * y2 + z * z2), x * y2 - w * z2, x * z2 + w * y2, 0.0, //
        x * y2 + w * z2, 1.0 - (z * z2 + x * x2), y * z2 - w * x2, 0.0, //
        x * z2 - w * y2, y * z2 + w * x2, 1.0 - (y * y2 + x * x2), 0.0, //
        0.0, 0.0, 0.0, 1.0);
}

void Mat4::setPerspective(double fovy, double aspect, double zNear, double zFar) noexcept {
    const double f = 1.0 / std::tan(fovy * 0.5);
    const double depth = zNear - zFar;
    set(f / aspect, 0.0, 0.0, 0.0,                                    //
        0.0, f, 0.0, 0.0,                                             //
        0.0, 0.0, (zNear + zFar) / depth, 2.0 * zFar * zNear / depth, //
        0.0, 0.0, -1.0, 0.0);
}

void Mat4::setLookAt(const Vec3& eye, const Vec3& target, const Vec3& up) noexcept {
    Vec3 z = eye - target;
    if (z.length() == 0.0) {
        z.set(0.0, 0.0, 1.0);
    } else {
        z.normalize();
    }

    Vec3 x = up.cross(z);
    if (x.length() == 0.0) {
        constexpr double kNudge = 0.0001F;
        z.z += kNudge;
        x = up.cross(z);
    }
    x.normalize();
    const Vec3 y = z.cross(x);

    x.toArray(mElements, 0);
    y.toArray(mElements, 4);
    z.toArray(mElements, 8);
}

void Mat4::setLookAt(double eyeX, double eyeY, double eyeZ, double targetX, double targetY,
                     double targetZ, double upX, double upY, double upZ) noexcept {
    setLookAt({eyeX, eyeY, eyeZ}, {targetX, targetY, targetZ}, {upX, upY, upZ});
}

double Mat4::getMaxScaleOnAxis() const noexcept {
    const auto axisLengthSquare = [&](int i) { return getColumn(i).getVec3().lengthSquare(); };
    return std::sqrt(std::max({axisLengthSquare(0), axisLengthSquare(1), axisLengthSquare(2)}));
}

void Mat4::rotate(double angle, double x, double y, double z) noexcept {
    rotate(angle, Vec3(x, y, z));
}

void Mat4::rotate(double angle, const Vec3& axis) noexcept {
    Mat4 rotation;
    rotation.setRotation(angle, axis);
    mult(rotation);
}

void Mat4::rotateX(double angle) noexcept {
    Mat4 rotation;
    rotation.setXRotation(angle);
    mult(rotation);
}

void Mat4::rotateY(double angle) noexcept {
    Mat4 rotation;
    rotation.setYRotation(angle);
    mult(rotation);
}

void Mat4::rotateZ(double angle) noexcept {
    Mat4 rotation;
    rotation.setZRotation(angle);
    mult(rotation);
}

void Mat4::compose(const Vec3& position, const Quaternion& q, const Vec3& scale) noexcept {
    setWithQuaternion(q);
    this->scale(scale);
    this->position(position);
}

void Mat4::compose(const Vec3& anchor, const Vec3& position, const Quaternion& q,
                   const Vec3& scale) noexcept {
    const Vec3 scaledAnchor = anchor * scale;
    setWithQuaternion(q);
    // Subtracting the scaled anchor and adding it again can change the last bit of the position.
    // This is intended.
    const Vec3 fromAnchor = anchor.isZero() ? position : position - scaledAnchor;
    this->position(scaledAnchor + fromAnchor);
    translate(scaledAnchor.negate());
    scaleAxes(scale);
}

void Mat4::decompose(Vec3& position, Quaternion& q, Vec3& scale) const noexcept {
    const auto axisLength = [&](int i) { return getColumn(i).getVec3().length(); };
    scale.set(axisLength(0), axisLength(1), axisLength(2));
    if (determinant() < 0.0) {
        scale.x = -scale.x;
    }
    scale = Vec3::map([](double factor) { return factor == 0.0 ? 1e-6 : factor; }, scale);
    position = getColumn(3).getVec3();

    Mat4 rotation = *this;
    rotation.scaleAxes(scale.invert());
    q.setWithMat4(rotation);
}

void Mat4::decompose(const Vec3& anchor, Vec3& position, Quaternion& q,
                     Vec3& scale) const noexcept {
    const Vec3 mappedAnchor = multWithoutTranslate(anchor);
    decompose(position, q, scale);
    position.add(mappedAnchor);
}

} // namespace Kerovane::Tesselune
