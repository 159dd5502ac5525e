#include "Host/Pixels/AlphaForm.h"
#include "Host/Pixels/ConvertPixels.h"
#include "Software/DrawMosaic.h"
#include "Software/Mosaic.h"
#include "Tests/Software/Formula.h"
#include "Tests/Software/RandomMosaics.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

namespace Kerovane::Software {
namespace {

using Host::Alpha;
using Host::ChannelOrder;
using Host::Depth;

/// A picture in its own memory, surrounded by bytes that must not be touched.
struct Picture {
    Picture(Depth depth, int width, int height, ChannelOrder order = ChannelOrder::Rgba,
            Alpha alpha = Alpha::Straight, bool bottomUp = false)
        : rowBytes(width * int(depth) / 2 + 3),
          bytes(static_cast<std::size_t>(height * rowBytes), kUntouched),
          view{.top = bytes.data() + (bottomUp ? (height - 1) * rowBytes : 0),
               .rowBytes = bottomUp ? -rowBytes : rowBytes,
               .width = width,
               .height = height,
               .depth = depth,
               .order = order,
               .alpha = alpha} {}

    bool gapsAreUntouched() const {
        for (std::size_t row = 1; row <= static_cast<std::size_t>(view.height); ++row) {
            const std::byte* end = bytes.data() + row * static_cast<std::size_t>(rowBytes);
            if (std::any_of(end - 3, end, [](std::byte byte) { return byte != kUntouched; })) {
                return false;
            }
        }
        return true;
    }

    static constexpr std::byte kUntouched{0xa7};
    std::ptrdiff_t rowBytes;
    std::vector<std::byte> bytes;
    Host::PixelView view;
};

template <typename Channel>
std::array<Channel, 4> PixelOf(const Picture& picture, int x, int y) {
    std::array<Channel, 4> pixel;
    std::memcpy(pixel.data(), picture.view.row(y) + x * std::ptrdiff_t{sizeof pixel}, sizeof pixel);
    return pixel;
}

template <typename Channel>
void Put(const Picture& picture, int channel, int y, Channel value) {
    std::memcpy(picture.view.row(y) + channel * std::ptrdiff_t{sizeof value}, &value, sizeof value);
}

template <typename Channel>
void Fill(const Picture& picture, std::minstd_rand& random, float low, float high) {
    std::uniform_real_distribution<float> level(low, high);
    for (int y = 0; y < picture.view.height; ++y) {
        for (int x = 0; x < picture.view.width * 4; ++x) {
            // Makes about half of the pixels opaque.
            const bool isOpaque = x % 4 == 3 && random() % 2 == 0;
            const float white = std::is_same_v<Channel, float> ? 1 : high;
            Put(picture, x, y, static_cast<Channel>(isOpaque ? white : level(random)));
        }
    }
}

TEST(Mosaic, MatchesTheFormulaToTheBit) {
    std::minstd_rand random(7); // NOLINT(cert-msc*): the same cases in every run
    for (int round = 0; round < 400; ++round) {
        const MosaicParameters parameters = RandomParameters(random);
        const int width = 1 + static_cast<int>(random() % 90);
        const int height = 1 + static_cast<int>(random() % 60);
        Picture in(Depth::Float32, width, height);
        Picture out(Depth::Float32, width, height);
        Fill<float>(in, random, -0.5F, 3);
        DrawMosaic(parameters, in.view, out.view, 1);
        const Formula formula(parameters, width, height,
                              [&in](int x, int y) { return PixelOf<float>(in, x, y); });
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                Formula::Colour wanted = formula.at(x, y);
                const float alpha = wanted[3];
                for (std::size_t channel = 0; channel < 3; ++channel) {
                    wanted[channel] = alpha == 0 ? 0 : wanted[channel] * alpha / alpha;
                }
                ASSERT_EQ(PixelOf<float>(out, x, y), wanted)
                    << "round " << round << ", " << width << "x" << height << " at " << x << ", "
                    << y;
            }
        }
        ASSERT_TRUE(out.gapsAreUntouched());
    }
}

/// Compares 8 and 16 bits with 32-bit floats. Allows 3 levels at 16 bits. Allows half a level at 8
/// bits, and about one level divided by alpha, because the product of colour and alpha is rounded.
TEST(Mosaic, AgreesAcrossDepthsWithinTheirRounding) {
    std::minstd_rand random(11); // NOLINT(cert-msc*): the same cases in every run
    for (int round = 0; round < 60; ++round) {
        MosaicParameters parameters = RandomParameters(random);
        Picture in8(Depth::Bits8, 70, 50);
        Picture in16(Depth::Bits16, 70, 50);
        Picture in32(Depth::Float32, 70, 50);
        for (int y = 0; y < 50; ++y) {
            for (int x = 0; x < 70 * 4; ++x) {
                // Half of the alphas are 255, so that much of the picture is opaque.
                const unsigned level = x % 8 == 3 ? 255 : random() % 256;
                const float share = static_cast<float>(level) / 255;
                Put(in8, x, y, static_cast<std::uint8_t>(level));
                Put(in16, x, y, static_cast<std::uint16_t>(std::lround(share * 32768)));
                Put(in32, x, y, share);
            }
        }
        Picture out8(Depth::Bits8, 70, 50);
        Picture out16(Depth::Bits16, 70, 50);
        Picture out32(Depth::Float32, 70, 50);
        DrawMosaic(parameters, in8.view, out8.view, 1);
        DrawMosaic(parameters, in16.view, out16.view, 1);
        DrawMosaic(parameters, in32.view, out32.view, 1);
        for (int y = 0; y < 50; ++y) {
            for (int x = 0; x < 70; ++x) {
                const auto wanted = PixelOf<float>(out32, x, y);
                const auto eight = PixelOf<std::uint8_t>(out8, x, y);
                const auto sixteen = PixelOf<std::uint16_t>(out16, x, y);
                // One level of the product is one level divided by alpha in the colour.
                const float step8 = 0.5F / 255 + (wanted[3] > 0 ? 1.01F / 255 / wanted[3] : 1);
                for (std::size_t channel = 0; channel < 4; ++channel) {
                    ASSERT_NEAR(float(sixteen[channel]) / 32768, wanted[channel], 3.0F / 32768);
                    ASSERT_NEAR(float(eight[channel]) / 255, wanted[channel], step8);
                }
            }
        }
    }
}

