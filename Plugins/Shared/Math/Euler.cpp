#include "Plugins/Shared/Math/Euler.h"

#include "Plugins/Shared/Math/Mat4.h"
#include "Plugins/Shared/Math/Quaternion.h"

#include <algorithm>
#include <cmath>

namespace Kerovane::Tesselune {

namespace {

/// One angle and the arguments of its atan2.
struct ArcTangent {
    double Euler::*angle;
    double numerator;
    double denominator;

    void assign(Euler& euler) const { euler.*angle = std::atan2(numerator, denominator); }
};

/// How the angles of one rotation order are read from a matrix: the middle one from its sine, the
/// outer and the inner one from arctangents. If the middle one is near a quarter turn,
/// `atQuarterTurn` gives either the outer or the inner angle, and the other of the two is 0.
struct Extraction {
    double Euler::*middle;
    double sine;
    ArcTangent outer;
    ArcTangent inner;
    ArcTangent atQuarterTurn;
};

} // namespace

void Euler::setWithMat4(const Mat4& m, RotationOrder newOrder) noexcept {
    order = newOrder == OrderUnset ? order : newOrder;
    if (order < OrderXYZ || order > OrderZYX) {
        return;
    }

    const auto [m11, m12, m13] = m.getRow(0).getVec3();
    const auto [m21, m22, m23] = m.getRow(1).getVec3();
    const auto [m31, m32, m33] = m.getRow(2).getVec3();
    constexpr auto X = &Euler::x;
    constexpr auto Y = &Euler::y;
    constexpr auto Z = &Euler::z;
    const Extraction extractions[] = {
        {Y, m13, {X, -m23, m33}, {Z, -m12, m11}, {X, m32, m22}},  // OrderXYZ
        {Z, m21, {X, -m23, m22}, {Y, -m31, m11}, {Y, m13, m33}},  // OrderYZX
        {X, m32, {Y, -m31, m33}, {Z, -m12, m22}, {Z, m21, m11}},  // OrderZXY
        {Z, m12, {X, m32, m22}, {Y, m13, m11}, {X, -m23, m33}},   // OrderXZY
        {X, m23, {Y, -m13, m33}, {Z, -m21, m22}, {Y, -m31, m11}}, // OrderYXZ
        {Y, m31, {X, m32, m33}, {Z, m21, m11}, {Z, -m12, m22}},   // OrderZYX
    };
    const Extraction& extraction = extractions[order - OrderXYZ];

    *this = Euler(0.0, 0.0, 0.0, order);
    this->*extraction.middle = std::asin(std::clamp(extraction.sine, -1.0, 1.0));
    constexpr double kQuarterTurnSine = 0.999999F;
    if (std::abs(extraction.sine) < kQuarterTurnSine) {
        extraction.outer.assign(*this);
        extraction.inner.assign(*this);
    } else {
        extraction.atQuarterTurn.assign(*this);
    }
}

void Euler::setWithQuaternion(const Quaternion& q, RotationOrder newOrder) noexcept {
    Mat4 m;
    m.setWithQuaternion(q);
    setWithMat4(m, newOrder);
}

} // namespace Kerovane::Tesselune
