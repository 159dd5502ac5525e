#include "Tests/Math/MathTest.h"

namespace Kerovane::Tesselune {

TEST(RectEdges, MoveTheRectangleOrChangeItsSize) {
    using Change = void (*)(Rect&);
    const Table<Change, Rect> cases = {
        {[](Rect& r) { r.setLeft(0.0); }, {0.0, 2.0, 10.0, 20.0}},
        {[](Rect& r) { r.setTop(0.0); }, {1.0, 0.0, 10.0, 20.0}},
        {[](Rect& r) { r.setRight(0.0); }, {1.0, 2.0, -1.0, 20.0}},
        {[](Rect& r) { r.setBottom(4.5F); }, {1.0, 2.0, 10.0, 2.5}},
        {[](Rect& r) { r.setPoint(Vec2(5.0, 6.0)); }, {5.0, 6.0, 10.0, 20.0}},
        {[](Rect& r) { r.setSize(Vec2(5.0, 6.0)); }, {1.0, 2.0, 5.0, 6.0}},
        {[](Rect& r) { r.setCenter(Vec2(0.0, 0.0)); }, {-5.0, -10.0, 10.0, 20.0}},
    };
    for (const auto& [change, result] : cases) {
        Rect r(Vec2(1.0, 2.0), Vec2(10.0, 20.0));
        change(r);
        EXPECT_SAME(r, result);
    }
}

TEST(RectEdges, GiveCornersAndCentre) {
    constexpr Rect r(1.0, 2.0, 10.0, 20.0);
    EXPECT_SAME(r.getTopRight(), Vec2(11.0, 2.0));
    EXPECT_SAME(r.getBottomLeft(), Vec2(1.0, 22.0));
    EXPECT_EQ(r.getArea(), 200.0);
}

TEST(RectRelations, ContainIntersectAndTouchAtSharedEdges) {
    constexpr Rect r(0.0, 0.0, 10.0, 10.0);
    const Table<Rect, bool, bool, bool> cases = {
        {{0.0, 0.0, 10.0, 10.0}, true, true, true},   {{2.0, 2.0, 8.0, 8.0}, true, true, true},
        {{2.0, 2.0, 8.1, 1.0}, false, true, true},    {{2.0, -0.1, 1.0, 1.0}, false, true, true},
        {{10.0, 0.0, 5.0, 5.0}, false, false, true},  {{-5.0, 0.0, 5.0, 5.0}, false, false, true},
        {{0.0, -5.0, 5.0, 5.0}, false, false, true},  {{10.0, 10.0, 5.0, 5.0}, false, false, true},
        {{10.1, 0.0, 5.0, 5.0}, false, false, false}, {{0.0, 10.1, 5.0, 5.0}, false, false, false},
    };
    for (const auto& [other, contains, intersects, touches] : cases) {
        SCOPED_TRACE(testing::PrintToString(other));
        EXPECT_EQ(r.containsRect(other), contains);
        EXPECT_EQ(r.intersects(other), intersects);
        EXPECT_EQ(other.intersects(r), intersects);
        EXPECT_EQ(r.touches(other), touches);
        EXPECT_EQ(!r.intersect(other).isEmpty(), intersects);
    }
    for (const Vec2 corner :
         {r.getTopLeft(), r.getTopRight(), r.getBottomLeft(), r.getBottomRight()}) {
        EXPECT_TRUE(r.containsPoint(corner));
        EXPECT_FALSE(r.containsPoint(r.getCenter() + (corner - r.getCenter()) * 1.001));
    }
}

TEST(RectCombination, IntersectsUnitesExpandsAndScales) {
    constexpr Rect r(0.0, 0.0, 10.0, 10.0);
    EXPECT_SAME(r.intersect({5.0, -5.0, 10.0, 10.0}), Rect(5.0, 0.0, 5.0, 5.0));
    EXPECT_SAME(r.intersect({20.0, 20.0, 5.0, 5.0}), Rect(20.0, 20.0, -10.0, -10.0));
    EXPECT_SAME(r.unite({20.0, -5.0, 5.0, 5.0}), Rect(0.0, -5.0, 25.0, 15.0));
    EXPECT_SAME(r.unite({20.0, 20.0, 0.0, 0.0}), Rect(0.0, 0.0, 20.0, 20.0)) << "empty ones too";
    EXPECT_SAME(r.expand({1.0, -2.0}), Rect(-1.0, 2.0, 12.0, 6.0));
    EXPECT_SAME(r.expand(0.5F), Rect(-0.5, -0.5, 11.0, 11.0));
    EXPECT_SAME(r.scale(2.0F, 2.0F), Rect(-10.0, -10.0, 30.0, 30.0));
    EXPECT_SAME(r.scale(1.0F, 1.0F), r);
    EXPECT_SAME(r.scale(0.5F, 0.5F), Rect(5.0, 5.0, 0.0, 0.0));
    EXPECT_TRUE(Rect(0.0, 0.0, 0.0, 1.0).isEmpty() && Rect(0.0, 0.0, 1.0, -1.0).isEmpty());
}

TEST(RectInclusion, GrowsOnlyTowardsThePoint) {
    constexpr Rect r(0.1, 0.0, 0.2, 10.0); // a width computed anew, (0.1 + 0.2) - 0.1, is not 0.2
    const Table<Vec2, Rect> cases = {
        {{0.2, 5.0}, {0.1, 0.0, 0.2, 10.0}},   {{0.2, 12.0}, {0.1, 0.0, 0.2, 12.0}},
        {{0.2, -2.0}, {0.1, -2.0, 0.2, 12.0}}, {{-1.9, 10.0}, {-1.9, 0.0, 2.2, 10.0}},
        {{2.1, 0.0}, {0.1, 0.0, 2.0, 10.0}},
    };
    for (const auto& [p, result] : cases) {
        EXPECT_CLOSE(r.getInclude(p), result, 1e-15);
        EXPECT_SAME(after(r, [p = p](Rect& grown) { grown.include(p); }), r.getInclude(p));
    }
    EXPECT_SAME(r.getInclude({0.2, 12.0}).getSize(), Vec2(0.2, 12.0));
    Rect inverted(0.0, 0.0, -5.0, 1.0);
    inverted.include({-2.0, 0.5});
    EXPECT_TRUE(inverted.containsPoint({-2.0, 0.5}));
}

constexpr double kLargest = 1.7976931348623157e308;
constexpr double kSmallest = 2.2250738585072014e-308;

TEST(Box3Emptiness, IsDecidedByTheCorners) {
    EXPECT_SAME(Box3().min, Vec3(kLargest));
    EXPECT_SAME(Box3().max, Vec3(kSmallest));
    const Table<Box3, bool> cases = {
        {Box3(), true},
        {{Vec3(0.0), Vec3(0.0)}, true},
        {{Vec3(1.0), Vec3(1.0)}, false},
        {{{0.0, 0.0, 1.0}, {0.0, 0.0, 1.0}}, false},
        {{{0.0, 0.0, 1.0}, {1.0, 1.0, 0.9}}, true},
        {{{1.1, 0.0, 0.0}, {1.0, 1.0, 1.0}}, true},
    };
    for (const auto& [box, isEmpty] : cases) {
        EXPECT_EQ(box.isEmpty(), isEmpty) << testing::PrintToString(box);
    }
}

TEST(Box3Growth, StartsFromTheEmptyBox) {
    Box3 box;
    const Vec3 negative(-1.0, -2.0, -3.0);
    box.expandByPoint(negative);
    EXPECT_SAME(box, Box3(negative, Vec3(kSmallest))) << "no negative value exceeds the most";
    box.setFromPoints(&negative, 1);
    EXPECT_SAME(box, Box3(negative, negative));

    const Vec3 points[] = {{1.0, 5.0, -3.0}, {-1.0, 6.0, 2.0}, {0.0, 4.0, 0.0}};
    box.setFromPoints(points, 3);
    EXPECT_SAME(box, Box3({-1.0, 4.0, -3.0}, {1.0, 6.0, 2.0}));
    const float numbersOfPoints[] = {1.0F, 5.0F, -3.0F, -1.0F, 6.0F, 2.0F, 0.0F, 4.0F};
    box.setFromArray(numbersOfPoints, 8);
    EXPECT_SAME(box, Box3({-1.0, 5.0, -3.0}, {1.0, 6.0, 2.0}));
    box.setFromArray(numbersOfPoints, -3);
    EXPECT_SAME(box, Box3());
    box.setFromPoints(points, 3);
    box.setFromPoints(points, 0);
    EXPECT_SAME(box, Box3());
    box.setFromPoints(points, 3);
    box.setFromPoints(nullptr, 3);
    EXPECT_SAME(box, Box3());
}

TEST(Box3Shape, ComesFromCentreAndSize) {
    Box3 box;
    box.setFromCenterAndSize({1.0, 2.0, 3.0}, {2.0, 4.0, 6.0});
    EXPECT_SAME(box, Box3({0.0, 0.0, 0.0}, {2.0, 4.0, 6.0}));
    EXPECT_SAME(box.getCenter(), Vec3(1.0, 2.0, 3.0));
    EXPECT_SAME(box.getSize(), Vec3(2.0, 4.0, 6.0));
    EXPECT_SAME(box.getParameter({1.0, 6.0, -6.0}), Vec3(0.5, 1.5, -1.0));
    box.expandByVector({1.0, 0.0, -1.0});
    EXPECT_SAME(box, Box3({-1.0, 0.0, 1.0}, {3.0, 4.0, 5.0}));
    box.expandByScalar(0.5F);
    EXPECT_SAME(box, Box3({-1.5, -0.5, 0.5}, {3.5, 4.5, 5.5}));
    box.translate({0.5, 0.5, 0.5});
    EXPECT_SAME(box, Box3({-1.0, 0.0, 1.0}, {4.0, 5.0, 6.0}));
}

TEST(Box3Relations, AreInclusiveOnAllFaces) {
    constexpr Box3 box({0.0, 0.0, 0.0}, {2.0, 4.0, 6.0});
    for (double Vec3::*axis : kComponents<Vec3>) {
        Vec3 onFace = box.getCenter();
        onFace.*axis = box.max.*axis;
        Vec3 outside = onFace;
        outside.*axis += 1e-9;
        EXPECT_TRUE(box.containsPoint(onFace));
        EXPECT_FALSE(box.containsPoint(outside));
        EXPECT_TRUE(box.containsBox({box.getCenter(), onFace}));
        EXPECT_FALSE(box.containsBox({box.getCenter(), outside}));
        EXPECT_TRUE(box.intersectsBox({onFace, Vec3(9.0)}));
        EXPECT_FALSE(box.intersectsBox({outside, Vec3(9.0)}));

        Vec3 below = box.getCenter();
        below.*axis = -3.0;
        Vec3 clamped = below;
        clamped.*axis = 0.0;
        EXPECT_FALSE(box.containsPoint(below));
        EXPECT_FALSE(box.intersectsBox({Vec3(-9.0), below}));
        EXPECT_SAME(box.clampPoint(below), clamped);
        EXPECT_EQ(box.distanceToPoint(below), 3.0);
    }
    EXPECT_EQ(box.distanceToPoint(box.getCenter()), 0.0);
    EXPECT_EQ(box.distanceToPoint({5.0, 8.0, 6.0}), 5.0);
}

TEST(Box3Combination, WorksInPlace) {
    constexpr Box3 start({0.0, 0.0, 0.0}, {2.0, 4.0, 6.0});
    Box3 box = start;
    box.intersects({{1.0, -1.0, 5.0}, {9.0, 9.0, 9.0}});
    EXPECT_SAME(box, Box3({1.0, 0.0, 5.0}, {2.0, 4.0, 6.0}));
    box.intersects({Vec3(20.0), Vec3(30.0)});
    EXPECT_SAME(box, Box3());

    box = start;
    box.unionBox({{1.0, -1.0, 5.0}, {9.0, 3.0, 5.5}});
    EXPECT_SAME(box, Box3({0.0, -1.0, 0.0}, {9.0, 4.0, 6.0}));
    box.set(Vec3(-2.0), Vec3(-1.0));
    box.unionBox(Box3());
    EXPECT_SAME(box, Box3(Vec3(-2.0), Vec3(kSmallest)));
}

} // namespace Kerovane::Tesselune
