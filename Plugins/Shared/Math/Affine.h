#pragma once

#include "Plugins/Shared/Math/Vec2.h"

#include <concepts>
#include <type_traits>

namespace Kerovane::Tesselune {

/**
 * An affine transform of the plane: maps a point (x, y) to (a x + c y + e, b x + d y + f). The
 * fields are stored row by row; their names and the constructor's arguments go column by column.
 * Angles are in degrees.
 */
class Affine {
public:
    double a = 1.0;
    double c = 0.0;
    double e = 0.0;
    double b = 0.0;
    double d = 1.0;
    double f = 0.0;

    // Construction and assignment

    constexpr Affine() noexcept = default;
    /// Makes the identity if `identity`, else sets all elements to 0. Accepts only a bool, so that
    /// no other type converts to one implicitly.
    explicit constexpr Affine(std::same_as<bool> auto identity) noexcept;
    constexpr Affine(double newA, double newB, double newC, double newD, double newE,
                     double newF) noexcept;

    constexpr void set(double newA, double newB, double newC, double newD, double newE,
                       double newF) noexcept;
    /// Scales about the anchor, then rotates about it, then moves it to `position`.
    void set(const Vec2& anchor, const Vec2& position, const Vec2& scale, double degrees) noexcept;

    constexpr void setTranslate(double tx, double ty) noexcept { set(1.0, 0.0, 0.0, 1.0, tx, ty); }
    constexpr void setScale(double scaleX, double scaleY) noexcept;
    /// Shifts x by y tan(angle).
    void setSkewX(double degrees) noexcept;
    /// Shifts y by x tan(angle).
    void setSkewY(double degrees) noexcept;
    /// Rotates from the x axis towards the y axis.
    void setRotate(double degrees) noexcept;

    // Comparison

    /// Returns whether each element differs by at most 1e-12, inclusive.
    constexpr bool operator==(const Affine& other) const noexcept;

    // Concatenation, in place

    /// Applies `other` after this transform.
    constexpr void multiply(const Affine& other) noexcept;
    /// Applies `other` before this transform.
    constexpr void premultiply(const Affine& other) noexcept;

    // Each of these steps is applied before this transform, in local coordinates.

    constexpr void translate(double tx, double ty) noexcept;
    constexpr void scale(double scaleX, double scaleY) noexcept;
    void skewX(double degrees) noexcept;
    void skewY(double degrees) noexcept;
    void rotate(double degrees) noexcept;

    // Inverse. A determinant strictly within 1e-6 of 0 counts as singular.

    /// Returns false and leaves `out` unchanged if this transform is singular. `out` may be this
    /// transform.
    [[nodiscard]] constexpr bool inverse(Affine& out) const noexcept;
    /// Returns the identity if this transform is singular.
    [[nodiscard]] constexpr Affine getInverse() const noexcept;

    // Measure

    /// Returns the mean length of the linear part's two rows, in single precision, rounded to four
    /// decimals.
    double averageScale() const noexcept;

    // Transformation of points

    [[nodiscard]] constexpr Vec2 getTransform(const Vec2& p) const noexcept;
    constexpr void transform(Vec2& p) const noexcept { p = getTransform(p); }
    constexpr void transform(double& x, double& y) const noexcept { transform(x, y, &x, &y); }
    /// Neither pointer may be null.
    constexpr void transform(double x, double y, double* outX, double* outY) const noexcept;
};

static_assert(std::is_trivially_copyable_v<Affine> && std::is_standard_layout_v<Affine>);
static_assert(sizeof(Affine) == 6 * sizeof(double));

constexpr Affine::Affine(std::same_as<bool> auto identity) noexcept
    : a(identity ? 1.0 : 0.0), d(identity ? 1.0 : 0.0) {}

constexpr Affine::Affine(double newA, double newB, double newC, double newD, double newE,
                         double newF) noexcept
    : a(newA), c(newC), e(newE), b(newB), d(newD), f(newF) {}

constexpr void Affine::set(double newA, double newB, double newC, double newD, double newE,
                           double newF) noexcept {
    *this = Affine(newA, newB, newC, newD, newE, newF);
}

constexpr void Affine::setScale(double scaleX, double scaleY) noexcept {
    set(scaleX, 0.0, 0.0, scaleY, 0.0, 0.0);
}

constexpr bool Affine::operator==(const Affine& other) const noexcept {
    return Float::fuzzyEqual(a, other.a) && Float::fuzzyEqual(b, other.b) &&
           Float::fuzzyEqual(c, other.c) && Float::fuzzyEqual(d, other.d) &&
           Float::fuzzyEqual(e, other.e) && Float::fuzzyEqual(f, other.f);
}

constexpr void Affine::multiply(const Affine& other) noexcept {
    const Affine& o = other;
    *this = Affine(o.a * a + o.c * b, o.b * a + o.d * b, o.a * c + o.c * d, o.b * c + o.d * d,
                   o.a * e + o.c * f + o.e, o.b * e + o.d * f + o.f);
}

constexpr void Affine::premultiply(const Affine& other) noexcept {
    Affine result = other;
    result.multiply(*this);
    *this = result;
}

constexpr void Affine::translate(double tx, double ty) noexcept {
    premultiply(Affine(1.0, 0.0, 0.0, 1.0, tx, ty));
}

constexpr void Affine::scale(double scaleX, double scaleY) noexcept {
    premultiply(Affine(scaleX, 0.0, 0.0, scaleY, 0.0, 0.0));
}

constexpr bool Affine::inverse(Affine& out) const noexcept {
    const double determinant = a * d - c * b;
    if (-1e-6 < determinant && determinant < 1e-6) {
        return false;
    }
    const double i = 1.0 / determinant;
    out.set(d * i, -b * i, -c * i, a * i, (c * f - d * e) * i, (b * e - a * f) * i);
    return true;
}

constexpr Affine Affine::getInverse() const noexcept {
    Affine result;
    return inverse(result) ? result : Affine();
}

constexpr Vec2 Affine::getTransform(const Vec2& p) const noexcept {
    return {a * p.x + c * p.y + e, b * p.x + d * p.y + f};
}

constexpr void Affine::transform(double x, double y, double* outX, double* outY) const noexcept {
    const Vec2 mapped = getTransform({x, y});
    *outX = mapped.x;
    *outY = mapped.y;
}

} // namespace Kerovane::Tesselune
