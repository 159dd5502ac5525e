#include "Tests/Effect/EffectFixture.h"
#include "Tests/Effect/MosaicModel.h"

#include <map>
#include <optional>
#include <ostream>
#include <tuple>
#include <vector>

namespace Kerovane::TestSupport {

namespace {

/// Tolerance in 8-bit levels: half a level for the rounding of the colour, and half because a
/// position between texels may round either way.
constexpr double kLevels = 1.01;

bool Shows(const PF_Pixel8& pixel, const Point& reference, const Point& picture) {
    const Point color = PositionColor(reference, picture);
    return std::abs(pixel.red - color.x) <= kLevels && std::abs(pixel.green - color.y) <= kLevels;
}

class Cells : public EveryModule {
protected:
    void setShape(Shape shape) { set("Shape Type", static_cast<double>(shape)); }
};

TEST_EVERY_MODULE(Cells);

TEST_P(Cells, KeepTheirBordersAndColoursAtEveryRatio) {
    const std::tuple<Shape, int, double> cases[] = {
        {Shape::Square, 10, 1.0},   {Shape::Square, 7, 1.0},    {Shape::Square, 10, 0.55},
        {Shape::Square, 9, 2.3},    {Shape::Square, 3, 0.5},    {Shape::Square, 300, 1.0},
        {Shape::Triangle, 10, 1.0}, {Shape::Triangle, 13, 1.0}, {Shape::Triangle, 16, 0.5},
        {Shape::Triangle, 9, 2.3},  {Shape::Triangle, 40, 1.7}, {Shape::Triangle, 300, 1.0},
    };
    const Point picture = {200, 120};
    const Host::World input = PositionPicture(200, 120);
    for (const auto& [shape, size, ratio] : cases) {
        setShape(shape);
        set("Size", size);
        set("Ratio", ratio);
        const Host::World output = rendered(input);
        int wrong = 0;
        int checked = 0;
        for (int y = 0; y < 120; ++y) {
            for (int x = 0; x < 200; ++x) {
                const Point cellSize = {static_cast<float>(ratio) * static_cast<float>(size),
                                        static_cast<double>(size)};
                const Cell cell = CellOf(shape, x, y, cellSize);
                // Borders are exact only if single precision holds the cells' sides exactly.
                const bool isExact = std::fmod(ratio, 0.5) == 0.0;
                if (!isExact && cell.borderDistance < 1e-4) {
                    continue;
                }
                ++checked;
                wrong += Shows(PixelOf(output, x, y), cell.reference, picture) ? 0 : 1;
            }
        }
        EXPECT_EQ(wrong, 0) << "size " << size << " ratio " << ratio << " shape "
                            << static_cast<int>(shape);
        EXPECT_GT(checked, 200 * 120 * 9 / 10);
    }
}

/// A rung is one of the sizes that a cell may have: rung 0 is the normal size `size`, and each
/// further rung doubles it, up to rung `levels`. Counts the pixels in cells of each rung. Expects
/// every pixel to belong to one rung, and all pixels of a cell to the same rung.
std::map<int, int> PixelsByRung(const Host::World& output, Shape shape, int size, int levels) {
    const Point picture = {static_cast<double>(output.width()),
                           static_cast<double>(output.height())};
    std::map<int, int> pixels;
    std::map<std::vector<long>, int> rungOfCell;
    for (int y = 0; y < output.height(); ++y) {
        for (int x = 0; x < output.width(); ++x) {
            std::optional<int> found;
            for (int rung = 0; rung <= levels; ++rung) {
                const double side = std::ldexp(size, rung);
                const Cell cell = CellOf(shape, x, y, {side, side});
                if (Shows(PixelOf(output, x, y), cell.reference, picture)) {
                    EXPECT_FALSE(found.has_value()) << "two rungs at " << x << ", " << y;
                    found = rung;
                }
            }
            if (!found) {
                ADD_FAILURE() << "no rung has the colour at " << x << ", " << y;
                return pixels;
            }
            ++pixels[*found];
            // A cell that overlapped a cell of another rung would contain pixels of both.
            for (int rung = *found; rung <= levels; ++rung) {
                const double side = std::ldexp(size, rung);
                const double shear = shape == Shape::Triangle ? 0.5 : 0.0;
                const std::vector<long> tile = {rung,
                                                std::lround(std::floor((x + shear * y) / side)),
                                                std::lround(std::floor(y / side))};
                const bool covers = rung == *found;
                const auto [known, isNew] = rungOfCell.try_emplace(tile, covers ? 1 : 0);
                EXPECT_EQ(known->second, covers ? 1 : 0) << "at " << x << ", " << y;
            }
        }
    }
    return pixels;
}

TEST_P(Cells, RandomSizesAreOnTheLadderAndNeverOverlap) {
    // The picture is a multiple of the largest cell, so no cell is cut and each colour identifies
    // its cell.
    const Host::World input = PositionPicture(256, 192);
    for (const int levels : {1, 2, 3}) {
        const int size = 64 >> levels;
        set("Size", size);
        set("Size Level", levels);
        std::map<int, int> total;
        for (const int seed : {0, 1, 2, 17, 4999}) {
            set("Size Random", 100);
            set("Size Random Seed", seed);
            for (const auto& [rung, pixels] :
                 PixelsByRung(rendered(input), Shape::Square, size, levels)) {
                total[rung] += pixels;
            }
        }
        EXPECT_EQ(total.size(), static_cast<std::size_t>(levels) + 1) << "all rungs occur";
    }
}

TEST_P(Cells, LargestSizeNeedsMoreThanHalfOfSizeRandom) {
    const Host::World input = PositionPicture(256, 192);
    set("Size", 16);
    set("Size Level", 2);
    std::map<int, int> largest;
    for (const int percent : {0, 25, 50, 100}) {
        set("Size Random", percent);
        for (int seed = 0; seed < 6; ++seed) {
            set("Size Random Seed", seed);
            auto byRung = PixelsByRung(rendered(input), Shape::Square, 16, 2);
            largest[percent] += byRung[2];
            if (percent == 0) {
                EXPECT_EQ(byRung[0], 256 * 192) << "all cells are normal";
            }
        }
    }
    EXPECT_EQ(largest[25], 0);
    EXPECT_EQ(largest[50], 0);
    EXPECT_GT(largest[100], 0);
}

TEST_P(Cells, TrianglesShareTheSizeOfTheirRectangle) {
    const Host::World input = PositionPicture(256, 256);
    setShape(Shape::Triangle);
    set("Size", 32);
    set("Size Level", 2);
    set("Size Random", 100);
    std::map<int, int> total;
    for (const int seed : {0, 3, 8}) {
        set("Size Random Seed", seed);
        const Host::World output = rendered(input);
        // Look at the middle only: cells at the sides are cut and may take the edge's colour.
        for (int y = 32; y < 224; ++y) {
            for (int x = 64; x < 192; ++x) {
                int matches = 0;
                for (int rung = 0; rung <= 2; ++rung) {
                    const double side = std::ldexp(32, rung);
                    const Cell cell = CellOf(Shape::Triangle, x, y, {side, side});
                    if (Shows(PixelOf(output, x, y), cell.reference, {256, 256})) {
                        ++matches;
                        ++total[rung];
                    }
                }
                ASSERT_GE(matches, 1) << "no rung has the colour at " << x << ", " << y;
            }
        }
    }
    EXPECT_EQ(total.size(), 3U);
}

TEST_P(Cells, ChangeWithTheSeedAndNothingElse) {
    const Host::World input = PositionPicture(128, 128);
    set("Size Random", 100);
    set("Size Random Seed", 1);
    const Host::World one = rendered(input);
    set("Size Random Seed", 2);
    EXPECT_FALSE(SamePixels(rendered(input), one));
    set("Size Random Seed", 1);
    EXPECT_TRUE(SamePixels(rendered(input), one));
    set("Dissolve Random Seed", 9);
    EXPECT_TRUE(SamePixels(rendered(input), one)) << "nothing dissolves";
}

TEST_P(Cells, FollowTheDownsampleFactor) {
    const Host::World input = PositionPicture(96, 64);
    const auto renderedAt = [&](int size, A_u_long denominator) {
        set("Size", size);
        mSession.inData().downsample_x.den = denominator;
        mSession.inData().downsample_y.den = denominator;
        return rendered(input);
    };
    const std::tuple<int, A_u_long, int> cases[] = {
        {20, 2, 10}, {10, 4, 2}, {11, 4, 2}, {3000, 100, 30}};
    for (const auto& [size, denominator, sameAs] : cases) {
        EXPECT_TRUE(SamePixels(renderedAt(size, denominator), renderedAt(sameAs, 1)))
            << size << " / " << denominator;
    }
    set("Feather", 0);
    for (const A_u_long denominator : {4U, 0U}) {
        EXPECT_LE(LargestDifference(renderedAt(2, denominator), input), 1) << "cells of one pixel";
    }
}

} // namespace

} // namespace Kerovane::TestSupport
