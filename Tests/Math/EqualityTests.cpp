#include "Tests/Math/MathTest.h"

namespace Kerovane::Tesselune {

template <typename Value>
class EqualityTest : public testing::Test {};

using ComparedByNumber = testing::Types<Vec2, Vec3, Mat4, Affine, Rect, Box3, Color>;
TYPED_TEST_SUITE(EqualityTest, ComparedByNumber);

TYPED_TEST(EqualityTest, ToleratesTheLibrarysEpsilonInEachNumber) {
    NumbersOf<TypeParam> stored{};
    const auto zero = std::bit_cast<TypeParam>(stored);
    for (double& number : stored) {
        for (const double beyond : {1.1e-12, -1.1e-12}) {
            number = beyond;
            const auto value = std::bit_cast<TypeParam>(stored);
            EXPECT_TRUE(value != zero && zero != value) << &number - stored.data();
        }
        // Leaves each number's difference in place for the next numbers: a comparison by distance
        // would add the differences up and fail.
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
    EXPECT_TRUE(Vec2(0.5, -0.5).equal(Vec2(), 0.5) && !Vec2(0.5, -0.6).equal(Vec2(), 0.5));
    EXPECT_TRUE(Vec3(0.5, -0.5, 0.5).equal(Vec3(), 0.5));
    EXPECT_FALSE(Vec3(0.5, -0.5, 0.6).equal(Vec3(), 0.5));
    EXPECT_FALSE(Vec4(0.5, 0.0, 0.0, 0.0).equal(Vec4(), 0.5));
}

TEST(Equality, OfEulerAnglesIncludesTheOrder) {
    const Euler e(1.0, 2.0, 3.0, Euler::OrderXYZ);
    EXPECT_TRUE(e == Euler(1.0, 2.0 + 9e-13, 3.0, Euler::OrderXYZ));
    EXPECT_TRUE(e != Euler(1.0, 2.0, 3.0 + 2e-12, Euler::OrderXYZ));
    EXPECT_TRUE(e != Euler(1.0, 2.0, 3.0, Euler::OrderYZX));
}

TEST(Equality, OfQuaternionsIsExact) {
    const Quaternion q(1.0, 2.0, 3.0, 4.0);
    EXPECT_TRUE(q == Quaternion(1.0, 2.0, 3.0, 4.0));
    EXPECT_TRUE(q != Quaternion(1.0, std::nextafter(2.0, 9.0), 3.0, 4.0));
}

} // namespace Kerovane::Tesselune
