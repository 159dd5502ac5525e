#include "Tests/Math/MathTest.h"

#include <bit>

namespace Kerovane::Tesselune {

template <typename Value>
class EqualityTest : public testing::Test {};

using ComparedByNumber = testing::Types<Vec2, Vec3, Mat4, Affine, Rect, Box3, Color>;
TYPED_TEST_SUITE(EqualityTest, ComparedByNumber);

TYPED_TEST(EqualityTest, ToleratesTheLibrarysEpsilonInEachNumber) {
    std::array<double, sizeof(TypeParam) / sizeof(double)> stored{};
    const auto zero = std::bit_cast<TypeParam>(stored);
    for (double& number : stored) {
        for (const double beyond : {1.1e-12, -1.1e-12}) {
            number = beyond;
            EXPECT_TRUE(std::bit_cast<TypeParam>(stored) != zero) << &number - stored.data();
        }
        // Left so for the next numbers: by distance these would add up.
        for (const double within : {1e-12, -1e-12}) {
            number = within;
            EXPECT_TRUE(std::bit_cast<TypeParam>(stored) == zero) << &number - stored.data();
        }
    }
}

TEST(Equality, OfVec4IsByDistanceAndStrict) {
    EXPECT_TRUE(Vec4(5e-13, 0.0, 0.0, 0.0) == Vec4());
    EXPECT_TRUE(Vec4(1e-12, 0.0, 0.0, 0.0) != Vec4());
    EXPECT_TRUE(Vec4(6e-13, 6e-13, 6e-13, 0.0) != Vec4());
}

TEST(Equality, TakesATolerance) {
    EXPECT_TRUE(Vec2(0.5, -0.5).equal(Vec2(), 0.5));
    EXPECT_FALSE(Vec2(0.5, -0.6).equal(Vec2(), 0.5));
    EXPECT_TRUE(Vec3(0.5, -0.5, 0.5).equal(Vec3(), 0.5));
    EXPECT_FALSE(Vec3(0.5, -0.5, 0.6).equal(Vec3(), 0.5));
    EXPECT_FALSE(Vec4(0.5, 0.0, 0.0, 0.0).equal(Vec4(), 0.5));
    EXPECT_TRUE(Vec4(0.49, 0.0, 0.0, 0.0).equal(Vec4(), 0.5));
}

} // namespace Kerovane::Tesselune
