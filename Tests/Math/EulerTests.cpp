#include "Tests/Math/MathTest.h"

#include <array>

namespace Kerovane::Tesselune {

namespace {

/// A rotation order: its axes from left to right, and the axes whose angle comes back negated,
/// because the angle is the arcsine of the matrix element without its sign being corrected.
struct OrderCase {
    Euler::RotationOrder order;
    int first, middle, last; ///< 0 for x, 1 for y, 2 for z
    Vec3 signsBack;          ///< -1 for an angle that comes back negated
    int zeroAtQuarterTurn;   ///< the axis whose angle is 0 if the middle one is a quarter turn
};

constexpr OrderCase kOrders[] = {
    {Euler::OrderXYZ, 0, 1, 2, {1.0, 1.0, 1.0}, 2},
    {Euler::OrderYZX, 1, 2, 0, {1.0, 1.0, 1.0}, 0},
    {Euler::OrderZXY, 2, 0, 1, {1.0, 1.0, 1.0}, 1},
    {Euler::OrderXZY, 0, 2, 1, {1.0, 1.0, -1.0}, 1},
    {Euler::OrderYXZ, 1, 0, 2, {-1.0, -1.0, -1.0}, 2},
    {Euler::OrderZYX, 2, 1, 0, {1.0, -1.0, 1.0}, 0},
};

double& component(Vec3& v, int i) {
    return v.*kComponents<Vec3>[static_cast<std::size_t>(i)];
}

/// Returns Eigen's rotation by the three angles: the turn about the last axis is applied first.
Eigen::Quaterniond eigenRotation(Vec3 angles, const OrderCase& order) {
    const auto turn = [&](int axis) {
        return Eigen::AngleAxisd(component(angles, axis), Eigen::Vector3d::Unit(axis));
    };
    return turn(order.first) * turn(order.middle) * turn(order.last);
}

Mat4 matrix(const Vec3& angles, const OrderCase& order) {
    return toMat4(Eigen::Affine3d(eigenRotation(angles, order)));
}

Vec3 anglesOf(const Euler& e) {
    return {e.x, e.y, e.z};
}

} // namespace

TEST(Euler, KeepsItsOrderUnlessGivenOne) {
    EXPECT_EQ(Euler().order, Euler::OrderXYZ);
    Euler e(0.0, 0.0, 0.0, Euler::OrderZYX);
    e.set(1.0, 2.0, 3.0, Euler::OrderUnset);
    EXPECT_SAME(e, Euler(1.0, 2.0, 3.0, Euler::OrderZYX));
    e.set(4.0, 5.0, 6.0, Euler::OrderYZX);
    EXPECT_SAME(e, Euler(4.0, 5.0, 6.0, Euler::OrderYZX));
    // Checks the enumerators' values, by which kOrders is sorted.
    for (std::size_t i = 0; i < std::size(kOrders); ++i) {
        EXPECT_EQ(kOrders[i].order, i + 1);
    }
}

TEST(EulerFromMatrix, GivesTheAnglesOfEachOrderWithTheSignsOfItsElements) {
    for (const OrderCase& order : kOrders) {
        for (Random& random : trials()) {
            Vec3 angles = random.vec3() * 0.3;
            component(angles, order.middle) = random.number(-1.5, 1.5);
            Euler e;
            e.setWithMat4(matrix(angles, order), order.order);
            EXPECT_EQ(e.order, order.order);
            EXPECT_CLOSE(anglesOf(e), angles * order.signsBack, 1e-11) << order.order;
            e.setWithQuaternion(toQuaternion(eigenRotation(angles, order)), order.order);
            EXPECT_CLOSE(anglesOf(e), angles * order.signsBack, 1e-11) << order.order;
        }
    }
}

TEST(EulerFromMatrix, ZeroesOneAngleAtAQuarterTurn) {
    Random random;
    for (const OrderCase& order : kOrders) {
        for (const double quarterTurn : {kPi / 2.0, -kPi / 2.0}) {
            Vec3 angles = random.vec3();
            component(angles, order.middle) = quarterTurn;
            const Mat4 m = matrix(angles, order);
            Euler e(9.0, 9.0, 9.0, order.order);
            e.setWithMat4(m, Euler::OrderUnset);
            Vec3 result = anglesOf(e);
            EXPECT_EQ(component(result, order.zeroAtQuarterTurn), 0.0) << order.order;
            // Here only the middle angle may come back negated.
            component(result, order.middle) *= component(angles = order.signsBack, order.middle);
            EXPECT_CLOSE(matrix(result, order), m, 1e-7) << order.order;
        }
    }
}

TEST(EulerFromMatrix, TreatsItsLimitAsAQuarterTurnAndClampsTheSine) {
    constexpr double kLimit = 0.9999989867210388;
    const auto zForSine = [](double sine) {
        Mat4 m;
        m.setRow(0, {0.5, -0.5, sine, 0.0});
        Euler e;
        e.setWithMat4(m, Euler::OrderXYZ);
        return e.z;
    };
    EXPECT_EQ(zForSine(kLimit), 0.0);
    EXPECT_EQ(zForSine(-kLimit), 0.0);
    EXPECT_NEAR(zForSine(std::nextafter(kLimit, 0.0)), kPi / 4.0, 1e-15);

    Mat4 beyond;
    beyond.setRow(0, {0.0, 0.0, 1.0 + 1e-9, 0.0});
    Euler e;
    e.setWithMat4(beyond, Euler::OrderXYZ);
    EXPECT_EQ(e.y, kPi / 2.0);
}

TEST(EulerFromMatrix, StoresAnUnknownOrderAndKeepsTheAngles) {
    Random random;
    for (const int order : {7, -1}) {
        Euler e(1.0, 2.0, 3.0, Euler::OrderXYZ);
        e.setWithMat4(random.mat4(), static_cast<Euler::RotationOrder>(order));
        EXPECT_SAME(e, Euler(1.0, 2.0, 3.0, static_cast<Euler::RotationOrder>(order)));
    }
    Euler unset(1.0, 2.0, 3.0, Euler::OrderUnset);
    unset.setWithMat4(random.mat4(), Euler::OrderUnset);
    EXPECT_SAME(unset, Euler(1.0, 2.0, 3.0, Euler::OrderUnset));
}

TEST(QuaternionFromEuler, IsTheProductOfTheTurnsInSinglePrecision) {
    for (const OrderCase& order : kOrders) {
        for (Random& random : trials()) {
            const Vec3 angles = random.vec3() * 0.3;
            Quaternion q;
            q.setWithEuler({angles.x, angles.y, angles.z, order.order});
            EXPECT_CLOSE(q, toQuaternion(eigenRotation(angles, order)), 1e-6) << order.order;
            for (const double part : numbers(q)) {
                EXPECT_EQ(part, static_cast<float>(part));
            }
            Quaternion close;
            close.setWithEuler({angles.x + 1e-16, angles.y, angles.z - 1e-16, order.order});
            EXPECT_TRUE(close == q);
        }
    }
}

TEST(QuaternionFromEuler, NarrowsTheDoubleSinesBeforeItMultiplies) {
    for (Random& random : trials()) {
        const Vec2 angles = random.vec2();
        Quaternion q;
        q.setWithEuler({angles.x, angles.y, 0.0, Euler::OrderXYZ});
        EXPECT_EQ(q.x, static_cast<float>(std::sin(angles.x * 0.5)) *
                           static_cast<float>(std::cos(angles.y * 0.5)));
    }
}

TEST(QuaternionFromEuler, IsAllZeroWithoutAnOrderAndUntouchedByAnUnknownOne) {
    const Quaternion before(1.0, 2.0, 3.0, 4.0);
    Quaternion q = before;
    q.setWithEuler({1.0, 2.0, 3.0, static_cast<Euler::RotationOrder>(7)});
    EXPECT_SAME(q, before);
    q.setWithEuler({1.0, 2.0, 3.0, Euler::OrderUnset});
    EXPECT_SAME(q, Quaternion(0.0, 0.0, 0.0, 0.0));
}

} // namespace Kerovane::Tesselune
