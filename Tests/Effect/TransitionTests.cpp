#include "Tests/Effect/EffectFixture.h"
#include "Tests/Effect/MosaicModel.h"

#include <algorithm>
#include <functional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace Kerovane::TestSupport {

namespace {

enum class Transition { Linear = 1, RadialIn = 2, RadialOut = 3 };

constexpr int kWidth = 160;
constexpr int kHeight = 100;
constexpr Point kPicture = {kWidth, kHeight};
constexpr int kSize = 10; // pixels; no cell's centre is then the picture's centre
constexpr int kColumns = kWidth / kSize;
constexpr int kRows = kHeight / kSize;

/// Returns the clamped centre of a cell, which decides when the cell is removed.
Point CentreOf(std::size_t cell) {
    const std::size_t column = cell % kColumns;
    const std::size_t row = cell / kColumns;
    return Restrained(
        {(static_cast<double>(column) + 0.5) * kSize, (static_cast<double>(row) + 0.5) * kSize},
        kPicture);
}

/** A grid of cells, some of which a frame removes. */
class Removal : public EveryModule {
protected:
    Removal() { set("Size", kSize); }

    void setTransition(Transition transition, int feather) {
        set("Transition Type", static_cast<double>(transition));
        set("Feather", feather);
    }

    /// Renders a frame and returns which cells it keeps, row by row. Expects cells to be kept or
    /// removed as a whole.
    std::vector<bool> keptCells() {
        const Host::World output = rendered(mInput);
        std::vector<bool> kept;
        for (int row = 0; row < kRows; ++row) {
            for (int column = 0; column < kColumns; ++column) {
                kept.push_back(PixelOf(output, column * kSize, row * kSize).alpha != 0);
            }
        }
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x) {
                const int cell = y / kSize * kColumns + x / kSize;
                EXPECT_EQ(PixelOf(output, x, y).alpha,
                          kept[static_cast<std::size_t>(cell)] ? 255 : 0)
                    << x << ", " << y;
            }
        }
        return kept;
    }

    long keptCount() { return std::ranges::count(keptCells(), true); }

    Host::World mInput = SmoothPicture(kWidth, kHeight, true);
};

constexpr long kAll = long{kColumns} * kRows;

TEST_EVERY_MODULE(Removal);

TEST_P(Removal, StartsWithAllCellsAndEndsWithNone) {
    for (const Transition transition :
         {Transition::Linear, Transition::RadialIn, Transition::RadialOut}) {
        for (const int feather : {0, 40}) {
            for (const double direction : {0.0, 33.0, 90.0, 200.0, -45.0, 450.0}) {
                setTransition(transition, feather);
                set("Direction", direction);
                set("Transition Progress", 0);
                EXPECT_EQ(keptCount(), kAll) << static_cast<int>(transition) << " " << feather;
                set("Transition Progress", 100);
                EXPECT_EQ(keptCount(), 0) << static_cast<int>(transition) << " " << feather;
            }
        }
    }
}

TEST_P(Removal, CellAtTheCentreGoesFirstOrLast) {
    const Host::World input = SmoothPicture(150, 90, true);
    const auto keeps = [&](Transition transition, int percent, int x, int y) {
        setTransition(transition, 0);
        set("Transition Progress", percent);
        return PixelOf(rendered(input), x, y).alpha != 0;
    };
    EXPECT_FALSE(keeps(Transition::RadialOut, 0, 75, 45)) << "the hole begins there";
    EXPECT_TRUE(keeps(Transition::RadialOut, 0, 65, 45));
    EXPECT_TRUE(keeps(Transition::RadialIn, 100, 75, 45)) << "the last cell stays";
    EXPECT_FALSE(keeps(Transition::RadialIn, 100, 65, 45));
}

TEST_P(Removal, NeverBringsACellBack) {
    const std::tuple<std::string, Transition, int> cases[] = {
        {"Dissolve", Transition::Linear, 0},
        {"Transition Progress", Transition::Linear, 0},
        {"Transition Progress", Transition::Linear, 60},
        {"Transition Progress", Transition::RadialIn, 0},
        {"Transition Progress", Transition::RadialIn, 60},
        {"Transition Progress", Transition::RadialOut, 0},
        {"Transition Progress", Transition::RadialOut, 60},
    };
    set("Direction", 30);
    for (const auto& [parameter, transition, feather] : cases) {
        setTransition(transition, feather);
        std::vector<bool> before(kAll, true);
        int steps = 0;
        for (int percent = 0; percent <= 100; percent += 5) {
            set(parameter, percent);
            const std::vector<bool> kept = keptCells();
            for (std::size_t cell = 0; cell < kept.size(); ++cell) {
                EXPECT_FALSE(kept[cell] && !before[cell])
                    << parameter << " " << percent << " " << static_cast<int>(transition);
            }
            steps += kept != before ? 1 : 0;
            before = kept;
        }
        EXPECT_GT(steps, 10) << "it goes bit by bit";
        set(parameter, 0);
    }
}

