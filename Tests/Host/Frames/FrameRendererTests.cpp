#include "Host/Frames/FrameRenderer.h"
#include "Tests/Support/ErrorText.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <limits>
#include <optional>
#include <string>
#include <thread>

namespace Kerovane::Host {
namespace {

constexpr std::ptrdiff_t kRowBytes = 32;
constexpr std::ptrdiff_t kWidth = 5;
constexpr std::ptrdiff_t kHeight = 4;

/// Renders with the fake effect, which copies the picture and shows the fault that FAKE_EFFECT
/// names.
class FrameRendererTest : public testing::Test {
protected:
    using Bytes = std::array<std::byte, kRowBytes * kHeight>;

    FrameRendererTest() {
        for (std::size_t i = 0; i < mIn.size(); ++i) {
            mIn[i] = static_cast<std::byte>(i + 1);
        }
    }
    ~FrameRendererTest() override { unsetenv("FAKE_EFFECT"); }

    static void show(const char* fault) { setenv("FAKE_EFFECT", fault, 1); }

    static PixelView viewOf(Bytes& bytes, ChannelOrder order = ChannelOrder::Argb,
                            std::ptrdiff_t top = 0, std::ptrdiff_t rowBytes = kRowBytes) {
        return {.top = bytes.data() + top,
                .rowBytes = rowBytes,
                .width = kWidth,
                .height = kHeight,
                .order = order};
    }

    Bytes mIn{};
    Bytes mOut{};
};

TEST_F(FrameRendererTest, DrawsViewsInEachLayoutAndNothingBesideThem) {
    const struct {
        const char* name;
        PixelView in;
        PixelView out;
    } rows[] = {
        {"as effects have it", viewOf(mIn), viewOf(mOut)},
        {"alpha last", viewOf(mIn, ChannelOrder::Rgba), viewOf(mOut, ChannelOrder::Rgba)},
        {"bottom up", viewOf(mIn, {}, 3 * kRowBytes, -kRowBytes),
         viewOf(mOut, {}, 3 * kRowBytes, -kRowBytes)},
        {"rows that end within a pixel", viewOf(mIn, {}, 1, 21), viewOf(mOut, {}, 1, 21)},
        {"each its own", viewOf(mIn), viewOf(mOut, {}, 1, 23)},
    };
    FrameRenderer renderer(FAKE_EFFECT);
    for (const auto& row : rows) {
        mOut.fill(std::byte{0});
        Bytes expected = mOut;
        for (std::ptrdiff_t y = 0; y < kHeight; ++y) {
            std::copy_n(row.in.row(y), kWidth * 4,
                        expected.data() + (row.out.row(y) - mOut.data()));
        }
        renderer.render({}, {}, row.in, row.out);
        EXPECT_EQ(mOut, expected) << row.name;
    }
}

TEST_F(FrameRendererTest, ReplacesNonFiniteChannelsByZero) {
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    const std::array<float, 12> in{1, kNan, -3, 2e38F, -kInfinity, 0.5F, kInfinity, 1, 1, 2, 3, 4};
    const std::array<float, 12> expected{1, 0, -3, 2e38F, 0, 0.5F, 0, 1, 1, 2, 3, 4};
    std::array<float, 12> out{};
    FrameRenderer renderer(FAKE_EFFECT);
    const PixelView from{.top = reinterpret_cast<std::byte*>(mIn.data()) + 1,
                         .rowBytes = 16,
                         .width = 1,
                         .height = 3,
                         .depth = Depth::Float32};
    std::memcpy(from.top, in.data(), sizeof in);
    PixelView to = from;
    to.top = reinterpret_cast<std::byte*>(out.data());
    EXPECT_EQ(renderer.render({}, {}, from, to), 2U);
    EXPECT_EQ(out, expected);
    EXPECT_EQ(std::memcmp(from.top, in.data(), sizeof in), 0) << "the input is not written";
    std::memcpy(from.top, expected.data(), sizeof expected);
    EXPECT_EQ(renderer.render({}, {}, from, to), 0U);
}

TEST_F(FrameRendererTest, LeavesAConvertedOutputUntouchedIfTheFrameFails) {
    FrameRenderer renderer(FAKE_EFFECT);
    const auto render = [&](const PixelView& out) {
        return ErrorOf([&] { renderer.render({}, {}, viewOf(mIn), out); });
    };
    const PixelView converted = viewOf(mOut, ChannelOrder::Rgba);
    show("render error after a row");
    EXPECT_EQ(render(converted), "the effect failed at rendering: error 516 (bad callback "
                                 "parameter)");
    EXPECT_EQ(mOut, Bytes{});
    render(viewOf(mOut));
    EXPECT_EQ(mOut[0], mIn[0]) << "in place, what the effect wrote is there";
    show("");
    EXPECT_EQ(render(converted), "") << "a failed frame is not the end";
    PixelView narrower = viewOf(mOut);
    --narrower.width;
    EXPECT_EQ(render(narrower), "the output differs from the input in depth or size");
    EXPECT_THROW(renderer.render({}, {}, {.width = 1 << 20}, {.width = 1 << 20}), Error);
}

TEST_F(FrameRendererTest, WaitsForThePreviousRendererToSetDown) {
    const TemporaryFolder folder;
    setenv("FAKE_EFFECT_TRACE", (folder / "trace").c_str(), 1);
    std::optional<FrameRenderer> first(FAKE_EFFECT);
    std::thread second([] { const FrameRenderer renderer(FAKE_EFFECT); });
    // Lets the second renderer start while the first still exists.
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    first.reset();
    second.join();
    unsetenv("FAKE_EFFECT_TRACE");
    EXPECT_EQ(folder.contentOf("trace"), "1 4 3 1 4 3 ");
}

TEST_F(FrameRendererTest, DropsOrShowsWhatTheEffectPrints) {
    show("chatty");
    const auto printed = [](EffectOutput output) {
        testing::internal::CaptureStdout();
        { const FrameRenderer renderer(FAKE_EFFECT, output); }
        std::cout << std::flush;
        return testing::internal::GetCapturedStdout();
    };
    EXPECT_EQ(printed(EffectOutput::Dropped), "");
    EXPECT_EQ(printed(EffectOutput::Shown), "fake effect on stdout, flushed\n"
                                            "fake effect on stdout, left to exit");
}

} // namespace
} // namespace Kerovane::Host
