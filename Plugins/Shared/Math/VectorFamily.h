#pragma once

#include "Plugins/Shared/Math/Float.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace Kerovane::Tesselune {

/**
 * Operations that Vec2, Vec3 and Vec4 share. `Vector` is the derived type. It provides `map`, which
 * applies a function component by component, `dot` and `equal`.
 *
 * Compound assignments and operations that return nothing work in place; all others return a new
 * value. Division by zero follows IEEE 754.
 */
template <typename Vector>
class VectorFamily {
public:
    // Arithmetic, component by component: with a vector, or one number for all components

    constexpr Vector operator+(const Vector& other) const noexcept;
    constexpr Vector operator+(double value) const noexcept { return self() + filled(value); }
    constexpr Vector operator-(const Vector& other) const noexcept;
    constexpr Vector operator-(double value) const noexcept { return self() - filled(value); }
    constexpr Vector operator*(const Vector& other) const noexcept;
    constexpr Vector operator*(double value) const noexcept { return self() * filled(value); }
    constexpr Vector operator/(const Vector& other) const noexcept;
    constexpr Vector operator/(double value) const noexcept { return self() / filled(value); }

    /// Returns the negated vector; leaves this one unchanged.
    [[nodiscard]] constexpr Vector negate() const noexcept {
        return Vector::map(std::negate(), self());
    }

    // Arithmetic in place, component by component

    constexpr void operator+=(const Vector& other) noexcept { self() = self() + other; }
    constexpr void operator+=(double value) noexcept { self() = self() + value; }
    constexpr void operator-=(const Vector& other) noexcept { self() = self() - other; }
    constexpr void operator-=(double value) noexcept { self() = self() - value; }
    constexpr void operator*=(const Vector& other) noexcept { self() = self() * other; }
    constexpr void operator*=(double value) noexcept { self() = self() * value; }
    constexpr void operator/=(const Vector& other) noexcept { self() = self() / other; }
    constexpr void operator/=(double value) noexcept { self() = self() / value; }

    constexpr void add(const Vector& other) noexcept { self() += other; }
    constexpr void add(double value) noexcept { self() += value; }
    constexpr void sub(const Vector& other) noexcept { self() -= other; }
    constexpr void sub(double value) noexcept { self() -= value; }
    constexpr void mult(const Vector& other) noexcept { self() *= other; }
    constexpr void mult(double value) noexcept { self() *= value; }
    constexpr void divide(const Vector& other) noexcept { self() /= other; }
    constexpr void divide(double value) noexcept { self() /= value; }

    constexpr void setZero() noexcept { self() = Vector(); }

    // Comparison

    /// Returns whether a.equal(b) holds with a tolerance of 1e-12.
    friend constexpr bool operator==(const Vector& a, const Vector& b) noexcept {
        return a.equal(b, Float::epsilon);
    }

    // Length

    double length() const noexcept { return std::sqrt(lengthSquare()); }
    constexpr double lengthSquare() const noexcept { return self().dot(self()); }
    double distance(const Vector& other) const noexcept { return (self() - other).length(); }

    /// Scales to the given length. A vector of length 0 becomes (newLength, 0, ...).
    void setLength(double newLength) noexcept;

    /// Scales to length 1. A vector of length 0 becomes (1, 0, ...).
    void normalize() noexcept { setLength(1.0); }

private:
    static constexpr Vector filled(double value) noexcept;

    constexpr Vector& self() noexcept { return static_cast<Vector&>(*this); }
    constexpr const Vector& self() const noexcept { return static_cast<const Vector&>(*this); }
};

/** Operations that Vec2 and Vec3 share, but not Vec4. */
template <typename Vector>
class PointFamily : public VectorFamily<Vector> {
public:
    // In place, component by component

    constexpr void getMin(const Vector& other) noexcept;
    constexpr void getMax(const Vector& other) noexcept;

    /// Clamps each component. If `low` is above `high`, a component below `low` becomes `low`, any
    /// other at most `high`.
    constexpr void clamp(const Vector& low, const Vector& high) noexcept;

    // Interpolation

    /// Linear interpolation: a at t = 0, b at t = 1; extrapolates outside 0 to 1.
    [[nodiscard]] static constexpr Vector lerp(const Vector& a, const Vector& b,
                                               double t) noexcept {
        return b * t + a * (1.0 - t);
    }

private:
    constexpr Vector& self() noexcept { return static_cast<Vector&>(*this); }
};

template <typename Vector>
constexpr Vector VectorFamily<Vector>::operator+(const Vector& other) const noexcept {
    return Vector::map(std::plus(), self(), other);
}

template <typename Vector>
constexpr Vector VectorFamily<Vector>::operator-(const Vector& other) const noexcept {
    return Vector::map(std::minus(), self(), other);
}

template <typename Vector>
constexpr Vector VectorFamily<Vector>::operator*(const Vector& other) const noexcept {
    return Vector::map(std::multiplies(), self(), other);
}

template <typename Vector>
constexpr Vector VectorFamily<Vector>::operator/(const Vector& other) const noexcept {
    return Vector::map(std::divides(), self(), other);
}

template <typename Vector>
void VectorFamily<Vector>::setLength(double newLength) noexcept {
    const double oldLength = length();
    if (oldLength == 0.0) {
        setZero();
        self().x = newLength;
    } else {
        mult(newLength / oldLength);
    }
}

template <typename Vector>
constexpr Vector VectorFamily<Vector>::filled(double value) noexcept {
    return Vector::map([value](double) { return value; }, Vector());
}

template <typename Vector>
constexpr void PointFamily<Vector>::getMin(const Vector& other) noexcept {
    self() = Vector::map([](double a, double b) { return std::min(a, b); }, self(), other);
}

template <typename Vector>
constexpr void PointFamily<Vector>::getMax(const Vector& other) noexcept {
    self() = Vector::map([](double a, double b) { return std::max(a, b); }, self(), other);
}

template <typename Vector>
constexpr void PointFamily<Vector>::clamp(const Vector& low, const Vector& high) noexcept {
    const auto clamped = [](double value, double least, double most) {
        return value < least ? least : std::min(value, most);
    };
    self() = Vector::map(clamped, self(), low, high);
}

} // namespace Kerovane::Tesselune
