#include "Plugins/Shared/Math/Vec4.h"

#include <cmath>

namespace Kerovane::Tesselune {

double Vec4::lengthManhattan() const noexcept {
    return std::abs(x) + std::abs(y) + std::abs(z) + std::abs(w);
}

Vec4 Vec4::lerp(const Vec4& a, const Vec4& b, double t) noexcept {
    if (t == 0.0) {
        return a;
    }
    if (t == 1.0) {
        return b;
    }
    const double cosine = a.dot(b) / (a.length() * b.length());
    if (cosine < 0.0) {
        return lerp(a, b.negate(), t);
    }

    double weightA = 1.0 - t;
    double weightB = t;
    constexpr double kNearlyParallel = 0.01F;
    const bool isArc = !(1.0 - cosine < kNearlyParallel);
    if (isArc) {
        // The trigonometric functions are in single precision, the products in double.
        const double angle = std::acos(static_cast<float>(cosine));
        const double perSine = 1.0F / std::sin(static_cast<float>(angle));
        weightA = std::sin(static_cast<float>(weightA * angle)) * perSine;
        weightB = std::sin(static_cast<float>(angle * weightB)) * perSine;
    }
    Vec4 result = a * weightA + b * weightB;
    result.normalize();
    return result;
}

} // namespace Kerovane::Tesselune
