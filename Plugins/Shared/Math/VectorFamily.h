#pragma once

#include "Math/Float.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace Kerovane::Tesselune {

/**
 * What Vec2, Vec3 and Vec4 have in common, written once. `Vector` is the type that derives from
 * this one; its `kComponents` lists its fields in order.
 *
 * The named operations and the compound assignments work in place and return nothing; the
 * operators return a new value. Division by zero follows IEEE 754.
 */
template <typename Vector>
class VectorFamily {
public:
    // In-place arithmetic, component by component: with a vector, or one number for all components

    constexpr void add(const Vector& other) noexcept { apply(std::plus(), other); }
    constexpr void add(double value) noexcept { add(filled(value)); }
    constexpr void sub(const Vector& other) noexcept { apply(std::minus(), other); }
    constexpr void sub(double value) noexcept { sub(filled(value)); }
    constexpr void mult(const Vector& other) noexcept { apply(std::multiplies(), other); }
    constexpr void mult(double value) noexcept { mult(filled(value)); }
    constexpr void divide(const Vector& other) noexcept { apply(std::divides(), other); }
    constexpr void divide(double value) noexcept { divide(filled(value)); }

    constexpr void operator+=(const Vector& other) noexcept { add(other); }
    constexpr void operator+=(double value) noexcept { add(value); }
    constexpr void operator-=(const Vector& other) noexcept { sub(other); }
    constexpr void operator-=(double value) noexcept { sub(value); }
    constexpr void operator*=(const Vector& other) noexcept { mult(other); }
    constexpr void operator*=(double value) noexcept { mult(value); }
    constexpr void operator/=(const Vector& other) noexcept { divide(other); }
    constexpr void operator/=(double value) noexcept { divide(value); }

    // The same, as a new value

    constexpr Vector operator+(const Vector& other) const noexcept;
    constexpr Vector operator+(double value) const noexcept { return self() + filled(value); }
    constexpr Vector operator-(const Vector& other) const noexcept;
    constexpr Vector operator-(double value) const noexcept { return self() - filled(value); }
    constexpr Vector operator*(const Vector& other) const noexcept;
    constexpr Vector operator*(double value) const noexcept { return self() * filled(value); }
    constexpr Vector operator/(const Vector& other) const noexcept;
    constexpr Vector operator/(double value) const noexcept { return self() / filled(value); }

    /// The negated vector; this one stays as it is.
    constexpr Vector negate() const noexcept;

    // Length

    double length() const noexcept { return std::sqrt(lengthSquare()); }
    constexpr double lengthSquare() const noexcept { return self().dot(self()); }
    double distance(const Vector& other) const noexcept { return (self() - other).length(); }

    /// Scales to the given length. A vector of length 0 becomes (length, 0, ...).
    void setLength(double newLength) noexcept;

    /// Scales to length 1. A vector of length 0 becomes (1, 0, ...).
    void normalize() noexcept { setLength(1.0); }

    // Comparison

    /// Whether every component is exactly 0.
    constexpr bool isZero() const noexcept {
        return all([](double component) { return component == 0.0; });
    }

protected:
    /// Replaces each component by function(it, those of the others).
    template <typename Function, typename... Others>
    constexpr void apply(Function function, const Others&... others) noexcept;

    /// Whether predicate(component, those of the others) holds for all components.
    template <typename Predicate, typename... Others>
    constexpr bool all(Predicate predicate, const Others&... others) const noexcept;

private:
    static constexpr Vector filled(double value) noexcept;

    constexpr Vector& self() noexcept { return static_cast<Vector&>(*this); }
    constexpr const Vector& self() const noexcept { return static_cast<const Vector&>(*this); }
};

/** What Vec2 and Vec3 have in common beyond that, but not Vec4. */
template <typename Vector>
class PointFamily : public VectorFamily<Vector> {
public:
    // Comparison

    friend constexpr bool operator==(const Vector& a, const Vector& b) noexcept {
        return a.equal(b);
    }

    /// Whether each component differs by at most the tolerance, inclusive.
    constexpr bool equal(const Vector& other, double tolerance = Float::epsilon) const noexcept;

    // In place, component by component

    constexpr void getMin(const Vector& other) noexcept;
    constexpr void getMax(const Vector& other) noexcept;

    /// A component below `low` takes `low`, any other the lesser of itself and `high`.
    constexpr void clamp(const Vector& low, const Vector& high) noexcept;

    /// On the straight line: a at t = 0, b at t = 1, beyond them outside 0 to 1.
    static constexpr Vector lerp(const Vector& a, const Vector& b, double t) noexcept {
        return b * t + a * (1.0 - t);
    }
};

template <typename Vector>
constexpr Vector VectorFamily<Vector>::operator+(const Vector& other) const noexcept {
    Vector result = self();
    result.add(other);
    return result;
}

template <typename Vector>
constexpr Vector VectorFamily<Vector>::operator-(const Vector& other) const noexcept {
    Vector result = self();
    result.sub(other);
    return result;
}

template <typename Vector>
constexpr Vector VectorFamily<Vector>::operator*(const Vector& other) const noexcept {
    Vector result = self();
    result.mult(other);
    return result;
}

template <typename Vector>
constexpr Vector VectorFamily<Vector>::operator/(const Vector& other) const noexcept {
    Vector result = self();
    result.divide(other);
    return result;
}

template <typename Vector>
constexpr Vector VectorFamily<Vector>::negate() const noexcept {
    Vector result = self();
    result.apply(std::negate());
    return result;
}

template <typename Vector>
void VectorFamily<Vector>::setLength(double newLength) noexcept {
    const double oldLength = length();
    if (oldLength == 0.0) {
        self() = Vector();
        self().x = newLength;
    } else {
        mult(newLength / oldLength);
    }
}

template <typename Vector>
template <typename Function, typename... Others>
constexpr void VectorFamily<Vector>::apply(Function function, const Others&... others) noexcept {
    for (double Vector::*component : Vector::kComponents) {
        self().*component = function(self().*component, others.*component...);
    }
}

template <typename Vector>
template <typename Predicate, typename... Others>
constexpr bool VectorFamily<Vector>::all(Predicate predicate,
                                         const Others&... others) const noexcept {
    return std::ranges::all_of(Vector::kComponents, [&](double Vector::*component) {
        return predicate(self().*component, others.*component...);
    });
}

template <typename Vector>
constexpr Vector VectorFamily<Vector>::filled(double value) noexcept {
    Vector result;
    result.apply([value](double) { return value; });
    return result;
}

template <typename Vector>
constexpr bool PointFamily<Vector>::equal(const Vector& other, double tolerance) const noexcept {
    return this->all([=](double a, double b) { return Float::fuzzyEqual(a, b, tolerance); }, other);
}

template <typename Vector>
constexpr void PointFamily<Vector>::getMin(const Vector& other) noexcept {
    this->apply([](double a, double b) { return std::min(a, b); }, other);
}

template <typename Vector>
constexpr void PointFamily<Vector>::getMax(const Vector& other) noexcept {
    this->apply([](double a, double b) { return std::max(a, b); }, other);
}

template <typename Vector>
constexpr void PointFamily<Vector>::clamp(const Vector& low, const Vector& high) noexcept {
    const auto clamped = [](double value, double least, double most) {
        return value < least ? least : std::min(value, most);
    };
    this->apply(clamped, low, high);
}

} // namespace Kerovane::Tesselune
