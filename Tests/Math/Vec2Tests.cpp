#include "Tests/Math/MathTest.h"

namespace Kerovane::Tesselune {

TEST(Vec2Comparison, IsStrictAtTheEdgesOfItsTolerances) {
    EXPECT_TRUE(Vec2::equalWithTolerance(0.0, 0.0, 3.0, 4.0, 5.0001));
    EXPECT_FALSE(Vec2::equalWithTolerance(Vec2(), Vec2(3.0, 4.0), 5.0));
    EXPECT_FALSE(Vec2::equalWithTolerance({1.0, 1.0}, {1.0, 1.0}, 0.0));

    EXPECT_TRUE(Vec2::isDuplicate({1.0, 1.0}, {1.2, 0.8}));
    EXPECT_FALSE(Vec2::isDuplicate({1.0, 1.0}, {1.25, 1.0}));
    EXPECT_FALSE(Vec2::isDuplicate({1.0, 1.0}, {1.0, 0.75}));

    EXPECT_TRUE(Vec2::negligible(-9.9e-13));
    EXPECT_FALSE(Vec2::negligible(1e-12));
    EXPECT_TRUE(Vec2(9.9e-13, -9.9e-13).negligible());
    EXPECT_TRUE(Vec2(9.9e-13, -1e-12).nonNegligible());
}

TEST(Vec2Comparison, FindsParallelsAndRightAnglesAtAnyLength) {
    for (Random& random : trials()) {
        const Vec2 v = random.vec2();
        const double factor = random.number() * 1e6;
        EXPECT_TRUE(v.isCollinear(v * factor));
        EXPECT_TRUE(v.isOrthogonal(v.normal() * factor));
        Vec2 bent = v * factor;
        bent.rotate(1e-9);
        EXPECT_FALSE(v.isCollinear(bent));
        EXPECT_FALSE(v.isOrthogonal(bent.normal()));
    }
    // Catches a dot product computed as x o.x - y o.y, which is zero here.
    EXPECT_FALSE(Vec2(1.0, 1.0).isOrthogonal({1.0, 1.0}));
    EXPECT_TRUE(Vec2(1.0, 1.0).isOrthogonal({1.0, -1.0}));
    EXPECT_TRUE(Vec2().isOrthogonal({1.0, 2.0}) && Vec2().isCollinear({1.0, 2.0}));
}

TEST(Vec2Arithmetic, TakesRemaindersWithTheSignOfTheDividend) {
    EXPECT_SAME(Vec2(5.5, -5.5) % Vec2(2.0, 2.0), Vec2(1.5, -1.5));
    EXPECT_SAME(Vec2(5.5, -5.5).modulo({-2.0, -3.0}), Vec2(1.5, -2.5));
}

TEST(Vec2Arithmetic, FollowsSignsWithZeroAsNotPositive) {
    const auto following = [](const Vec2& model) {
        return after(Vec2(1.0, -2.0), [&](Vec2& v) { v.followSigns(model); });
    };
    EXPECT_SAME(following({5.0, -5.0}), Vec2(1.0, -2.0));
    EXPECT_SAME(following({-5.0, 5.0}), Vec2(-1.0, 2.0));
    EXPECT_SAME(following({0.0, 0.0}), Vec2(-1.0, -2.0));
}

TEST(Vec2Length, LeavesAZeroPairUnchangedUnlikeAVector) {
    const Table<Vec2, Vec2> cases = {{{0.0, 0.0}, {0.0, 0.0}},
                                     {{1e-12, 0.0}, {1e-12, 0.0}},
                                     {{0.0, -2e-12}, {0.0, -1.0}},
                                     {{3.0, 4.0}, {0.6, 0.8}}};
    for (const auto& [before, expected] : cases) {
        const Vec2 v = after(before, [](Vec2& pair) { Vec2::normalize(&pair.x, &pair.y); });
        EXPECT_CLOSE(v, expected, 1e-15);
    }
}

TEST(Vec2Rotation, AgreesWithEigen) {
    for (Random& random : trials()) {
        const double degrees = random.number(-720.0, 720.0);
        const Vec2 v = random.vec2();
        const Vec2 center = random.vec2();
        const Eigen::Vector2d expected =
            Eigen::Rotation2Dd(degrees * kPi / 180.0) * Eigen::Vector2d(v.x, v.y);
        Vec2 rotated = v;
        rotated.rotate(degrees);
        EXPECT_CLOSE(rotated, Vec2(expected.x(), expected.y()), 1e-11);

        const Vec2 aboutCenter = (v + center).rotateRound(degrees, center);
        EXPECT_CLOSE(aboutCenter, rotated + center, 1e-11);
        Vec2 inPlace = v + center;
        inPlace.rotateAround(degrees, center);
        EXPECT_SAME(inPlace, aboutCenter);
    }
}

TEST(Vec2Rotation, ChangesNoBitAtZeroDegrees) {
    const Vec2 v(0.1, 1e-17);
    EXPECT_SAME(v.rotateRound(0.0, {1e6, 1e6}), v);
    EXPECT_FALSE(same(v.rotateRound(360.0, {1e6, 1e6}), v));
}

TEST(Vec2Rotation, UsesAFourteenDigitRadianFactor) {
    Vec2 v(1.0, 0.0);
    v.rotate(180.0);
    EXPECT_NEAR(v.y, 180.0 * (kPi / 180.0 - 0.017453292519943), 1e-15);
    EXPECT_GT(v.y, 1e-14) << "the full constant leaves 1.2e-16";
}

TEST(Vec2Angle, ReadsBackAsItWasSet) {
    for (Random& random : trials()) {
        const double degrees = random.number(-179.9, 179.9);
        const double turn = random.number(-179.9, 179.9);
        Vec2 v = random.vec2();
        const double length = v.length();
        v.setAngle(degrees);
        EXPECT_NEAR(v.getAngle(), degrees, 1e-10);
        EXPECT_NEAR(v.length(), length, 1e-12);
        Vec2 turned = v;
        turned.rotate(turn);
        EXPECT_NEAR(v.angleBetween(turned), turn, 1e-10);
    }
    EXPECT_EQ(Vec2().getAngle(), 0.0);
    EXPECT_EQ(Vec2(-0.0, 0.0).getAngle(), 0.0);
    EXPECT_EQ(Vec2(-1.0, 0.0).getAngle(), 180.0);
}

TEST(Vec2Direction, KnowsItsPerpendiculars) {
    constexpr Vec2 v(3.0, 1.0);
    EXPECT_SAME(v.perpindicularLeft(), Vec2(-1.0, 3.0));
    EXPECT_SAME(v.perpindicularRight(), Vec2(1.0, -3.0));
    EXPECT_SAME(after(v, [](Vec2& turned) { turned.prepen(); }), Vec2(-1.0, 3.0));
    EXPECT_EQ(Vec2::cross(1.0, 2.0, 3.0, 5.0), -1.0);
    EXPECT_EQ(v.slope(), 1.0 / 3.0);
}

TEST(Vec2Direction, CountsZeroAsPositiveForTheQuadrant) {
    const Table<Vec2, int> cases = {{{0.0, 0.0}, 1},   {{-1.0, 0.0}, 2}, {{-1.0, 1.0}, 2},
                                    {{-1.0, -1.0}, 3}, {{0.0, -1.0}, 4}, {{1.0, -1.0}, 4}};
    for (const auto& [v, quadrant] : cases) {
        EXPECT_EQ(v.getQuadrant(), quadrant) << testing::PrintToString(v);
    }
}

TEST(Vec2Direction, TellsOppositeQuadrants) {
    const Table<Vec2, Vec2, bool> cases = {
        {{1.0, 1.0}, {-1.0, -1.0}, true}, // both signs differ
        {{1.0, 0.0}, {-1.0, 0.0}, true},  // x differs, a.y is zero
        {{1.0, 0.0}, {-1.0, 1.0}, true},  // both differ, with a zero
        {{1.0, 1.0}, {-1.0, 1.0}, false}, // y alike
        {{1.0, 1.0}, {1.0, 1.0}, false},  // all alike
        {{1.0, 1.0}, {1.0, -1.0}, false}, // y differs, x alike and not zero
        {{0.0, 1.0}, {0.0, -1.0}, true},  // y differs, x alike at zero
        {{1.0, 0.0}, {1.0, 0.0}, false},  // on one axis, the same way
    };
    for (const auto& [a, b, isOpposite] : cases) {
        EXPECT_EQ(Vec2::oppositeQuadrant(a, b), isOpposite)
            << testing::PrintToString(a) << testing::PrintToString(b);
    }
}

TEST(Vec2Direction, TurnsOutwardOrInward) {
    constexpr Vec2 a(2.0, 1.0);
    constexpr Vec2 b(0.0, 1.0);
    for (const double x : {1.0, 0.0, -1.0}) {
        const Vec2 p(x, 5.0);
        const Vec2 outward = x > 0.0 ? p : p.negate();
        Vec2 turned = p;
        EXPECT_EQ(Vec2::anchorOutward(turned, a, b), x <= 0.0);
        EXPECT_SAME(turned, outward);
        turned = p;
        EXPECT_EQ(Vec2::anchorInward(turned, a, b), x > 0.0);
        EXPECT_SAME(turned, outward.negate());
    }
}

TEST(Vec2Lines, GiveProjectionDistanceAndArea) {
    for (Random& random : trials()) {
        const Vec2 a = random.vec2();
        const Vec2 b = random.vec2();
        const Vec2 p = random.vec2();
        const Vec2 along = (p - a).project(b - a);
        const Vec2 across = p - a - along;
        EXPECT_NEAR(across.dot(b - a), 0.0, 1e-11);
        EXPECT_NEAR(p.distanceToLine(a, b), across.length(), 1e-11);
        EXPECT_NEAR(p.lineProjectionLength(a, b), along.length(), 1e-11);
        EXPECT_NEAR(Vec2::signedArea(a, b, p),
                    (b - a).length() * across.length() * ((b - a).cross(across) > 0.0 ? 1.0 : -1.0),
                    1e-10);
        EXPECT_DOUBLE_EQ(Vec2::distanceSquared(a, b), (b - a).lengthSquare());
    }
    EXPECT_SAME(Vec2(1.0, 2.0).project(Vec2()), Vec2());
    EXPECT_EQ(Vec2(-3.0, 1.0).lineProjectionLength({0.0, 0.0}, {1.0, 0.0}), 3.0);
    EXPECT_TRUE(std::isnan(Vec2(1.0, 2.0).distanceToLine({3.0, 3.0}, {3.0, 3.0})));
}

TEST(Vec2Lines, SeparatePoints) {
    constexpr Vec2 a(0.0, 0.0);
    constexpr Vec2 b(1.0, 0.0);
    EXPECT_TRUE(Vec2::intersecting(a, b, {5.0, 1.0}, {5.0, -1.0})) << "beyond b, on its line";
    EXPECT_FALSE(Vec2::intersecting(a, b, {0.0, 1.0}, {1.0, 1.0}));
    EXPECT_TRUE(Vec2::intersecting(a, b, {0.0, 0.0}, {0.0, 1.0})) << "on the line is not above";
    EXPECT_FALSE(Vec2::intersecting(a, b, {0.0, 0.0}, {0.0, -1.0}));
}

TEST(Vec2Lines, ReportWhereSegmentsIntersect) {
    const Table<Vec2, Vec2, Vec2, Vec2, int, Vec2> cases = {
        {{0.0, 0.0}, {2.0, 2.0}, {0.0, 2.0}, {2.0, 0.0}, 1, {1.0, 1.0}},
        {{0.0, 0.0}, {2.0, 0.0}, {2.0, -1.0}, {2.0, 1.0}, 1, {2.0, 0.0}}, // at the very end of a-b
        {{0.0, 0.0}, {1.0, 0.0}, {2.0, -1.0}, {2.0, 1.0}, 3, {2.0, 0.0}},
        {{0.0, 0.0}, {4.0, 0.0}, {2.0, 1.0}, {2.0, 2.0}, 4, {2.0, 0.0}},
        {{0.0, 0.0}, {1.0, 0.0}, {2.0, 1.0}, {2.0, 2.0}, 5, {2.0, 0.0}},
        {{0.0, 0.0}, {4.0, 0.0}, {1.0, 0.0}, {9.0, 0.0}, 2, {2.0, 0.0}},
        {{0.0, 0.0}, {4.0, 0.0}, {0.0, 1.0}, {4.0, 1.0}, 0, {0.0, 0.0}},
        {{3.0, 3.0}, {3.0, 3.0}, {3.0, 3.0}, {3.0, 3.0}, 2, {3.0, 3.0}},
    };
    for (const auto& [a, b, c, d, result, expected] : cases) {
        Vec2 out(kNaN, kNaN);
        double t = -7.0;
        double u = -7.0;
        EXPECT_EQ(Vec2::intersect(a, b, c, d, out, &t, &u), result);
        EXPECT_SAME(out, expected) << "result " << result;
        if (result == 0 || result == 2) {
            EXPECT_TRUE(t == -7.0 && u == -7.0) << "written at result " << result;
        } else {
            EXPECT_CLOSE(Vec2::lerp(c, d, u), Vec2::lerp(a, b, t));
        }
        EXPECT_EQ(Vec2::intersect(a, b, c, d, out, nullptr, nullptr), result);
    }
}

TEST(Vec2PictureCoordinates, ConvertBetweenCentreAndTopLeftOrigin) {
    constexpr Vec2 size(100.0, 50.0);
    constexpr Vec2 point(10.0, 5.0);
    constexpr Vec2 moved = Vec2::centerToTopLefetPoint(point, size);
    EXPECT_SAME(moved, Vec2(60.0, 20.0));
    EXPECT_SAME(Vec2::topLeftToCenterPoint(moved, size), point);
}

} // namespace Kerovane::Tesselune
