#include "Tests/Math/MathTest.h"

#include "Plugins/Shared/Math/Float.h"

namespace Kerovane::Tesselune {

TEST(FuzzyEqual, HoldsUpToAndAtItsTolerance) {
    struct Case {
        double a, b, tolerance;
        bool isEqual;
    };
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr Case kCases[] = {
        {1.0, 1.5, 0.5, true},          {1.5, 1.0, 0.5, true},   {1.0, 1.5000001, 0.5, false},
        {1.5000001, 1.0, 0.5, false},   {0.0, -0.0, 0.0, true},  {kNaN, kNaN, 1.0, false},
        {kInfinity, 0.0, 1e300, false}, {0.0, 1.0, -2.0, false},
    };
    for (const auto& [a, b, tolerance, isEqual] : kCases) {
        EXPECT_EQ(Float::fuzzyEqual(a, b, tolerance), isEqual) << a << ' ' << b << ' ' << tolerance;
    }
}

TEST(CyclicDifference, TakesTheShorterWayRound) {
    struct Case {
        double a, b, difference;
    };
    constexpr Case kCases[] = {
        {350.0, 10.0, -20.0}, {10.0, 350.0, 20.0}, {180.0, 0.0, 180.0}, {0.0, 180.0, -180.0},
        {181.0, 0.0, -179.0}, {0.0, 181.0, 179.0}, {30.0, 10.0, 20.0},
    };
    for (const auto& [a, b, difference] : kCases) {
        EXPECT_EQ(cyclicDifference(a, b, 360.0), difference) << a << " from " << b;
    }
}

TEST(Range, SpansAllOrNothingOrWhatIsGiven) {
    struct Case {
        Range range;
        int start, end;
    };
    constexpr Case kCases[] = {{Range(true), 0, 2147483647},
                               {Range(false), 0, 0},
                               {Range(7), 7, 0},
                               {Range(-3, 5), -3, 5}};
    for (const auto& [range, start, end] : kCases) {
        EXPECT_EQ(range.start, start);
        EXPECT_EQ(range.end, end);
    }
}

} // namespace Kerovane::Tesselune
