#include "Tests/Adapters/OpenFX/OpenFXHost.h"
#include "Tests/Support/RawPicture.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <set>

namespace Kerovane::OpenFX {

namespace {

constexpr int kWidth = 61;
constexpr int kHeight = 43;

/// Returns the colour of a pixel, which differs from those of its neighbours. Channels are
/// multiples of 1/255, which every form of image can hold.
std::array<float, 4> Motley(int x, int y) {
    const auto level = [](int seed) { return static_cast<float>((seed % 256 + 256) % 256) / 255; };
    const float alpha = (x + y) % 5 == 0 ? 204.0F / 255 : 1;
    return {level(x * 37 + y * 101), level(x * 11 - y * 53 + 90), level(x * 5 + y * 7), alpha};
}

/// Returns the command's result for a picture painted by `colour`, with x and y from the bottom
/// left corner.
RawPicture OfCommand(int width, int height, const Image::Colour& colour,
                     const std::string& options) {
    const TemporaryFolder folder;
    RawPicture picture = RawPicture::of({0, 0, 0, 0}, OIIO::TypeDesc::FLOAT, 3, width, height);
    auto value = picture.values.begin();
    for (int y = height - 1; y >= 0; --y) {
        for (int x = 0; x < width; ++x) {
            value = std::ranges::copy(colour(x, y), value).out;
        }
    }
    picture.write(folder / "in.tif");
    const std::string line = fmt::format("{0} render {1}/in.tif {1}/out.tif {2}", TESSELUNE_COMMAND,
                                         (folder / "").string(), options);
    EXPECT_EQ(std::system(line.c_str()), 0) << line;
    return RawPicture::read(folder / "out.tif");
}

/// Returns the largest difference to `expected`, with both multiplied by alpha. Alpha is compared
/// only if the image has it.
double Difference(Image& image, const RawPicture& expected) {
    double difference = 0;
    auto value = expected.values.begin();
    for (int y = image.bounds.y2 - 1; y >= image.bounds.y1; --y) {
        for (int x = image.bounds.x1; x < image.bounds.x2; ++x, value += 4) {
            const std::array<float, 4> pixel = image.at(x, y);
            for (int i = 0; i < image.channels; ++i) {
                const float weight = i < 3 ? value[3] : 1;
                const bool isStraight = image.coverage == Coverage::Straight && i < 3;
                const double got = pixel[static_cast<std::size_t>(i)] * (isStraight ? pixel[3] : 1);
                difference = std::max(difference, std::abs(got - value[i] * weight));
            }
        }
    }
    return difference;
}

/// Returns the tolerance for a channel: one step, or two at 8 and 16 bits, because colours are
/// multiplied by alpha and divided again on the way.
double ToleranceOf(Channel channel) {
    switch (channel) {
    case Channel::Byte:
        return 2.0 / 255;
    case Channel::Short:
        return 2.0 / 65535;
    case Channel::Half:
        return 0x1p-10;
    default:
        return 1e-6;
    }
}

class Frames : public testing::Test {
protected:
    /// Renders `source` into an image of the form `output` and returns it.
    Image rendered(Image& source, Image output, double time = 0,
                   std::optional<OfxRectI> window = {}) {
        output.make();
        mEffect.connect(source, output);
        EXPECT_EQ(mHost.render(mEffect, time, window), kOfxStatOK);
        return output;
    }

