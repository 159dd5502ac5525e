#include "Tests/Math/MathTest.h"

namespace Kerovane::Tesselune {

namespace {

Eigen::Matrix3d toEigen(const Affine& t) {
    Eigen::Matrix3d m;
    m << t.a, t.c, t.e, t.b, t.d, t.f, 0.0, 0.0, 1.0;
    return m;
}

Affine toAffine(const Eigen::Matrix3d& m) {
    return {m(0, 0), m(1, 0), m(0, 1), m(1, 1), m(0, 2), m(1, 2)};
}

} // namespace

TEST(AffineConstruction, TakesColumnsAndStoresRows) {
    EXPECT_EQ(numbers(Affine(1.0, 2.0, 3.0, 4.0, 5.0, 6.0)),
              (Numbers{1.0, 3.0, 5.0, 2.0, 4.0, 6.0}));
    EXPECT_SAME(Affine(true), Affine(1.0, 0.0, 0.0, 1.0, 0.0, 0.0));
    EXPECT_SAME(Affine(), Affine(true));
    EXPECT_SAME(Affine(false), Affine(0.0, 0.0, 0.0, 0.0, 0.0, 0.0));
    static_assert(!std::is_constructible_v<Affine, double>);
}

TEST(AffineSteps, ReplaceOrConcatenate) {
    using Change = void (*)(Affine&);
    const double tangent = std::tan(30.0 * kPi / 180.0);
    const double cosine = std::cos(kPi / 6.0);
    const Table<Change, Change, Affine> steps = {
        {[](Affine& t) { t.setTranslate(3.0, -4.0); },
         [](Affine& t) { t.translate(3.0, -4.0); },
         {1.0, 0.0, 0.0, 1.0, 3.0, -4.0}},
        {[](Affine& t) { t.setScale(2.0, -0.5); },
         [](Affine& t) { t.scale(2.0, -0.5); },
         {2.0, 0.0, 0.0, -0.5, 0.0, 0.0}},
        {[](Affine& t) { t.setSkewX(30.0); },
         [](Affine& t) { t.skewX(30.0); },
         {1.0, 0.0, tangent, 1.0, 0.0, 0.0}},
        {[](Affine& t) { t.setSkewY(30.0); },
         [](Affine& t) { t.skewY(30.0); },
         {1.0, tangent, 0.0, 1.0, 0.0, 0.0}},
        {[](Affine& t) { t.setRotate(30.0); },
         [](Affine& t) { t.rotate(30.0); },
         {cosine, 0.5, -0.5, cosine, 0.0, 0.0}},
    };
    Random random;
    for (const auto& [replace, concatenate, expected] : steps) {
        const Affine step = after(random.affine(), replace);
        EXPECT_CLOSE(step, expected);
        const Affine before = random.affine();
        EXPECT_CLOSE(after(before, concatenate), toAffine(toEigen(before) * toEigen(step)));
    }
}

TEST(AffineProduct, AppliesTheOtherAfterOrBefore) {
    for (Random& random : trials()) {
        const Affine t = random.affine();
        const Affine o = random.affine();
        EXPECT_CLOSE(after(t, [&](Affine& a) { a.multiply(o); }),
                     toAffine(toEigen(o) * toEigen(t)));
        EXPECT_CLOSE(after(t, [&](Affine& a) { a.premultiply(o); }),
                     toAffine(toEigen(t) * toEigen(o)));
        EXPECT_CLOSE(after(t, [](Affine& a) { a.multiply(a); }), toAffine(toEigen(t) * toEigen(t)));
    }
}

TEST(AffinePoints, MapAlikeInEveryForm) {
    for (Random& random : trials()) {
        const Affine t = random.affine();
        const Vec2 p = random.vec2();
        const Eigen::Vector3d mapped = toEigen(t) * Eigen::Vector3d(p.x, p.y, 1.0);
        const Vec2 expected = t.getTransform(p);
        EXPECT_CLOSE(expected, Vec2(mapped.x(), mapped.y()));
        EXPECT_SAME(after(p, [&](Vec2& q) { t.transform(q); }), expected);
        EXPECT_SAME(after(p, [&](Vec2& q) { t.transform(q.x, q.y); }), expected);
        EXPECT_SAME(after(p, [&](Vec2& q) { t.transform(q.x, q.y, &q.y, &q.x); }),
                    Vec2(expected.y, expected.x));
    }
}

TEST(AffineLayer, MovesTheAnchorToThePosition) {
    for (Random& random : trials()) {
        const Vec2 anchor = random.vec2();
        const Vec2 position = random.vec2();
        const Vec2 scale = random.vec2();
        const double degrees = random.number(-360.0, 360.0);
        const Vec2 p = random.vec2();
        Affine t;
        t.set(anchor, position, scale, degrees);
        EXPECT_CLOSE(t.getTransform(anchor), position, 1e-11);
        Vec2 expected = (p - anchor) * scale;
        expected.rotate(degrees);
        EXPECT_CLOSE(t.getTransform(p), expected + position, 1e-11);
    }
}

TEST(AffineInverse, UndoesTheTransform) {
    for (Random& random : trials()) {
        const Affine t = random.affine();
        Affine result = t.getInverse();
        result.multiply(t);
        EXPECT_CLOSE(result, Affine(), 1e-9);
        Affine inPlace = t;
        EXPECT_TRUE(inPlace.inverse(inPlace));
        EXPECT_SAME(inPlace, t.getInverse());
    }
}

TEST(AffineInverse, RefusesDeterminantsWithinItsCoarseThreshold) {
    const Table<double, bool> cases = {{1e-6, true},     {-1e-6, true}, {0.5e-6, false},
                                       {-0.9e-6, false}, {0.0, false},  {2e-6, true}};
    const Affine untouched(9.0, 9.0, 9.0, 9.0, 9.0, 9.0);
    for (const auto& [determinant, isInvertible] : cases) {
        const Affine t(1.0, 0.0, 0.0, determinant, 5.0, 5.0);
        Affine out = untouched;
        EXPECT_EQ(t.inverse(out), isInvertible) << determinant;
        EXPECT_EQ(out == untouched, !isInvertible) << determinant;
        EXPECT_EQ(t.getInverse() == Affine(), !isInvertible) << determinant;
    }
}

TEST(AffineScale, IsTheMeanOfTheRowsToFourDecimals) {
    const Table<Affine, double> cases = {
        {{1.23456, 0.0, 0.0, 1.23456, 8.0, 9.0}, 1.2346F}, // the float nearest to 1.2346
        {{3.0, 4.0, 0.0, 0.0, 0.0, 0.0}, 3.5F}, // rows of lengths 3 and 4, columns of 5 and 0
        {{0.0, 0.0, 3.0, 4.0, 0.0, 0.0}, 3.5F},
        {{-2.0, 0.0, 0.0, 1.0, 0.0, 0.0}, 1.5F},
    };
    for (const auto& [t, scale] : cases) {
        EXPECT_EQ(t.averageScale(), scale) << testing::PrintToString(t);
    }
}

} // namespace Kerovane::Tesselune
