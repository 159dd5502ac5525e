#pragma once

#include "Plugins/Shared/Math/Color.h"
#include "Plugins/Shared/Math/Vec2.h"
#include "Plugins/Shared/Math/Vec3.h"
#include "Plugins/Shared/Math/Vec4.h"

#include <concepts>
#include <type_traits>

namespace Kerovane::Tesselune {

/// A type that can be the corner of a triangle. A colour counts as a point in four dimensions.
template <typename Point>
concept BarycentricPoint = std::same_as<Point, Vec2> || std::same_as<Point, Vec3> ||
    std::same_as<Point, Vec4> || std::same_as<Point, Color>;

/** Barycentric coordinates: a point's weights with respect to the three corners of a triangle. */
class Barycentric {
public:
    double u;
    double v;
    double w;

    // Construction

    /// Takes the weights as they are; their sum is not checked.
    constexpr Barycentric(double newU, double newV, double newW) noexcept
        : u(newU), v(newV), w(newW) {}

    /**
     * Computes the weights of p in the triangle a, b, c. They add up to 1. A point off the
     * triangle's plane gets the weights of its projection onto the plane. The weights are infinite
     * or NaN if the corners lie on a line.
     */
    template <BarycentricPoint Point>
    constexpr Barycentric(const Point& a, const Point& b, const Point& c, const Point& p) noexcept;

    // Use

    /// Returns whether u and v are within 0 to 1 and w is not below 0, all inclusive. Returns false
    /// if a weight is NaN.
    constexpr bool isInside() const noexcept;

    /// Returns the weighted sum of three values. All channels of a colour are weighted alike.
    template <BarycentricPoint Point>
    [[nodiscard]] constexpr Point interpolate(const Point& a, const Point& b,
                                              const Point& c) const noexcept {
        return (a * u + b * v) + c * w;
    }

private:
    template <typename Vector>
    static constexpr double dot(const Vector& a, const Vector& b) noexcept {
        return a.dot(b);
    }
    static constexpr double dot(const Color& a, const Color& b) noexcept;
};

static_assert(std::is_trivially_copyable_v<Barycentric> && std::is_standard_layout_v<Barycentric>);

template <BarycentricPoint Point>
constexpr Barycentric::Barycentric(const Point& a, const Point& b, const Point& c,
                                   const Point& p) noexcept {
    const Point e0 = b - c;
    const Point e1 = a - c;
    const Point q = p - c;
    const double d00 = dot(e0, e0);
    const double d11 = dot(e1, e1);
    const double d01 = dot(e0, e1);
    const double d0q = dot(q, e0);
    const double d1q = dot(q, e1);
    const double denominator = d11 * d00 - d01 * d01;
    u = (d00 * d1q - d01 * d0q) / denominator;
    v = (d11 * d0q - d01 * d1q) / denominator;
    w = 1.0 - u - v;
}

constexpr bool Barycentric::isInside() const noexcept {
    return u >= 0.0 && u <= 1.0 && v >= 0.0 && v <= 1.0 && w >= 0.0;
}

constexpr double Barycentric::dot(const Color& a, const Color& b) noexcept {
    const Color products = a * b;
    return products.r() + products.g() + products.b() + products.a();
}

} // namespace Kerovane::Tesselune
