#include "Plugins/Shared/Math/Vec2.h"

#include "Plugins/Shared/Math/Angle.h"

#include <cmath>

namespace Kerovane::Tesselune {

namespace {

/// Returns the largest magnitude at which a cross or dot product still counts as 0.
double productTolerance(const Vec2& a, const Vec2& b) {
    return Float::epsilon * std::sqrt(a.lengthSquare() * b.lengthSquare());
}

Vec2 footOnLine(const Vec2& point, const Vec2& a, const Vec2& b) {
    const Vec2 along = b - a;
    const double t = (point - a).dot(along) / along.dot(along);
    return a + along * t;
}

} // namespace

bool Vec2::isCollinear(const Vec2& other) const noexcept {
    return std::abs(cross(other)) <= productTolerance(*this, other);
}

bool Vec2::isOrthogonal(const Vec2& other) const noexcept {
    return std::abs(dot(other)) <= productTolerance(*this, other);
}

Vec2 Vec2::modulo(const Vec2& other) const noexcept {
    return {std::fmod(x, other.x), std::fmod(y, other.y)};
}

void Vec2::normalize(double* x, double* y) noexcept {
    const double length = std::sqrt(*x * *x + *y * *y);
    if (length > Float::epsilon) {
        *x *= 1.0 / length;
        *y *= 1.0 / length;
    }
}

double Vec2::distanceToLine(const Vec2& a, const Vec2& b) const noexcept {
    return distance(footOnLine(*this, a, b));
}

double Vec2::lineProjectionLength(const Vec2& a, const Vec2& b) const noexcept {
    return a.distance(footOnLine(*this, a, b));
}

void Vec2::rotate(double degrees) noexcept {
    if (degrees == 0.0) {
        return;
    }
    const double cosine = std::cos(toRadians(degrees));
    const double sine = std::sin(toRadians(degrees));
    set(cosine * x - sine * y, cosine * y + sine * x);
}

void Vec2::rotateAround(double degrees, const Vec2& center) noexcept {
    *this = rotateRound(degrees, center);
}

Vec2 Vec2::rotateRound(double degrees, const Vec2& center) const noexcept {
    if (degrees == 0.0) {
        return *this;
    }
    Vec2 fromCenter = *this - center;
    fromCenter.rotate(degrees);
    return center + fromCenter;
}

double Vec2::getAngle() const noexcept {
    return isZero() ? 0.0 : toDegrees(std::atan2(y, x));
}

void Vec2::setAngle(double degrees) noexcept {
    const double radius = length();
    set(radius * std::cos(toRadians(degrees)), radius * std::sin(toRadians(degrees)));
}

double Vec2::angleBetween(const Vec2& other) const noexcept {
    return toDegrees(std::atan2(cross(other), dot(other)));
}

} // namespace Kerovane::Tesselune