    const OpenFXHost mHost;
    TestEffect mEffect = mHost.described();
};

TEST_F(Frames, MatchTheCommandInEveryForm) {
    const auto at = [](int left, int bottom) {
        return OfxRectI{left, bottom, left + kWidth, bottom + kHeight};
    };
    const Image forms[] = {
        {at(0, 0), Channel::Byte},
        {at(-7, 1000), Channel::Byte, 4, Coverage::Straight, true, 12},
        {at(0, 0), Channel::Byte, 3, Coverage::Opaque, false, 5},
        {at(20, -30), Channel::Short, 4, Coverage::Straight, false, 8},
        {at(0, 0), Channel::Short, 3, Coverage::Opaque, true},
        {at(3, 5), Channel::Half, 4, Coverage::Premultiplied, true},
        {at(-61, 0), Channel::Float, 4, Coverage::Premultiplied, false, 16, {1, 1}, true},
        {at(0, 0), Channel::Float, 4, Coverage::Straight, true, 4},
        {at(0, 0), Channel::Float, 4, Coverage::Opaque},
        {at(9, 9), Channel::Float, 3, Coverage::Opaque, false, 4},
    };
    mEffect.set("shapeType", 1);
    mEffect.set("size", 9);
    mEffect.set("dissolve", 0.3);
    for (Image source : forms) {
        const auto [left, bottom, right, top] = source.bounds;
        SCOPED_TRACE(testing::Message() << static_cast<int>(source.channel) << ", " << left);
        const bool isOpaque = source.coverage == Coverage::Opaque;
        source.make([=, left = left, bottom = bottom](int x, int y) {
            std::array<float, 4> pixel = Motley(x - left, y - bottom);
            pixel[3] = isOpaque ? 0.4F : pixel[3]; // must count as 1 if the source is opaque
            return pixel;
        });
        mEffect.setProject(left, bottom, right, top);
        Image output = rendered(source, source);
        const RawPicture expected = OfCommand(
            kWidth, kHeight,
            [&](int x, int y) {
                std::array<float, 4> pixel = Motley(x, y);
                pixel[3] = isOpaque ? 1 : pixel[3];
                return pixel;
            },
            fmt::format("--shape-type triangle --size 9 --dissolve 30 --depth {}",
                        source.channel == Channel::Byte ? 8 : 32));
        EXPECT_LE(Difference(output, expected), ToleranceOf(source.channel));
        for (int y = bottom; y < top; ++y) {
            const std::byte* behind = output.pixel(left, y) + output.rowBytes() - output.padding;
            for (int i = 0; i < output.padding; ++i) {
                ASSERT_EQ(behind[i], std::byte{0x5A}) << "padding";
            }
        }
    }
    EXPECT_EQ(OpenFXHost::openImages(), 0);
}

TEST_F(Frames, ClampIntegersToBlackAndWhite) {
    Image source{.bounds = {0, 0, 8, 8}};
    source.make([](int, int) { return std::array{-1.0F, 2.0F, 0.6F, 1.0F}; });
    mEffect.setProject(0, 0, 8, 8);
    for (const Channel channel : {Channel::Byte, Channel::Short}) {
        Image output = rendered(source, {.bounds = source.bounds, .channel = channel});
        const auto [red, green, blue, alpha] = output.at(3, 4);
        EXPECT_EQ(red, 0);
        EXPECT_EQ(green, 1);
        EXPECT_NEAR(blue, 0.6, 1e-4); // 153 of 255
        EXPECT_EQ(alpha, 1);
    }
}

TEST_F(Frames, CoverTheProjectWindowOrLargerFootage) {
    const std::array<OfxRectI, 3> rows[] = {
        // source, project and expected frame
        {{{10, 5, 50, 30}, {0, 0, kWidth, kHeight}, {0, 0, kWidth, kHeight}}},
        {{{31, 7, 35, 11}, {0, 0, kWidth, kHeight}, {0, 0, kWidth, kHeight}}},
        {{{-4, 0, kWidth - 4, kHeight}, {0, 0, kWidth, kHeight}, {-4, 0, kWidth - 4, kHeight}}},
        {{{0, 0, kWidth, kHeight}, {8, 8, 40, 40}, {0, 0, kWidth, kHeight}}},
    };
    mEffect.set("size", 8);
    for (const auto& [place, project, frame] : rows) {
        SCOPED_TRACE(testing::Message() << place.x1 << ", " << project.x1);
        Image source{.bounds = place};
        source.make(Motley);
        mEffect.setProject(project.x1, project.y1, project.x2, project.y2);
        Image output = rendered(source, {.bounds = frame});
        Properties region{{kOfxImageEffectPropRegionOfDefinition, {0.0, 0.0, 0.0, 0.0}}};
        ASSERT_EQ(mHost.act(kOfxImageEffectActionGetRegionOfDefinition, &mEffect,
                            {{kOfxPropTime, {0.0}}}, &region),
                  kOfxStatOK);
        const double edges[] = {frame.x1 * 1.0, frame.y1 * 1.0, frame.x2 * 1.0, frame.y2 * 1.0};
        for (int i = 0; i < 4; ++i) {
            EXPECT_EQ(region.at<double>(kOfxImageEffectPropRegionOfDefinition, i), edges[i]);
        }
        const auto padded = [place = place, frame = frame](int x, int y) {
            const int inX = x + frame.x1;
            const int inY = y + frame.y1;
            const bool isThere =
                place.x1 <= inX && inX < place.x2 && place.y1 <= inY && inY < place.y2;
            return isThere ? Motley(inX, inY) : std::array<float, 4>{};
        };
        EXPECT_LE(Difference(output, OfCommand(kWidth, kHeight, padded, "--size 8 --depth 32")),
                  ToleranceOf(Channel::Float));
    }
}

class Proxies : public Frames, public testing::WithParamInterface<int> {};

TEST_P(Proxies, ShowTheCellsOfTheFullSizePicture) {
    constexpr int kFull = 240; // divisible by 2, 3 and 4
    mEffect.set("renderer", GetParam());
    mEffect.set("size", 10);
    mEffect.set("sizeRandom", 0.6);
    mEffect.set("dissolve", 0.35);
    mEffect.setProject(0, 0, kFull, kFull);
    const auto render = [&](int divisor) {
        const int side = kFull / divisor;
        Image source{.bounds = {0, 0, side, side}, .scale = {1.0 / divisor, 1.0 / divisor}};
        source.make([&](int x, int y) {
            std::array<float, 4> colour = Motley(x * divisor, y * divisor);
            colour[3] = 1;
            return colour;
        });
        return rendered(source, source);
    };
    Image full = render(1);
    for (const int divisor : {2, 3, 4}) {
        Image proxy = render(divisor);
        // Maps each cell's colour at full size to its colours in the proxy. Each cell must have
        // one.
        std::map<std::array<float, 4>, std::set<std::array<float, 4>>> colours;
        for (int y = 0; y < kFull / divisor; ++y) {
            for (int x = 0; x < kFull / divisor; ++x) {
                // Counted downwards, a centre between two pixels belongs to the lower one.
                const int fullX = (2 * x + 1) * divisor / 2;
                const int fullY = kFull - 1 - (kFull * 2 - (2 * y + 1) * divisor) / 2;
                const std::array<float, 4> cell = full.at(fullX, fullY);
                ASSERT_EQ(proxy.at(x, y)[3], cell[3]) << x << ' ' << y << " of 1/" << divisor;
                colours[cell].insert(proxy.at(x, y));
            }
        }
        EXPECT_GT(colours.size(), 100U);
        for (const auto& [cell, shown] : colours) {
            EXPECT_EQ(shown.size(), 1U) << "a cell in two colours at 1/" << divisor;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(ByRenderer, Proxies, testing::Values(1, 2)); // OpenGL, Software

TEST_F(Frames, UseTheParameterValuesOfTheirTime) {
    Image source{.bounds = {0, 0, kWidth, kHeight}};
    source.make(Motley);
    const auto render = [&](double time) { return rendered(source, source, time).bytes; };
    mEffect.params.at("size").keys = {{10, 4}, {20, 14}};
    mEffect.params.at("transitionProgress").keys = {{10, 0}, {20, 1}};
    mEffect.set("feather", 20);
    const std::vector<std::byte> moving = render(15);
    mEffect.set("size", 9);
    mEffect.set("transitionProgress", 0.5);
    EXPECT_EQ(moving, render(0));
    mEffect.set("size", 4);
    EXPECT_NE(moving, render(0)) << "the value of another time";
}

TEST_F(Frames, AreWrittenOnlyInsideTheRenderWindow) {
    Image source{.bounds = {0, 0, kWidth, kHeight}};
    source.make(Motley);
    Image whole = rendered(source, source);
    Image untouched{.bounds = {-3, -2, kWidth + 5, kHeight + 9}};
    untouched.make();
    Image part = rendered(source, untouched, 0, OfxRectI{7, 20, 31, 41});
    for (int y = part.bounds.y1; y < part.bounds.y2; ++y) {
        for (int x = part.bounds.x1; x < part.bounds.x2; ++x) {
            const bool isInside = 7 <= x && x < 31 && 20 <= y && y < 41;
            ASSERT_EQ(part.at(x, y), isInside ? whole.at(x, y) : untouched.at(x, y))
                << x << ' ' << y;
        }
    }
}

} // namespace

} // namespace Kerovane::OpenFX
