#pragma once

#include "Plugins/Shared/Math/Affine.h"
#include "Plugins/Shared/Math/Barycentric.h"
#include "Plugins/Shared/Math/Box3.h"
#include "Plugins/Shared/Math/Color.h"
#include "Plugins/Shared/Math/Euler.h"
#include "Plugins/Shared/Math/Mat4.h"
#include "Plugins/Shared/Math/Quaternion.h"
#include "Plugins/Shared/Math/Range.h"
#include "Plugins/Shared/Math/Rect.h"
#include "Plugins/Shared/Math/Vec2.h"
#include "Plugins/Shared/Math/Vec3.h"
#include "Plugins/Shared/Math/Vec4.h"

#include <Eigen/Geometry>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <numbers>
#include <ostream>
#include <random>
#include <vector>

namespace Kerovane::Tesselune {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kPi = std::numbers::pi;

/// How often a property is tried, each time on other random values.
constexpr int kTrials = 200;

// The numbers of each type in their order of storage, to print and to compare it.

using Numbers = std::vector<double>;

inline Numbers numbers(const Vec2& v) {
    return {v.x, v.y};
}
inline Numbers numbers(const Vec3& v) {
    return {v.x, v.y, v.z};
}
inline Numbers numbers(const Vec4& v) {
    return {v.x, v.y, v.z, v.w};
}
inline Numbers numbers(const Quaternion& q) {
    return {q.x, q.y, q.z, q.w};
}
inline Numbers numbers(const Euler& e) {
    return {e.x, e.y, e.z, static_cast<double>(e.order)};
}
inline Numbers numbers(const Affine& t) {
    return {t.a, t.c, t.e, t.b, t.d, t.f};
}
inline Numbers numbers(const Color& c) {
    return {c.mR, c.mG, c.mB, c.mA};
}
inline Numbers numbers(const Barycentric& b) {
    return {b.u, b.v, b.w};
}
inline Numbers numbers(const Mat4& m) {
    return {std::begin(m.mElements), std::end(m.mElements)};
}
inline Numbers numbers(const Box3& b) {
    return {b.min.x, b.min.y, b.min.z, b.max.x, b.max.y, b.max.z};
}

template <typename Value>
concept HasNumbers = requires(const Value& value) {
    numbers(value);
};

template <HasNumbers Value>
void PrintTo(const Value& value, std::ostream* out) {
    const auto precision = out->precision(17);
    for (const double number : numbers(value)) {
        *out << number << ' ';
    }
    out->precision(precision);
}

/// Whether all numbers of the two differ by at most the tolerance; 0 asks for the same bits, but
/// for the sign of zero.
template <HasNumbers Value>
testing::AssertionResult near(const Value& a, const Value& b, double tolerance = 1e-12) {
    const Numbers ofA = numbers(a);
    const Numbers ofB = numbers(b);
    for (std::size_t i = 0; i < ofA.size(); ++i) {
        if (!(std::abs(ofA[i] - ofB[i]) <= tolerance)) {
            return testing::AssertionFailure() << testing::PrintToString(a) << " is not "
                                               << testing::PrintToString(b) << " at " << i;
        }
    }
    return testing::AssertionSuccess();
}

template <HasNumbers Value>
testing::AssertionResult same(const Value& a, const Value& b) {
    return near(a, b, 0.0);
}

/// The value after an operation that works in place.
template <typename Value, typename Change>
Value after(Value value, Change change) {
    change(value);
    return value;
}

/// The fields of each vector, in order.
template <typename Vector>
constexpr std::array<double Vector::*, 0> kComponents;
template <>
inline constexpr std::array kComponents<Vec2>{&Vec2::x, &Vec2::y};
template <>
inline constexpr std::array kComponents<Vec3>{&Vec3::x, &Vec3::y, &Vec3::z};
template <>
inline constexpr std::array kComponents<Vec4>{&Vec4::x, &Vec4::y, &Vec4::z, &Vec4::w};

/** Values from a fixed seed: a failure comes again. */
class Random {
public:
    explicit Random(std::uint64_t seed = 20'240'229) : mEngine(seed) {}

    double number(double low = -10.0, double high = 10.0) {
        return std::uniform_real_distribution(low, high)(mEngine);
    }
    Vec2 vec2() { return {number(), number()}; }
    Vec3 vec3() { return {number(), number(), number()}; }
    Vec4 vec4() { return {number(), number(), number(), number()}; }
    Vec3 direction() {
        Vec3 v = vec3();
        v.normalize();
        return v;
    }
    Quaternion rotation() {
        Quaternion q(number(), number(), number(), number());
        q.normalize();
        return q;
    }
    Affine affine() { return {number(), number(), number(), number(), number(), number()}; }
    Mat4 mat4() { return {vec4(), vec4(), vec4(), vec4(), true}; }

    template <typename Vector>
    Vector vector() {
        Vector v;
        for (double Vector::*component : kComponents<Vector>) {
            v.*component = number();
        }
        return v;
    }

private:
    std::mt19937_64 mEngine;
};

// To and from Eigen

inline Eigen::Vector3d toEigen(const Vec3& v) {
    return {v.x, v.y, v.z};
}
inline Vec3 toVec3(const Eigen::Vector3d& v) {
    return {v.x(), v.y(), v.z()};
}
inline Eigen::Quaterniond toEigen(const Quaternion& q) {
    return {q.w, q.x, q.y, q.z};
}
inline Quaternion toQuaternion(const Eigen::Quaterniond& q) {
    return {q.x(), q.y(), q.z(), q.w()};
}
inline Eigen::Matrix4d toEigen(const Mat4& m) {
    return Eigen::Matrix4d(m.mElements);
}
inline Mat4 toMat4(const Eigen::Matrix4d& m) {
    return {m.data(), true};
}
inline Mat4 toMat4(const Eigen::Affine3d& m) {
    return toMat4(m.matrix());
}

} // namespace Kerovane::Tesselune
