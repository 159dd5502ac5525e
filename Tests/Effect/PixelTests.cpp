#include "Tests/Effect/EffectFixture.h"

#include <algorithm>
#include <cstring>
#include <span>

namespace Kerovane::TestSupport {

namespace {

using Host::Depth;
using Host::World;

constexpr std::byte kMark{0xa7};
constexpr Depth kDepths[] = {Depth::Bits8, Depth::Bits16, Depth::Float32};

/// The bytes of row `y`, padding included.
std::span<const std::byte> RowBytes(const World& world, int y) {
    const auto rowBytes = static_cast<std::size_t>(world.rowBytes());
    return world.bytes().subspan(static_cast<std::size_t>(y) * rowBytes, rowBytes);
}

/// The same pixels with rows `padding` bytes longer than they need to be, filled with a mark.
World WithPadding(const World& picture, int padding) {
    const std::size_t rowSize = RowSize(picture);
    World padded(picture.depth(), picture.width(), picture.height(),
                 static_cast<int>(rowSize) + padding);
    std::ranges::fill(padded.bytes(), kMark);
    for (int y = 0; y < picture.height(); ++y) {
        std::memcpy(padded.row<PF_Pixel8>(y).data(), picture.row<PF_Pixel8>(y).data(), rowSize);
    }
    return padded;
}

bool IsMark(std::byte byte) {
    return byte == kMark;
}

bool PaddingIsUntouched(const World& world) {
    for (int y = 0; y < world.height(); ++y) {
        if (!std::ranges::all_of(RowBytes(world, y).subspan(RowSize(world)), IsMark)) {
            return false;
        }
    }
    return true;
}

using Pixels = EffectFixture;

TEST_F(Pixels, PassPaddedRowsWithoutSkewAndLeaveThePaddingAlone) {
    for (const Depth depth : kDepths) {
        const World input = AtDepth(SmoothPicture(37, 23, false), depth);
        const World expected = rendered(input);
        const int pixel = Host::BytesPerPixel(depth);
        for (const int padding : {0, pixel, 5 * pixel}) {
            const World padded = WithPadding(input, padding);
            World output = WithPadding(World(depth, 37, 23), padding);
            EXPECT_EQ(mSession.render(padded, output), PF_Err_NONE);
            EXPECT_TRUE(SamePixels(output, expected)) << "padding " << padding;
            EXPECT_TRUE(PaddingIsUntouched(output)) << "padding " << padding;
        }
    }
}

TEST_F(Pixels, AreTheSameAtEveryDepthUpToTheTargetsPrecision) {
    set("Size", 5);
    set("Dissolve", 30);
    for (const bool opaque : {true, false}) {
        for (const double useAlpha : {1.0, 0.0}) {
            set("Use Alpha", useAlpha);
            const World picture = SmoothPicture(64, 48, opaque);
            const World expected = rendered(picture);
            for (const Depth depth : {Depth::Bits16, Depth::Float32}) {
                const World twin = At8Bits(rendered(AtDepth(picture, depth)));
                // Dividing by a small alpha magnifies a level of the target.
                EXPECT_LE(LargestDifference(twin, expected), opaque ? 1 : 16)
                    << static_cast<int>(depth) << " bits, opaque " << opaque;
            }
        }
    }
}

TEST_F(Pixels, ReachTheWhiteOfEveryDepth) {
    const World white = Picture8(16, 16, [](int, int) { return PF_Pixel8{255, 255, 255, 255}; });
    const World output16 = rendered(AtDepth(white, Depth::Bits16));
    const World output32 = rendered(AtDepth(white, Depth::Float32));
    // One level of the 8-bit target is 128 of the host's 16-bit levels.
    EXPECT_NEAR(output16.row<PF_Pixel16>(3)[3].alpha, 32768, 130);
    EXPECT_NEAR(output16.row<PF_Pixel16>(3)[3].blue, 32768, 130);
    EXPECT_EQ(output32.row<PF_PixelFloat>(3)[3].green, 1.0F);
}

TEST_F(Pixels, KeepTheirChannels) {
    const World picture = Picture8(16, 16, [](int, int) { return PF_Pixel8{255, 10, 130, 250}; });
    const PF_Pixel8 pixel = PixelOf(rendered(picture), 8, 8);
    EXPECT_EQ(pixel.alpha, 255);
    EXPECT_EQ(pixel.red, 10);
    EXPECT_EQ(pixel.green, 130);
    EXPECT_EQ(pixel.blue, 250);
}

TEST_F(Pixels, OfSoftAlphaAreWeightedByIt) {
    const World picture = Picture8(16, 16, [](int, int) { return PF_Pixel8{128, 200, 100, 50}; });
    const PF_Pixel8 cell = PixelOf(rendered(picture), 8, 8);
    // The cell's alpha a enters twice: alpha becomes a * a, colour becomes a * c.
    EXPECT_NEAR(cell.alpha, 64, 1);
    EXPECT_NEAR(cell.red, 100, 2);
    set("Use Alpha", 0);
    const PF_Pixel8 blended = PixelOf(rendered(picture), 8, 8);
    EXPECT_NEAR(blended.alpha, 128, 1);
    EXPECT_NEAR(blended.red, 200, 2);
}

TEST_F(Pixels, ComeInTwoSizesInTurn) {
    const World small = SmoothPicture(31, 17, true);
    const World large = SmoothPicture(120, 90, true);
    const World expectedSmall = rendered(small);
    const World expectedLarge = rendered(large);
    for (int round = 0; round < 3; ++round) {
        EXPECT_TRUE(SamePixels(rendered(small), expectedSmall));
        EXPECT_TRUE(SamePixels(rendered(large), expectedLarge));
    }
}

TEST_F(Pixels, OfAnOutputOfAnotherSizeAreThoseThatBothHave) {
    for (const Depth depth : kDepths) {
        const World input = AtDepth(SmoothPicture(40, 30, true), depth);
        const World expected = rendered(input);
        for (const auto& [width, height] : {std::pair(50, 20), std::pair(30, 40)}) {
            World output(depth, width, height);
            std::ranges::fill(output.bytes(), kMark);
            EXPECT_EQ(mSession.render(input, output), PF_Err_NONE);
            const auto pixel = static_cast<std::size_t>(Host::BytesPerPixel(depth));
            for (int y = 0; y < height; ++y) {
                const std::size_t common =
                    y < 30 ? pixel * static_cast<std::size_t>(std::min(width, 40)) : 0;
                const auto row = RowBytes(output, y);
                if (common > 0) {
                    EXPECT_TRUE(
                        std::ranges::equal(row.first(common), RowBytes(expected, y).first(common)))
                        << "row " << y;
                }
                EXPECT_TRUE(std::ranges::all_of(row.subspan(common), IsMark)) << "row " << y;
            }
        }
    }
}

TEST_F(Pixels, OfTheSmallestPicturesSurvive) {
    for (const auto& [width, height] :
         {std::pair(1, 1), std::pair(1, 9), std::pair(9, 1), std::pair(2, 2), std::pair(0, 5),
          std::pair(5, 0), std::pair(0, 0)}) {
        for (const Depth depth : kDepths) {
            for (const double shape : {1.0, 2.0}) {
                set("Shape Type", shape);
                World picture(depth, width, height);
                World output(depth, width, height);
                EXPECT_EQ(mSession.render(picture, output), PF_Err_NONE);
            }
        }
    }
    const World afterwards = SmoothPicture(20, 20, true);
    EXPECT_LE(LargestDifference(rendered(afterwards), rendered(afterwards)), 0);
}

} // namespace

} // namespace Kerovane::TestSupport
