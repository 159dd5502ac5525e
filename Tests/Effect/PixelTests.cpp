#include "Tests/Effect/EffectFixture.h"

#include <algorithm>
#include <cstring>
#include <set>
#include <span>

namespace Kerovane::TestSupport {

namespace {

using Host::Depth;
using Host::World;

constexpr std::byte kMark{0xa7};

/// Returns the bytes of row `y`, including padding.
std::span<const std::byte> RowBytes(const World& world, int y) {
    const auto rowBytes = static_cast<std::size_t>(world.rowBytes());
    return world.bytes().subspan(static_cast<std::size_t>(y) * rowBytes, rowBytes);
}

/// Returns the same pixels with `padding` more bytes a row, which are filled with a mark.
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

class Pixels : public EveryModule {};

TEST_EVERY_MODULE(Pixels);

TEST_P(Pixels, AreNotSkewedByPaddingAndLeaveItUntouched) {
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

TEST_P(Pixels, AreTheSameAtEveryDepthUpToTheTargetsPrecision) {
    set("Size", 5);
    set("Dissolve", 30);
    for (const bool opaque : {true, false}) {
        for (const double useAlpha : {1.0, 0.0}) {
            set("Use Alpha", useAlpha);
            const World picture = SmoothPicture(64, 48, opaque);
            const World expected = rendered(picture);
            for (const Depth depth : {Depth::Bits16, Depth::Float32}) {
                const World twin = AtDepth(rendered(AtDepth(picture, depth)), Depth::Bits8);
                // Tolerates more with soft alpha: dividing by a small alpha magnifies an error of
                // one level in an 8-bit target.
                const bool isExact = opaque || GetParam().storesFloats;
                EXPECT_LE(LargestDifference(twin, expected), isExact ? 1 : 16)
                    << static_cast<int>(depth) << " bits, opaque " << opaque;
            }
        }
    }
}

TEST_P(Pixels, KeepWhiteAtEveryDepth) {
    const World white = Picture8(16, 16, [](int, int) { return PF_Pixel8{255, 255, 255, 255}; });
    const World output16 = rendered(AtDepth(white, Depth::Bits16));
    const World output32 = rendered(AtDepth(white, Depth::Float32));
    // One level of an 8-bit target is 128 of the host's 16-bit levels.
    const int tolerance = GetParam().storesFloats ? 0 : 130;
    EXPECT_NEAR(output16.row<PF_Pixel16>(3)[3].alpha, 32768, tolerance);
    EXPECT_NEAR(output16.row<PF_Pixel16>(3)[3].blue, 32768, tolerance);
    EXPECT_EQ(output32.row<PF_PixelFloat>(3)[3].green, 1.0F);
}

/// Returns a picture whose red rises and whose green falls from left to right, both beyond 0 to 1.
World Ramp(A_long levels, float alpha) {
    World ramp(Depth::Float32, levels, 2);
    for (int y = 0; y < 2; ++y) {
        for (int x = 0; x < levels; ++x) {
            const auto level = static_cast<float>(-1.0 + 8.0 * x / (levels - 1));
            ramp.row<PF_PixelFloat>(y)[static_cast<std::size_t>(x)] = {alpha, level, -level, 3.0F};
        }
    }
    return ramp;
}

class FloatPixels : public EffectFixture {
protected:
    FloatPixels() : EffectFixture(TESSELUNE_FLOAT_MODULE) { set("Size", 2); }
};

TEST_F(FloatPixels, KeepEveryLevelAndValuesBeyondBlackAndWhite) {
    constexpr A_long kLevels = 1024;
    const struct {
        float alpha;
        double useAlpha;
        float outAlpha;
        float cellWeight; ///< weight of the cell's colour in the result
        float ownWeight;  ///< weight of the pixel's own colour
    } kCases[] = {{1.0F, 1, 1.0F, 1.0F, 0.0F},
                  {0.5F, 1, 0.25F, 0.5F, 0.0F}, // a cell's alpha applies twice
                  {0.5F, 0, 0.5F, 0.5F, 0.5F},
                  {1.0F, 0, 1.0F, 1.0F, 0.0F}};
    for (const auto& [alpha, useAlpha, outAlpha, cellWeight, ownWeight] : kCases) {
        SCOPED_TRACE(testing::Message() << "alpha " << alpha << ", used " << useAlpha);
        set("Use Alpha", useAlpha);
        const World input = Ramp(kLevels, alpha);
        const World output = rendered(input);
        const auto in = input.row<PF_PixelFloat>(0);
        std::set<float> levels;
        for (std::size_t x = 0; x < in.size(); ++x) {
            const PF_PixelFloat& pixel = output.row<PF_PixelFloat>(1)[x];
            // The reference point is between the cell's pixels.
            const float cell = (in[x / 2 * 2].red + in[x / 2 * 2 + 1].red) / 2;
            const float expected = cell * cellWeight + in[x].red * ownWeight;
            ASSERT_NEAR(pixel.red, expected, 1e-6) << x;
            ASSERT_NEAR(pixel.green, -expected, 1e-6) << x;
            ASSERT_NEAR(pixel.blue, 3.0F * (cellWeight + ownWeight), 1e-6) << x;
            ASSERT_NEAR(pixel.alpha, outAlpha, 1e-6) << x;
            levels.insert(pixel.red);
        }
        EXPECT_EQ(std::ssize(levels), ownWeight > 0 ? kLevels : kLevels / 2);
    }
}

TEST_P(Pixels, OutputsOfAnotherSizeGetTheCommonPart) {
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

TEST_P(Pixels, SmallestPicturesRender) {
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
