#include "Host/Shots/ShotRenderer.h"

#include "Host/Text/Error.h"
#include "Tests/Support/RawPicture.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <new>
#include <string>
#include <vector>

namespace Kerovane::Host {
namespace {

constexpr A_long kFrames = 24;
constexpr A_long kMissing = 5;
constexpr A_long kTooMuch = 11;
constexpr A_long kUnwritable = 17;

class RenderShotTest : public testing::TestWithParam<std::size_t> {
protected:
    RenderShotTest() {
        for (A_long number = 0; number < kFrames; ++number) {
            const std::string name = std::to_string(number) + ".png";
            if (number != kMissing) {
                RawPicture::of({0.2F, 0.4F, 0.6F, 1}, OIIO::TypeDesc::UINT8, 3, 8, 6)
                    .write(mFolder / name);
            }
            mShot.push_back(
                {.number = number,
                 .input = mFolder / name,
                 .output = mFolder / ((number == kUnwritable ? "no/out" : "out") + name)});
        }
        mSetting.framesInFlight = GetParam();
    }

    void render(const std::atomic<bool>& stop) {
        RenderShot(mShot, mSetting, {.render = mRender, .ended = mEnded}, stop);
    }

    TemporaryFolder mFolder;
    std::vector<ShotFrame> mShot;
    ShotSetting mSetting;
    std::atomic<int> mRendering = 0;
    FrameList mRendered;
    FrameList mReported;
    std::vector<std::string> mReasons;

    std::function<void(const ShotFrame&, const World&, World&)> mRender =
        [this](const ShotFrame& frame, const World&, World&) {
            EXPECT_EQ(++mRendering, 1) << "two frames are rendered at a time";
            if (frame.number == kTooMuch) {
                --mRendering;
                throw std::bad_alloc();
            }
            mRendered.push_back(frame.number);
            --mRendering;
        };
    std::function<void(const ShotFrame&, const FrameReport&)> mEnded =
        [this](const ShotFrame& frame, const FrameReport& report) {
            mReported.push_back(frame.number);
            if (report.ending == FrameEnding::Failed) {
                mReasons.push_back(report.reason);
            }
        };
};

INSTANTIATE_TEST_SUITE_P(FramesInFlight, RenderShotTest, testing::Values(1, 2, 7, 100));

TEST_P(RenderShotTest, RendersAndReportsInOrderPastFramesThatFail) {
    render(false);
    FrameList all;
    FrameList rendered;
    for (A_long number = 0; number < kFrames; ++number) {
        all.push_back(number);
        if (number != kMissing && number != kTooMuch) {
            rendered.push_back(number);
        }
    }
    EXPECT_EQ(mReported, all);
    EXPECT_EQ(mRendered, rendered);
    ASSERT_EQ(mReasons.size(), 3U);
    EXPECT_EQ(mReasons[1], "out of memory");
}

TEST_P(RenderShotTest, EndsTheFramesThatBeganOnceItIsStopped) {
    std::atomic<bool> stop = false;
    const auto ended = mEnded;
    mEnded = [&](const ShotFrame& frame, const FrameReport& report) {
        ended(frame, report);
        stop = stop || frame.number == 2;
    };
    render(stop);
    ASSERT_GE(mReported.size(), 3U);
    EXPECT_LE(mReported.size(), 3 + mSetting.framesInFlight);
    EXPECT_EQ(mReported.back() + 1, static_cast<A_long>(mReported.size())) << "none was left out";
}

} // namespace
} // namespace Kerovane::Host