TEST_P(Removal, SharpSweepsMatchGeometry) {
    for (const double direction :
         {0.0, 45.0, 90.0, 135.0, 180.0, 225.0, 270.0, 300.0, -90.0, 360.0, 450.0, -720.5}) {
        set("Direction", direction);
        for (const double percent : {20.0, 50.0, 80.0}) {
            set("Transition Progress", percent);
            const double progress = percent / 100.0;
            // The position of a cell's centre on the sweep minus the sweep's progress. The cell is
            // kept if the difference is positive.
            using Place = std::function<double(const Point&)>;
            const std::pair<Transition, Place> cases[] = {
                {Transition::Linear,
                 [&](const Point& p) { return LinearPlace(p, kPicture, direction) - progress; }},
                {Transition::RadialOut,
                 [&](const Point& p) { return RadialPlace(p, kPicture) - progress; }},
                {Transition::RadialIn,
                 [&](const Point& p) { return 1.0 - progress - RadialPlace(p, kPicture); }},
            };
            for (const auto& [transition, place] : cases) {
                setTransition(transition, 0);
                const std::vector<bool> kept = keptCells();
                for (std::size_t cell = 0; cell < kept.size(); ++cell) {
                    const double ahead = place(CentreOf(cell));
                    if (std::abs(ahead) > 1e-5) {
                        EXPECT_EQ(kept[cell], ahead > 0)
                            << static_cast<int>(transition) << " at " << direction << " degrees, "
                            << percent << " %, cell " << cell;
                    }
                }
            }
        }
    }
}

TEST_P(Removal, FraysTheEdgeOverTheFeatherAndNoFurther) {
    const double feather = 60;
    set("Direction", 0);
    setTransition(Transition::Linear, static_cast<int>(feather));
    int ragged = 0;
    for (const double percent : {30.0, 50.0, 70.0}) {
        set("Transition Progress", percent);
        const double front = percent / 100.0 * (kWidth + feather);
        const std::vector<bool> kept = keptCells();
        bool keptInBand = false;
        bool removedInBand = false;
        for (std::size_t cell = 0; cell < kept.size(); ++cell) {
            const double place = CentreOf(cell).x;
            if (place > front) {
                EXPECT_TRUE(kept[cell]) << "the front has not come there";
            } else if (place + feather < front) {
                EXPECT_FALSE(kept[cell]) << "the band has passed";
            } else {
                keptInBand |= kept[cell];
                removedInBand |= !kept[cell];
            }
        }
        ragged += keptInBand && removedInBand ? 1 : 0;
    }
    EXPECT_EQ(ragged, 3);
}

TEST_P(Removal, DissolvedShareDependsOnItsSeed) {
    set("Dissolve", 50);
    const std::vector<bool> kept = keptCells();
    EXPECT_NEAR(static_cast<double>(std::ranges::count(kept, true)), kAll / 2.0, kAll * 0.15);
    set("Size Random Seed", 5);
    EXPECT_EQ(keptCells(), kept);
    set("Dissolve Random Seed", 5);
    EXPECT_NE(keptCells(), kept);
}

TEST_P(Removal, ShowsThePictureIfAlphaIsNotUsed) {
    set("Use Alpha", 0);
    set("Dissolve", 100);
    EXPECT_LE(LargestDifference(rendered(mInput), mInput), 1);
    set("Dissolve", 0);
    const Host::World whole = rendered(mInput);
    set("Dissolve", 50);
    const Host::World output = rendered(mInput);
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            const PF_Pixel8 pixel = PixelOf(output, x, y);
            const auto isNear = [&](const PF_Pixel8& other) {
                return std::abs(pixel.red - other.red) <= 1 &&
                       std::abs(pixel.green - other.green) <= 1;
            };
            ASSERT_TRUE(isNear(PixelOf(whole, x, y)) || isNear(PixelOf(mInput, x, y)));
        }
    }
}

TEST_P(Removal, FeatherBelowAPixelIsASharpEdge) {
    set("Direction", 20);
    set("Transition Progress", 50);
    setTransition(Transition::Linear, 0);
    const std::vector<bool> plain = keptCells();
    setTransition(Transition::Linear, 3);
    set("Size", kSize * 4);
    mSession.inData().downsample_x.den = 4;
    EXPECT_EQ(keptCells(), plain);
}

} // namespace

} // namespace Kerovane::TestSupport
