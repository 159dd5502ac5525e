#include "Math/Vec3.h"

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

} // namespace Kerovane::Tesselune
