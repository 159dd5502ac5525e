#include "Host/Frames/WorldView.h"
#include "Host/Pixels/ConvertPixels.h"
#include "Host/Session/Effect.h"
#include "Tests/Adapters/Frei0r/Frei0rHost.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <barrier>
#include <numeric>
#include <span>
#include <thread>
#include <tuple>
#include <vector>

namespace Kerovane::TestSupport {

namespace {

using Host::World;

constexpr int kShapeType = 0;
constexpr int kSize = 1;
constexpr int kSizeRandom = 3;

struct Settings {
    double shape; ///< 0 square, 1 triangle
    double size;  ///< pixels, from 2 to 500
};

void Set(Frei0rInstance& instance, const Settings& settings) {
    instance.set(kShapeType, settings.shape);
    instance.set(kSize, (settings.size - 2) / 498);
    instance.set(kSizeRandom, 0.5);
}

/// Returns the effect's result without the adapter. Call it before any adapter's thread exists: the
/// effect may be set up only once in a process.
Pixels Reference(const Pixels& input, A_long width, A_long height, const Settings& settings) {
    Host::Effect effect(TESSELUNE_MODULE);
    Host::ParameterValues values;
    const auto set = [&](std::string_view name, double value) {
        values.set(Host::FindParameter(effect.parameters(), name)->id(), value);
    };
    set("Shape Type", settings.shape + 1);
    set("Size", settings.size);
    set("Size Random", 50);
    World in(Host::Depth::Bits8, width, height);
    World out(Host::Depth::Bits8, width, height);
    Pixels frame = input;
    const Host::PixelView view{.top = std::as_writable_bytes(std::span(frame)).data(),
                               .rowBytes = width * 4,
                               .width = width,
                               .height = height,
                               .order = Host::ChannelOrder::Rgba};
    Host::ConvertPixels(view, Host::ViewOf(in));
    effect.render({}, values, in, out);
    Host::ConvertPixels(Host::ViewOf(out), view);
    return frame;
}

TEST(Frames, MatchTheEffectAtAnySize) {
    const std::tuple<unsigned, unsigned, Settings> rows[] = {
        {1, 1, {0, 2}}, {13, 7, {1, 4}}, {8, 720, {0, 500}}, {2048, 64, {0, 17}}};
    for (const auto& [width, height, settings] : rows) {
        const Pixels input = MotleyPicture(width, height);
        const Pixels expected =
            Reference(input, static_cast<A_long>(width), static_cast<A_long>(height), settings);
        const Frei0rHost host;
        Frei0rInstance instance(host, width, height);
        Set(instance, settings);
        EXPECT_EQ(instance.rendered(input), expected) << width << " x " << height;
    }
}

/// A frame passed in slices on other threads than the instance's own, as MLT does.
class Slicing : public testing::Test {
protected:
    static constexpr std::size_t kWidth = 48;
    static constexpr std::size_t kHeight = 48;
    static constexpr Settings kSettings{0, 12};

    struct Frame {
        explicit Frame(const Pixels& input, double at = 0.04)
            : time(at), in(input), out(input.size()) {}

        void updateSlice(Frei0rInstance& instance, std::size_t place, std::size_t count) {
            const std::size_t start = place * in.size() / count;
            instance.update(time, &in[start], &out[start]);
        }

        double time;
        Pixels in;
        Pixels out;
    };

    const Pixels mInput = MotleyPicture(kWidth, kHeight);
    const Pixels mExpected = Reference(mInput, kWidth, kHeight, kSettings);
    const Frei0rHost mHost;
};

TEST_F(Slicing, ChangesNothingWhateverTheOrder) {
    for (const std::size_t count : {1U, 2U, 3U, 4U}) {
        std::vector<std::size_t> order(count);
        std::iota(order.begin(), order.end(), 0U);
        Frei0rInstance instance(mHost, kWidth, static_cast<unsigned>(kHeight / count));
        Set(instance, kSettings);
        double time = 0;
        do {
            Frame frame(mInput,
                        time += 0.04); // its memory may be where slices of the last frame were
            std::thread([&] {
                for (const std::size_t place : order) {
                    frame.updateSlice(instance, place, count);
                }
            }).join();
            EXPECT_EQ(frame.out, mExpected) << testing::PrintToString(order);
        } while (std::ranges::next_permutation(order).found);
    }
}

TEST_F(Slicing, EndsWhenAParameterChanges) {
    Frei0rInstance instance(mHost, kWidth, kHeight / 2);
    Set(instance, kSettings);
    Frame frame(mInput);
    std::thread([&] { frame.updateSlice(instance, 0, 2); }).join();
    const Pixels first = frame.out;
    Set(instance, {0, 20});
    std::thread([&] { frame.updateSlice(instance, 1, 2); }).join();
    EXPECT_TRUE(std::equal(first.begin(), first.begin() + kWidth * kHeight / 2, frame.out.begin()));
}

TEST_F(Slicing, ChangesNothingIfSlicesComeConcurrently) {
    constexpr std::size_t kCount = 4;
    Frei0rInstance instance(mHost, kWidth, kHeight / kCount);
    Set(instance, kSettings);
    std::array<Frame, 2> buffers{Frame(mInput), Frame(mInput)};
    for (int repeat = 0; repeat < 10; ++repeat) {
        Frame& frame = buffers[repeat % 2 == 0 ? 0 : 1]; // hosts reuse a few buffers in turns
        std::ranges::fill(frame.out, 0);
        std::barrier start(kCount);
        std::vector<std::thread> threads;
        for (std::size_t place = 0; place < kCount; ++place) {
            threads.emplace_back([&, place] {
                start.arrive_and_wait();
                frame.updateSlice(instance, place, kCount);
            });
        }
        for (std::thread& thread : threads) {
            thread.join();
        }
        EXPECT_EQ(frame.out, mExpected) << repeat;
    }
}

TEST_F(Slicing, IsNotAssumedForAdjacentFramesOnTheInstancesThread) {
    Frei0rInstance instance(mHost, kWidth, kHeight);
    Set(instance, kSettings);
    Pixels in = mInput;
    in.insert(in.end(), mInput.begin(), mInput.end());
    Pixels out(in.size());
    instance.update(0.04, in.data(), out.data());
    instance.update(0.04, &in[mInput.size()], &out[mInput.size()]);
    EXPECT_TRUE(std::ranges::equal(std::span(out).first(mInput.size()), mExpected));
    EXPECT_TRUE(std::ranges::equal(std::span(out).last(mInput.size()), mExpected));
}

TEST(Instances, RenderConcurrentlyOnShortLivedThreads) {
    constexpr std::array<Settings, 4> kSettings{{{0, 5}, {1, 9}, {0, 16}, {1, 30}}};
    constexpr unsigned kSide = 64;
    const Pixels input = MotleyPicture(kSide, kSide);
    std::vector<Pixels> expected;
    expected.reserve(kSettings.size());
    for (const Settings& settings : kSettings) {
        expected.push_back(Reference(input, kSide, kSide, settings));
    }
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < 3 * kSettings.size(); ++i) {
        threads.emplace_back([&, i] {
            const std::size_t which = i % kSettings.size();
            // Each thread loads the module. The last one to unload it shuts the effect down.
            const Frei0rHost host;
            Frei0rInstance instance(host, kSide, kSide);
            Set(instance, kSettings[which]);
            for (int repeat = 0; repeat < 3; ++repeat) {
                EXPECT_EQ(instance.rendered(input), expected[which]) << i;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

} // namespace

} // namespace Kerovane::TestSupport
