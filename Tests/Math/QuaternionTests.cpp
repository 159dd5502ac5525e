#include "Tests/Math/MathTest.h"

#include <algorithm>

namespace Kerovane::Tesselune {

namespace {

Quaternion negated(const Quaternion& q) {
    return {-q.x, -q.y, -q.z, -q.w};
}

/// Returns whether the two are the same rotation; q and -q are.
testing::AssertionResult sameRotation(const Quaternion& a, const Quaternion& b,
                                      double tolerance = 1e-12) {
    return near(a, a.dot(b) < 0.0 ? negated(b) : b, tolerance);
}

Quaternion angleAxis(double angle, const Vec3& axis) {
    return toQuaternion(Eigen::Quaterniond(Eigen::AngleAxisd(angle, toEigen(axis).normalized())));
}

} // namespace

TEST(QuaternionConstruction, TakesNumbersOrAnAxis) {
    Quaternion q(5.0, 6.0, 7.0);
    EXPECT_SAME(q, Quaternion(5.0, 6.0, 7.0, 1.0));
    q.w = 4.0;
    q.set(1.0, 2.0, 3.0);
    EXPECT_SAME(q, Quaternion(1.0, 2.0, 3.0, 4.0));
    for (Random& random : trials()) {
        const double angle = random.number();
        const Vec3 axis = random.direction();
        EXPECT_CLOSE(Quaternion(axis, angle), angleAxis(angle, axis));
        q.set(axis * random.number(0.1, 9.0), angle);
        EXPECT_CLOSE(q, angleAxis(angle, axis));
    }
    const Quaternion unscaled(Vec3(2.0, 0.0, 0.0), kPi);
    EXPECT_EQ(unscaled.x, 2.0);
    q.set(Vec3(), 0.5);
    EXPECT_SAME(q, Quaternion(Vec3(1.0, 0.0, 0.0), 0.5));
}

TEST(QuaternionProduct, AgreesWithEigenInBothOrders) {
    for (Random& random : trials()) {
        const Quaternion a = random.rotation();
        const Quaternion b = random.rotation();
        const Quaternion expected = toQuaternion(toEigen(a) * toEigen(b));
        EXPECT_CLOSE(after(a, [&](Quaternion& q) { q.multiply(b); }), expected);
        EXPECT_CLOSE(after(b, [&](Quaternion& q) { q.premultiply(a); }), expected);
        EXPECT_CLOSE(after(a, [&](Quaternion& q) { q.multiplyQuaternions(q, b); }), expected);

        const Vec3 v = random.vec3();
        EXPECT_CLOSE(Quaternion::quaternionMulVec3(a, v), toVec3(toEigen(a) * toEigen(v)));
    }
    EXPECT_SAME(after(Quaternion(0.0, 0.0, 1.0, 0.0), [](Quaternion& q) { q.multiply(q); }),
                Quaternion(0.0, 0.0, 0.0, -1.0));
}

TEST(QuaternionLength, BecomesOneAndZeroBecomesTheIdentity) {
    for (Random& random : trials()) {
        const auto q = random.any<Quaternion>();
        EXPECT_DOUBLE_EQ(q.lengthSq(), toEigen(q).squaredNorm());
        EXPECT_DOUBLE_EQ(q.length(), toEigen(q).norm());
        const Quaternion unit = after(q, [](Quaternion& v) { v.normalize(); });
        EXPECT_CLOSE(unit, toQuaternion(toEigen(q).normalized()));
        Quaternion inverse = after(q, [](Quaternion& v) { v.setInverse(); });
        inverse.multiply(unit);
        EXPECT_CLOSE(inverse, Quaternion());
    }
    Quaternion zero(0.0, 0.0, 0.0, 0.0);
    zero.normalize();
    EXPECT_SAME(zero, Quaternion());
}

TEST(QuaternionAngle, IsInDegrees) {
    for (Random& random : trials()) {
        const Vec3 axis = random.direction();
        const double angle = random.number(0.1, 6.1);
        const Quaternion q(axis, angle);
        EXPECT_NEAR(q.getRotationAngle(), angle * 180.0 / kPi, 1e-10);
        EXPECT_CLOSE(q.getRotationAxis(), axis, 1e-10);
        EXPECT_NEAR(Quaternion(axis, kPi).getRotationAngle(), 180.0, 1e-12);
    }
    EXPECT_TRUE(std::isnan(Quaternion(0.0, 0.0, 0.0, 1.1).getRotationAngle()));
    EXPECT_SAME(Quaternion().getRotationAxis(), Vec3(0.0, 0.0, 1.0));
    // The limit on 1 - w w is 1e-12: the greater angle gives 2.25e-12, the smaller 0.25e-12.
    EXPECT_CLOSE(Quaternion(Vec3(1.0, 0.0, 0.0), 3e-6).getRotationAxis(), Vec3(1.0, 0.0, 0.0),
                 1e-3);
    EXPECT_SAME(Quaternion(Vec3(1.0, 0.0, 0.0), 1e-6).getRotationAxis(), Vec3(0.0, 0.0, 1.0));
}

TEST(QuaternionFromMatrix, TakesTheBranchOfTheLargestPart) {
    enum Branch { FromTrace, FromX, FromY, FromZ };
    const Table<double, Vec3, Branch> cases = {
        {0.5, {1.0, 2.0, 3.0}, FromTrace}, {2.0, {-1.0, 0.0, 0.0}, FromTrace},
        {3.0, {5.0, 1.0, 2.0}, FromX},     {-3.0, {5.0, -1.0, 2.0}, FromX},
        {3.0, {1.0, 5.0, 2.0}, FromY},     {-3.0, {1.0, 5.0, -2.0}, FromY},
        {3.0, {1.0, 2.0, 5.0}, FromZ},     {-3.0, {-1.0, 2.0, 5.0}, FromZ},
        {kPi, {1.0, 0.0, 0.0}, FromX},     {kPi, {0.0, 1.0, 0.0}, FromY},
        {kPi, {0.0, 0.0, 1.0}, FromZ},
    };
    for (const auto& [angle, axis, branch] : cases) {
        const Eigen::Matrix3d rotation =
            Eigen::AngleAxisd(angle, toEigen(axis).normalized()).toRotationMatrix();
        Eigen::Index largest = 0;
        rotation.diagonal().maxCoeff(&largest);
        ASSERT_EQ(static_cast<Branch>(rotation.trace() > 0.0 ? 0 : 1 + largest), branch);

        Quaternion q;
        q.setWithMat4(toMat4(Eigen::Affine3d(rotation)));
        EXPECT_TRUE(sameRotation(q, angleAxis(angle, axis)));
        const double parts[] = {q.w, q.x, q.y, q.z};
        EXPECT_GT(parts[branch], 0.0) << "the part that the branch starts from is positive";
    }
}

TEST(QuaternionFromMatrix, BreaksTiesTowardsTheLaterAxis) {
    // Half turns about diagonals have a trace of exactly -1 and two equal diagonal elements.
    const double half = std::sqrt(0.5);
    const Table<Mat4, Quaternion> cases = {
        {{0, -1, 0, 0, -1, 0, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1, false}, {-half, half, 0.0, 0.0}},
        {{0, 0, -1, 0, 0, -1, 0, 0, -1, 0, 0, 0, 0, 0, 0, 1, false}, {-half, 0.0, half, 0.0}},
        {{-1, 0, 0, 0, 0, 0, -1, 0, 0, -1, 0, 0, 0, 0, 0, 1, false}, {0.0, -half, half, 0.0}},
    };
    for (const auto& [m, expected] : cases) {
        ASSERT_EQ(m.at(0, 0) + m.at(1, 1) + m.at(2, 2), -1.0);
        Quaternion q;
        q.setWithMat4(m);
        EXPECT_CLOSE(q, expected) << "the sign tells the branch";
    }
}

TEST(QuaternionFromDirections, TurnsTheOneIntoTheOtherTheShortestWay) {
    for (Random& random : trials()) {
        const Vec3 from = random.direction();
        const Vec3 to = random.direction();
        const Quaternion q(from, to);
        EXPECT_CLOSE(Quaternion::quaternionMulVec3(q, from), to, 1e-11);
        EXPECT_NEAR(q.getRotationAngle() * kPi / 180.0, from.angleBetween(to), 1e-7);
    }
}

TEST(QuaternionFromDirections, MakesAHalfTurnBetweenOpposites) {
    const Table<Vec3, Vec3> cases = {
        {{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}}, // |x| > |z|
        {{0.8, 0.6, 0.0}, {-0.6, 0.8, 0.0}},
        {{0.0, 0.0, 1.0}, {0.0, -1.0, 0.0}}, // |x| <= |z|
        {{0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}},  // x and z are 0
    };
    for (const auto& [from, axis] : cases) {
        const Quaternion q(from, from.negate());
        EXPECT_CLOSE(q, Quaternion(axis.x, axis.y, axis.z, 0.0));
        EXPECT_EQ(q.w, 0.0);
        EXPECT_NEAR(axis.dot(from), 0.0, 1e-15);
    }
}

TEST(QuaternionSlerp, FollowsTheShorterArcLikeEigen) {
    int oppositeCount = 0;
    for (Random& random : trials()) {
        const Quaternion a = random.rotation();
        const Quaternion b = random.rotation();
        const double t = random.number(0.0, 1.0);
        Quaternion q = a;
        q.slerp(b, t);
        oppositeCount += a.dot(b) < 0.0 ? 1 : 0;
        EXPECT_TRUE(sameRotation(q, toQuaternion(toEigen(a).slerp(t, toEigen(b)))));
        EXPECT_GE(q.dot(a), 0.0) << "on the side of the start";
        EXPECT_SAME(Quaternion::lerp(a, b, t), q);
    }
    EXPECT_GT(oppositeCount, 0);
}

TEST(QuaternionSlerp, HasExactEndsAndStaysIfBothAreEqual) {
    Random random;
    const Quaternion a(0.0, 0.6, 0.0, 0.8);
    const Quaternion b = random.rotation();
    const Table<Quaternion, double, Quaternion> cases = {
        {b, 0.0, a},
        {b, 1.0, b},
        {negated(a), 1.0, negated(a)},
        {negated(a), 0.0, a},
        {a, 0.5, a},
        {negated(a), 0.5, a},
        {Quaternion(0.0, 1.0, 0.0, 1.0), 0.5, a}, // the cosine between the two exceeds 1
    };
    ASSERT_GE(a.dot(a), 1.0);
    for (const auto& [to, t, result] : cases) {
        Quaternion q = a;
        q.slerp(to, t);
        EXPECT_SAME(q, result) << "t " << t;
    }
    EXPECT_SAME(Quaternion::lerp(b, b, 0.3), b);
}

TEST(QuaternionSlerp, TakesTheMeanBetweenNearRotationsWhateverT) {
    const auto aboutZ = [](double halfAngle) {
        return Quaternion(0.0, 0.0, std::sin(halfAngle), std::cos(halfAngle));
    };
    const auto moved = [](const Quaternion& to) {
        return after(Quaternion(), [&](Quaternion& q) { q.slerp(to, 0.25); });
    };
    const Quaternion close = aboutZ(0.0009);
    const Quaternion distant = aboutZ(0.0011);
    ASSERT_LT(std::sqrt(1.0 - close.w * close.w), 0.001);
    ASSERT_GT(std::sqrt(1.0 - distant.w * distant.w), 0.001);
    const Quaternion mean(0.0, 0.0, close.z * 0.5, (1.0 + close.w) * 0.5);
    EXPECT_SAME(moved(close), mean);
    EXPECT_SAME(moved(negated(close)), mean);
    EXPECT_CLOSE(moved(distant), aboutZ(0.25 * 0.0011));
}

} // namespace Kerovane::Tesselune
