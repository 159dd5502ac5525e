#include "Tests/Math/MathTest.h"

namespace Kerovane::Tesselune {

template <typename Point>
class BarycentricTest : public testing::Test {};

using CornerTypes = testing::Types<Vec2, Vec3, Vec4, Color>;
TYPED_TEST_SUITE(BarycentricTest, CornerTypes);

TYPED_TEST(BarycentricTest, FindsTheWeightsThatMadeThePoint) {
    for (Random& random : trials()) {
        const auto a = random.any<TypeParam>();
        const auto b = random.any<TypeParam>();
        const auto c = random.any<TypeParam>();
        const double u = random.number(-1.0, 2.0);
        const double v = random.number(-1.0, 2.0);
        const Barycentric weights(u, v, 1.0 - u - v);
        const TypeParam p = weights.interpolate(a, b, c);
        EXPECT_CLOSE(p, a * u + b * v + c * (1.0 - u - v));
        EXPECT_CLOSE(Barycentric(a, b, c, p), weights, 1e-8);
    }
}

TEST(Barycentric, GivesAPointOffThePlaneTheWeightsOfItsProjection) {
    for (Random& random : trials()) {
        const Vec3 a = random.vec3();
        const Vec3 b = random.vec3();
        const Vec3 c = random.vec3();
        Vec3 normal = (b - a).cross(c - a);
        normal.normalize();
        const Vec3 foot = Barycentric(0.2, 0.3, 0.5).interpolate(a, b, c);
        const Barycentric weights(a, b, c, foot + normal * random.number());
        EXPECT_CLOSE(weights, Barycentric(0.2, 0.3, 0.5), 1e-9);
    }
}

TEST(Barycentric, IsInsideInclusivelyWithoutAnUpperBoundOnTheLastWeight) {
    constexpr double kBit = 1e-15;
    constexpr Barycentric kInside[] = {
        {0.5, 0.5, 0.0}, {0.0, 0.0, 1.0}, {1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.5, 0.5, 7.0}};
    for (const Barycentric& weights : kInside) {
        EXPECT_TRUE(weights.isInside()) << testing::PrintToString(weights);
    }
    constexpr Barycentric kOutside[] = {
        {-kBit, 0.5, 0.5},      {0.5, -kBit, 0.5}, {0.5, 0.5, -kBit}, {1.0 + kBit, 0.0, 0.0},
        {0.0, 1.0 + kBit, 0.0}, {kNaN, 0.5, 0.5},  {0.5, 0.5, kNaN}};
    for (const Barycentric& weights : kOutside) {
        EXPECT_FALSE(weights.isInside()) << testing::PrintToString(weights);
    }
}

TEST(Barycentric, HasNothingInsideAFlatTriangle) {
    for (const Vec2 p : {Vec2(1.0, 1.0), Vec2(0.0, 0.0), Vec2(5.0, -2.0)}) {
        const Barycentric weights(Vec2(0.0, 0.0), Vec2(1.0, 1.0), Vec2(2.0, 2.0), p);
        EXPECT_FALSE(std::isfinite(weights.u));
        EXPECT_FALSE(weights.isInside());
    }
}

} // namespace Kerovane::Tesselune
