#include "Tests/Math/MathTest.h"

#include "Plugins/Shared/Math/Float.h"

namespace Kerovane::Tesselune {

TEST(FuzzyEqual, HoldsUpToAndAtItsTolerance) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const Table<double, double, double, bool> cases = {
        {1.0, 1.5, 0.5, true},          {1.5, 1.0, 0.5, true},   {1.0, 1.5000001, 0.5, false},
        {1.5000001, 1.0, 0.5, false},   {0.0, -0.0, 0.0, true},  {kNaN, kNaN, 1.0, false},
        {kInfinity, 0.0, 1e300, false}, {0.0, 1.0, -2.0, false},
    };
    for (const auto& [a, b, tolerance, isEqual] : cases) {
        EXPECT_EQ(Float::fuzzyEqual(a, b, tolerance), isEqual) << a << ' ' << b << ' ' << tolerance;
    }
}

TEST(CyclicDifference, TakesTheShorterWayRound) {
    const Table<double, double, double> cases = {
        {350.0, 10.0, -20.0}, {10.0, 350.0, 20.0}, {180.0, 0.0, 180.0}, {0.0, 180.0, -180.0},
        {181.0, 0.0, -179.0}, {0.0, 181.0, 179.0}, {30.0, 10.0, 20.0},
    };
    for (const auto& [a, b, difference] : cases) {
        EXPECT_EQ(cyclicDifference(a, b, 360.0), difference) << a << " from " << b;
    }
}

TEST(Range, SpansAllOrNothingOrWhatIsGiven) {
    static_assert(Range(true).start == 0 && Range(true).end == 2147483647);
    static_assert(Range(false).start == 0 && Range(false).end == 0);
    static_assert(Range(7).start == 7 && Range(7).end == 0);
    static_assert(Range(-3, 5).start == -3 && Range(-3, 5).end == 5);
}

} // namespace Kerovane::Tesselune