TEST(Mosaic, HasTheSameBytesInAllFormsOfPixelsAndBands) {
    std::minstd_rand random(5); // NOLINT(cert-msc*): the same cases in every run
    for (int round = 0; round < 120; ++round) {
        MosaicParameters parameters = RandomParameters(random);
        const auto depth = round % 3 == 0   ? Depth::Bits8
                           : round % 3 == 1 ? Depth::Bits16
                                            : Depth::Float32;
        Picture in(depth, 83, 57);
        Host::WithChannelType(depth, [&](auto type) {
            using Channel = typename decltype(type)::type;
            Fill<Channel>(in, random, 0, static_cast<float>(Host::kWhite<Channel>));
        });
        const auto order = random() % 2 == 0 ? ChannelOrder::Argb : ChannelOrder::Rgba;
        const auto alpha = random() % 2 == 0 ? Alpha::Straight : Alpha::Premultiplied;
        Picture otherIn(depth, 83, 57, order, alpha, true);
        // Converts there and back, so that both inputs hold the same colours: those that
        // premultiplied pixels can hold.
        Host::ConvertPixels(in.view, otherIn.view);
        Host::ConvertPixels(otherIn.view, in.view);

        Picture out(depth, 83, 57);
        DrawMosaic(parameters, in.view, out.view, 1);
        Picture wanted(depth, 83, 57, order, alpha, true);
        Host::ConvertPixels(out.view, wanted.view);

        Picture byBands(depth, 83, 57, order, alpha, true);
        const Mosaic mosaic(parameters, 83, 57);
        for (int band = mosaic.bands(); band-- > 0;) {
            mosaic.draw(otherIn.view, byBands.view, band, band + 1);
        }
        ASSERT_EQ(byBands.bytes, wanted.bytes) << "round " << round;
        Picture byThreads(depth, 83, 57, order, alpha, true);
        DrawMosaic(parameters, otherIn.view, byThreads.view, 3);
        ASSERT_EQ(byThreads.bytes, wanted.bytes) << "round " << round;
    }
}

TEST(Mosaic, WritesOnlyItsPixelsWithAnyParameters) {
    constexpr double kRatios[] = {
        0, -1, 1e-45, 1e-30, 0.013, 1e9, 1e38, 1e300, std::numeric_limits<double>::quiet_NaN()};
    constexpr std::int32_t kNumbers[] = {std::numeric_limits<std::int32_t>::min(), -1, 0, 3,
                                         std::numeric_limits<std::int32_t>::max()};
    std::minstd_rand random(13); // NOLINT(cert-msc*): the same cases in every run
    const auto number = [&] { return kNumbers[random() % std::size(kNumbers)]; };
    Picture in(Depth::Bits8, 40, 30);
    Picture out(Depth::Bits8, 40, 30);
    for (int round = 0; round < 1500; ++round) {
        const MosaicParameters parameters{.shape = Shape(random() % 2),
                                          .size = number(),
                                          .ratio = kRatios[random() % std::size(kRatios)],
                                          .sizeRandom = number(),
                                          .sizeLevel = number(),
                                          .sizeRandomSeed = number(),
                                          .dissolve = number(),
                                          .dissolveRandomSeed = number(),
                                          .transition = Transition(random() % 3),
                                          .transitionProgress = number(),
                                          .feather = number(),
                                          .direction = number(),
                                          .useAlpha = random() % 2 == 0,
                                          .downsample = static_cast<std::uint32_t>(number())};
        DrawMosaic(parameters, in.view, out.view, 1);
        ASSERT_TRUE(out.gapsAreUntouched());
    }
}

TEST(Sine, IsWithinItsErrorBound) {
    std::minstd_rand random(3); // NOLINT(cert-msc*): the same cases in every run
    std::uniform_real_distribution<double> exponent(-20, 32);
    for (int round = 0; round < 100000; ++round) {
        const double angle = float(std::exp2(exponent(random)) * (round % 2 == 0 ? 1 : -1));
        ASSERT_NEAR(Sine(angle), std::sin(angle), 1e-13) << angle;
    }
    EXPECT_EQ(Sine(0), 0);
    EXPECT_NEAR(Cosine(0), 1, 1e-13);
}

} // namespace
} // namespace Kerovane::Software
