#include "Tests/Math/MathTest.h"

namespace Kerovane::Tesselune {

namespace {

/// Returns Eigen's interpolation between unit vectors, in double precision.
Vec4 doubleLerp(const Vec4& a, const Vec4& b, double t) {
    const Eigen::Quaterniond from(a.w, a.x, a.y, a.z);
    const Eigen::Quaterniond result = from.slerp(t, Eigen::Quaterniond(b.w, b.x, b.y, b.z));
    return {result.x(), result.y(), result.z(), result.w()};
}

double cosine(const Vec4& a, const Vec4& b) {
    return a.dot(b) / (a.length() * b.length());
}

} // namespace

TEST(Vec4Arithmetic, InvertsAndAddsMagnitudes) {
    Vec4 v(Vec3(), 1.0);
    v.set(-1.0, 2.0, -4.0, 8.0);
    EXPECT_SAME(v.invert(), Vec4(-1.0, 0.5, -0.25, 0.125));
    EXPECT_EQ(v.lengthManhattan(), 15.0);
}

TEST(Vec4Lerp, ReturnsTheEndsUnchanged) {
    const Vec4 a(1.0, 2.0, 3.0, 4.0);
    const Vec4 b(-5.0, 0.0, 0.0, 1.0);
    EXPECT_SAME(Vec4::lerp(a, b, 0.0), a);
    EXPECT_SAME(Vec4::lerp(a, b, 1.0), b);
}

TEST(Vec4Lerp, FollowsTheShorterArc) {
    int oppositeCount = 0;
    for (Random& random : trials()) {
        Vec4 a = random.vec4();
        Vec4 b = random.vec4();
        a.normalize();
        b.normalize();
        const double t = random.number(0.01, 0.99);
        const Vec4 result = Vec4::lerp(a, b, t);
        oppositeCount += cosine(a, b) < 0.0 ? 1 : 0;
        EXPECT_NEAR(result.length(), 1.0, 1e-14);
        const Vec4 expected = doubleLerp(a, b, t);
        EXPECT_CLOSE(result, expected, 1e-5);
    }
    EXPECT_GT(oppositeCount, 0);
}

TEST(Vec4Lerp, TakesItsSinesInSinglePrecision) {
    const Vec4 result = Vec4::lerp({1.0, 0.0, 0.0, 0.0}, {0.0, 1.0, 0.0, 0.0}, 0.25);
    const float quarterTurn = std::acos(0.0F);
    const double ratio = static_cast<double>(std::sin(quarterTurn * 0.25F)) /
                         static_cast<double>(std::sin(quarterTurn * 0.75F));
    EXPECT_NEAR(result.y / result.x, ratio, 1e-15);
    EXPECT_GT(std::abs(ratio - std::tan(kPi / 8.0)), 1e-10) << "as in double precision";
}

TEST(Vec4Lerp, LeansTowardsTheLongerButHasLengthOne) {
    const Vec4 a(1.0, 0.0, 0.0, 0.0);
    const Vec4 b(0.0, 3.0, 0.0, 0.0);
    const Vec4 result = Vec4::lerp(a, b, 0.5);
    EXPECT_NEAR(result.y / result.x, 3.0, 1e-6);
    EXPECT_NEAR(result.length(), 1.0, 1e-15);
}

TEST(Vec4Lerp, IsStraightBetweenNearDirections) {
    // The limit on 1 - cosine is 0.01: about 8.1 degrees.
    const auto atAngle = [](double radians) {
        return Vec4(std::cos(radians), std::sin(radians), 0.0, 0.0);
    };
    const auto straight = [](const Vec4& a, const Vec4& b, double t) {
        Vec4 result = a * (1.0 - t) + b * t;
        result.normalize();
        return result;
    };
    const Vec4 a = atAngle(0.0);
    const Vec4 inside = atAngle(std::acos(1.0 - 0.0099));
    const Vec4 outside = atAngle(std::acos(1.0 - 0.0101));
    ASSERT_LT(1.0 - cosine(a, inside), 0.01);
    ASSERT_GT(1.0 - cosine(a, outside), 0.01);
    EXPECT_SAME(Vec4::lerp(a, inside, 0.2), straight(a, inside, 0.2));
    EXPECT_FALSE(near(Vec4::lerp(a, outside, 0.2), straight(a, outside, 0.2), 1e-5));
    EXPECT_CLOSE(Vec4::lerp(a, outside, 0.2), doubleLerp(a, outside, 0.2), 1e-6);
}

} // namespace Kerovane::Tesselune
