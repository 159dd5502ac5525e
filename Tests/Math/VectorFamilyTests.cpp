#include "Tests/Math/MathTest.h"

#include <functional>

namespace Kerovane::Tesselune {

template <typename Vector>
class VectorFamilyTest : public testing::Test {};

using VectorTypes = testing::Types<Vec2, Vec3, Vec4>;
TYPED_TEST_SUITE(VectorFamilyTest, VectorTypes);

/// Checks operators, named operations and compound assignments with `other`, a vector or a number.
template <typename Vector, typename Other>
void expectArithmetic(const Vector& v, const Other& other) {
    const auto expectEach = [&](auto operation, std::initializer_list<Vector> results) {
        for (const Vector& result : results) {
            for (double Vector::*component : kComponents<Vector>) {
                double operand{};
                if constexpr (std::is_same_v<Other, double>) {
                    operand = other;
                } else {
                    operand = other.*component;
                }
                EXPECT_EQ(result.*component, operation(v.*component, operand));
            }
        }
    };
    const auto changed = [&](auto change) { return after(v, change); };
    expectEach(std::plus(), {v + other, changed([&](auto& a) { a += other; }),
                             changed([&](auto& a) { a.add(other); })});
    expectEach(std::minus(), {v - other, changed([&](auto& a) { a -= other; }),
                              changed([&](auto& a) { a.sub(other); })});
    expectEach(std::multiplies(), {v * other, changed([&](auto& a) { a *= other; }),
                                   changed([&](auto& a) { a.mult(other); })});
    expectEach(std::divides(), {v / other, changed([&](auto& a) { a /= other; }),
                                changed([&](auto& a) { a.divide(other); })});
}

TYPED_TEST(VectorFamilyTest, ComputesByComponentInEveryForm) {
    Random random;
    auto v = random.any<TypeParam>();
    expectArithmetic(v, random.any<TypeParam>());
    expectArithmetic(v, random.number());
    expectArithmetic(v, v);
    EXPECT_TRUE((v + v.negate()).isZero());
    const auto& itself = v;
    v /= itself;
    EXPECT_SAME(v, TypeParam() + 1.0) << "it may be its own operand";
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
    for (Random& random : trials()) {
        const auto before = random.any<TypeParam>();
        auto v = before;
        v.setLength(3.0);
        EXPECT_NEAR(v.length(), 3.0, 1e-14);
        EXPECT_NEAR(v.dot(before), 3.0 * before.length(), 1e-12);
        EXPECT_DOUBLE_EQ(v.distance(before), std::abs((v - before).length()));
        v.normalize();
        EXPECT_NEAR(v.lengthSquare(), 1.0, 1e-14);
    }
    TypeParam v;
    TypeParam along;
    along.x = 3.0;
    v.setLength(3.0);
    EXPECT_SAME(v, along) << "zero turns to x";
}

template <typename Vector>
class PointFamilyTest : public testing::Test {};

using PointTypes = testing::Types<Vec2, Vec3>;
TYPED_TEST_SUITE(PointFamilyTest, PointTypes);

TYPED_TEST(PointFamilyTest, ClampsAndInterpolatesByComponent) {
    for (Random& random : trials()) {
        const auto v = random.any<TypeParam>();
        const auto low = random.any<TypeParam>();
        const auto high = random.any<TypeParam>(); // may be below `low`
        const TypeParam least = after(v, [&](auto& a) { a.getMin(low); });
        const TypeParam most = after(v, [&](auto& a) { a.getMax(low); });
        const TypeParam clamped = after(v, [&](auto& a) { a.clamp(low, high); });
        const TypeParam mixed = TypeParam::lerp(low, high, 0.25);
        for (double TypeParam::*i : kComponents<TypeParam>) {
            EXPECT_EQ(least.*i, std::min(v.*i, low.*i));
            EXPECT_EQ(most.*i, std::max(v.*i, low.*i));
            EXPECT_EQ(clamped.*i, v.*i < low.*i ? low.*i : std::min(v.*i, high.*i));
            EXPECT_NEAR(mixed.*i, std::lerp(low.*i, high.*i, 0.25), 1e-14);
        }
    }
}

TEST(Arrays, AreReadAndWrittenAtAnOffset) {
    const double numbersOfAll[] = {1.0, 2.0, 3.0, 4.0, 5.0};
    Vec2 two;
    two.set(Vec2(8.0, 9.0));
    EXPECT_SAME(two, Vec2(8.0, 9.0));
    two.fromArray(numbersOfAll, 1);
    two.fromArray(nullptr, 1);
    EXPECT_SAME(two, Vec2(2.0, 3.0));
    double array[6] = {};
    Vec3 three;
    three.fromArray(numbersOfAll, 1);
    three.toArray(array, 2);
    EXPECT_EQ(Numbers(std::begin(array), std::end(array)), (Numbers{0.0, 0.0, 2.0, 3.0, 4.0, 0.0}));
    Quaternion four;
    four.setWithArray(numbersOfAll, 1);
    four.toArray(array, 2);
    EXPECT_EQ(Numbers(std::begin(array), std::end(array)), (Numbers{0.0, 0.0, 2.0, 3.0, 4.0, 5.0}));
}

} // namespace Kerovane::Tesselune
