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
#include <bit>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <numbers>
#include <ostream>
#include <random>
#include <tuple>
#include <vector>

namespace Kerovane::Tesselune {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kPi = std::numbers::pi;

/// Types that consist of numbers of one type only.
template <typename Value>
concept AllNumbers =
    std::is_base_of_v<Vec4, Value> || std::is_same_v<Value, Vec2> || std::is_same_v<Value, Vec3> ||
    std::is_same_v<Value, Quaternion> || std::is_same_v<Value, Affine> ||
    std::is_same_v<Value, Color> || std::is_same_v<Value, Barycentric> ||
    std::is_same_v<Value, Mat4> || std::is_same_v<Value, Box3>;

template <AllNumbers Value>
using NumbersOf = std::array<double, sizeof(Value) / sizeof(double)>;

using Numbers = std::vector<double>;

/// Returns the numbers in storage order, to print and compare them.
template <AllNumbers Value>
Numbers numbers(const Value& value) {
    const auto stored = std::bit_cast<NumbersOf<Value>>(value);
    return {stored.begin(), stored.end()};
}
inline Numbers numbers(const Euler& e) {
    return {e.x, e.y, e.z, static_cast<double>(e.order)};
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

/// Returns whether all numbers of the two differ by at most the tolerance. 0 requires equal bits,
/// except for the sign of zero.
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

#define EXPECT_SAME(...) EXPECT_TRUE(same(__VA_ARGS__))
#define EXPECT_CLOSE(...) EXPECT_TRUE(near(__VA_ARGS__))

/// A table of cases, one tuple for each.
template <typename... Columns>
using Table = std::vector<std::tuple<Columns...>>;

/// Returns the value after an in-place operation.
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

/** Random values from a fixed seed, so that failures are reproducible. */
class Random {
public:
    explicit Random(std::uint64_t seed = 0) : mEngine(seed) {}

    double number(double low = -10.0, double high = 10.0) {
        return std::uniform_real_distribution(low, high)(mEngine);
    }
    template <AllNumbers Value>
    Value any() {
        NumbersOf<Value> values{};
        for (double& value : values) {
            value = number();
        }
        return std::bit_cast<Value>(values);
    }
    Vec2 vec2() { return any<Vec2>(); }
    Vec3 vec3() { return any<Vec3>(); }
    Vec4 vec4() { return any<Vec4>(); }
    Affine affine() { return any<Affine>(); }
    Mat4 mat4() { return any<Mat4>(); }
    Vec3 direction() {
        Vec3 v = vec3();
        v.normalize();
        return v;
    }
    Quaternion rotation() {
        auto q = any<Quaternion>();
        q.normalize();
        return q;
    }

private:
    std::mt19937_64 mEngine;
};

/// Returns generators for the trials of a property, each with other values.
inline std::vector<Random> trials() {
    std::vector<Random> trials;
    for (std::uint64_t seed = 0; seed < 200; ++seed) {
        trials.emplace_back(seed);
    }
    return trials;
}

// Conversion to and from Eigen

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
