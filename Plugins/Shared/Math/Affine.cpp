#include "Plugins/Shared/Math/Affine.h"

#include "Plugins/Shared/Math/Angle.h"

#include <cmath>

namespace Kerovane::Tesselune {

void Affine::set(const Vec2& anchor, const Vec2& position, const Vec2& scale,
                 double degrees) noexcept {
    const double cosine = std::cos(toRadians(degrees));
    const double sine = std::sin(toRadians(degrees));
    set(scale.x * cosine, scale.x * sine, -sine * scale.y, cosine * scale.y, position.x,
        position.y);
    translate(-anchor.x, -anchor.y);
}

void Affine::setSkewX(double degrees) noexcept {
    set(1.0, 0.0, std::tan(toRadians(degrees)), 1.0, 0.0, 0.0);
}

void Affine::setSkewY(double degrees) noexcept {
    set(1.0, std::tan(toRadians(degrees)), 0.0, 1.0, 0.0, 0.0);
}

void Affine::setRotate(double degrees) noexcept {
    const double cosine = std::cos(toRadians(degrees));
    const double sine = std::sin(toRadians(degrees));
    set(cosine, sine, -sine, cosine, 0.0, 0.0);
}

void Affine::skewX(double degrees) noexcept {
    Affine skew;
    skew.setSkewX(degrees);
    premultiply(skew);
}

void Affine::skewY(double degrees) noexcept {
    Affine skew;
    skew.setSkewY(degrees);
    premultiply(skew);
}

void Affine::rotate(double degrees) noexcept {
    Affine rotation;
    rotation.setRotate(degrees);
    premultiply(rotation);
}

double Affine::averageScale() const noexcept {
    const double firstRow = std::sqrt(a * a + c * c);
    const double secondRow = std::sqrt(b * b + d * d);
    const auto tenThousandths = static_cast<float>((firstRow + secondRow) * 0.5 * 10000.0);
    return std::round(tenThousandths) / 10000.0F;
}

} // namespace Kerovane::Tesselune
