#include "Tests/Math/MathTest.h"

#include <functional>

namespace Kerovane::Tesselune {

template <typename Vector>
class VectorFamilyTest : public testing::Test {};

using VectorTypes = testing::Types<Vec2, Vec3, Vec4>;
TYPED_TEST_SUITE(VectorFamilyTest, VectorTypes);

/// Checks the spellings of one operation with `other`, a vector or a number, where `expected` says
/// what it gives for one component.
template <typename Vector, typename Other, typename Expected, typename... Spellings>
void checkSpellings(const Vector& v, const Other& other, Expected expected,
                    Spellings... spellings) {
    Vector result;
    for (double Vector::*component : kComponents<Vector>) {
        if constexpr (std::is_same_v<Other, double>) {
            result.*component = expected(v.*component, other);
        } else {
            result.*component = expected(v.*component, other.*component);
        }
    }
    const auto check = [&](auto spelling) {
        Vector changed = v;
        spelling(changed, other);
        EXPECT_TRUE(same(changed, result));
    };
    (check(spellings), ...);
}

TYPED_TEST(VectorFamilyTest, WorksComponentByComponentInEverySpelling) {
    Random random;
    const auto v = random.vector<TypeParam>();
    const auto checkAll = [&](const auto& other) {
        checkSpellings(
            v, other, std::plus(), [](auto& a, const auto& b) { a.add(b); },
            [](auto& a, const auto& b) { a += b; }, [](auto& a, const auto& b) { a = a + b; });
        checkSpellings(
            v, other, std::minus(), [](auto& a, const auto& b) { a.sub(b); },
            [](auto& a, const auto& b) { a -= b; }, [](auto& a, const auto& b) { a = a - b; });
        checkSpellings(
            v, other, std::multiplies(), [](auto& a, const auto& b) { a.mult(b); },
            [](auto& a, const auto& b) { a *= b; }, [](auto& a, const auto& b) { a = a * b; });
        checkSpellings(
            v, other, std::divides(), [](auto& a, const auto& b) { a.divide(b); },
            [](auto& a, const auto& b) { a /= b; }, [](auto& a, const auto& b) { a = a / b; });
    };
    checkAll(random.vector<TypeParam>());
    checkAll(random.number());
}

TYPED_TEST(VectorFamilyTest, MayBeItsOwnOperand) {
    Random random;
    auto v = random.vector<TypeParam>();
    const auto& itself = v;
    v /= itself;
    EXPECT_TRUE(same(v, TypeParam() + 1.0));
}

TYPED_TEST(VectorFamilyTest, NegatesACopy) {
    Random random;
    const auto v = random.vector<TypeParam>();
    EXPECT_TRUE((v + v.negate()).isZero());
    EXPECT_FALSE(v.isZero());
}

TYPED_TEST(VectorFamilyTest, IsZeroOnlyExactly) {
    for (double TypeParam::*component : kComponents<TypeParam>) {
        TypeParam v;
        v.*component = -0.0;
        EXPECT_TRUE(v.isZero());
        v.*component = std::numeric_limits<double>::denorm_min();
        EXPECT_FALSE(v.isZero());
    }
}

TYPED_TEST(VectorFamilyTest, KeepsItsDirectionAtANewLength) {
    Random random;
    for (int i = 0; i < kTrials; ++i) {
        const auto before = random.vector<TypeParam>();
        auto v = before;
        v.setLength(3.0);
        EXPECT_NEAR(v.length(), 3.0, 1e-14);
        EXPECT_NEAR(v.dot(before), 3.0 * before.length(), 1e-12);
        EXPECT_DOUBLE_EQ(v.distance(before), std::abs((v - before).length()));
        v.normalize();
        EXPECT_NEAR(v.lengthSquare(), 1.0, 1e-14);
    }
}

TYPED_TEST(VectorFamilyTest, PointsAlongXWhenZeroGetsALength) {
    TypeParam v;
    TypeParam along;
    along.x = 3.0;
    v.setLength(3.0);
    EXPECT_TRUE(same(v, along));
    along.x = 1.0;
    v.setZero();
    v.normalize();
    EXPECT_TRUE(same(v, along));
}

} // namespace Kerovane::Tesselune
