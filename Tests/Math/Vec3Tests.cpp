#include "Tests/Math/MathTest.h"

namespace Kerovane::Tesselune {

TEST(Vec3Arithmetic, ReturnsOrChangesTheVector) {
    Vec3 v(4.0);
    v.set(Vec2(1.0, 2.0), 3.0);
    v.set(0, 2.0);
    v.set(1, -4.0);
    v.set(7, 0.5);
    EXPECT_SAME(v, Vec3(2.0, -4.0, 0.5));
    EXPECT_SAME(v.getVec2(), Vec2(2.0, -4.0));
    EXPECT_SAME(Vec3(1.5, -1.5, 2.0).floor(), Vec3(1.0, -2.0, 2.0));
    EXPECT_SAME(v.rotationalDifference({360.0, 0.0, 0.0}), Vec3(-358.0, -4.0, 0.5));
    v.setInvert();
    v.setNegate();
    EXPECT_SAME(v, Vec3(-0.5, 0.25, -2.0));
}

TEST(Vec3Products, AgreeWithEigen) {
    for (Random& random : trials()) {
        const Vec3 a = random.vec3();
        const Vec3 b = random.vec3();
        EXPECT_NEAR(a.dot(b), toEigen(a).dot(toEigen(b)), 1e-12);
        EXPECT_CLOSE(a.cross(b), toVec3(toEigen(a).cross(toEigen(b))));
        const double sine = a.cross(b).length();
        EXPECT_NEAR(a.angleBetween(b), std::atan2(sine, a.dot(b)), 1e-10);
        EXPECT_NEAR(a.distanceSquare(b), a.distance(b) * a.distance(b), 1e-9);
    }
}

TEST(Vec3Angle, IsNotClampedAgainstRounding) {
    // For some vectors rounding makes the cosine between the vector and itself exceed 1. The angle
    // is then NaN, otherwise almost 0.
    int nanCount = 0;
    for (Random& random : trials()) {
        const Vec3 v = random.vec3();
        const double angle = v.angleBetween(v);
        nanCount += std::isnan(angle) ? 1 : 0;
        EXPECT_TRUE(std::isnan(angle) || angle < 1e-7) << angle;
    }
    EXPECT_GT(nanCount, 0);
}

TEST(Vec3Components, FindTheLargestAndTheLastOfEquals) {
    const Table<Vec3, int> cases = {
        {{-3.0, 2.0, 1.0}, 0}, {{1.0, -3.0, 2.0}, 1}, {{1.0, 2.0, -3.0}, 2}, {{2.0, 1.0, 3.0}, 2},
        {{1.0, 1.0, 1.0}, 2},  {{2.0, 2.0, 1.0}, 1},  {{2.0, 1.0, 2.0}, 2},  {{1.0, 2.0, 2.0}, 2},
    };
    for (const auto& [v, index] : cases) {
        EXPECT_EQ(v.largestAbsComponent(), index) << testing::PrintToString(v);
    }
}

TEST(Vec3Ortho, IsPerpendicularToTheOtherAndToTheChosenAxis) {
    constexpr Vec3 kAxes[] = {{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}};
    for (Random& random : trials()) {
        Vec3 v = random.vec3();
        const Vec3 other = random.vec3();
        const Vec3 axis = kAxes[(v.largestAbsComponent() + 2) % 3];
        v.ortho(other);
        EXPECT_NEAR(v.length(), 1.0, 1e-14);
        EXPECT_NEAR(v.dot(other), 0.0, 1e-13);
        EXPECT_EQ(v.dot(axis), 0.0);
        EXPECT_GT(other.cross(axis).dot(v), 0.0) << "other x axis, not axis x other";
    }
    Vec3 alongX(9.0, 0.0, 0.0);
    alongX.ortho({0.0, 0.0, 5.0});
    EXPECT_SAME(alongX, Vec3(1.0, 0.0, 0.0)) << "other lies along the axis z";
}

TEST(Vec3Transformation, AppliesTheMatrix) {
    for (Random& random : trials()) {
        const Mat4 m = random.mat4();
        const Vec3 v = random.vec3();
        const Eigen::Vector4d mapped = toEigen(m) * Eigen::Vector4d(v.x, v.y, v.z, 1.0);
        EXPECT_CLOSE(after(v, [&](Vec3& p) { p.applyMatrix4(m); }), toVec3(mapped.head<3>()));
        EXPECT_CLOSE(after(v, [&](Vec3& p) { p.applyProjection(m); }), toVec3(mapped.hnormalized()),
                     1e-8);
        const Eigen::Vector3d direction = toEigen(m).topLeftCorner<3, 3>() * toEigen(v);
        EXPECT_CLOSE(after(v, [&](Vec3& d) { d.transformDirection(m); }),
                     toVec3(direction.normalized()));
        Vec3 result;
        result.setFromMatrixPosition(m);
        EXPECT_SAME(result, m.getColumn(3).getVec3());
        result.setFromMatrixColumn(m, 1);
        EXPECT_SAME(result, toVec3(toEigen(m).col(1).head<3>()));
    }
}

TEST(Vec3Transformation, RotatesAndScalesByTheSquareOfAQuaternion) {
    for (Random& random : trials()) {
        const Quaternion q = random.rotation();
        const Vec3 v = random.vec3();
        Vec3 rotated = v;
        rotated.applyQuaternion(q);
        EXPECT_CLOSE(rotated, toVec3(toEigen(q) * toEigen(v)));
        Vec3 scaled = v;
        scaled.applyQuaternion(Quaternion(q.x * 3.0, q.y * 3.0, q.z * 3.0, q.w * 3.0));
        EXPECT_CLOSE(scaled, rotated * 9.0);
    }
}

} // namespace Kerovane::Tesselune
