#include "Host/Shots/ShotRenderer.h"

#include "Tests/Support/RawPicture.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <vector>

namespace Kerovane::Host {
namespace {

constexpr A_long kFrames = 24;
constexpr A_long kMissing = 5;
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
        FrameRenderer renderer(FAKE_EFFECT);
        RenderShot(mShot, mSetting, {.renderer = renderer, .values = {}, .rate = {}}, mEnded, stop);
    }

    TemporaryFolder mFolder;
    std::vector<ShotFrame> mShot;
    ShotSetting mSetting;
    FrameList mReported;
    FrameList mFailed;

    FrameEnded mEnded = [this](const ShotFrame& frame, const FrameReport& report) {
        mReported.push_back(frame.number);
        if (report.ending == FrameEnding::Failed) {
            mFailed.push_back(frame.number);
        }
    };
};

INSTANTIATE_TEST_SUITE_P(FramesInFlight, RenderShotTest, testing::Values(1, 2, 7, 100));

TEST_P(RenderShotTest, ContinuesPastFailedFramesAndReportsInOrder) {
    render(false);
    ASSERT_EQ(mReported.size(), mShot.size());
    for (const ShotFrame& frame : mShot) {
        const bool fails = frame.number == kMissing || frame.number == kUnwritable;
        EXPECT_EQ(mReported[static_cast<std::size_t>(frame.number)], frame.number);
        EXPECT_EQ(std::filesystem::exists(frame.output), !fails) << frame.number;
    }
    EXPECT_EQ(mFailed, (FrameList{kMissing, kUnwritable}));
}

TEST_P(RenderShotTest, FinishesStartedFramesIfStopped) {
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
