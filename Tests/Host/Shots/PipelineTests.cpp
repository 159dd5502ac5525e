#include "Host/Shots/Pipeline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

namespace Kerovane::Host {
namespace {

/// Records which items go through which stage, and how many are in flight.
class Recorder {
public:
    PipelineStages stages() {
        return {.read =
                    [this](std::size_t item) {
                        const std::lock_guard lock(mMutex);
                        mMostInFlight = std::max(mMostInFlight, ++mInFlight);
                        mReaders.insert(std::this_thread::get_id());
                        mRead.push_back(item);
                        mInFlight -= item == mUnreadable ? 1 : 0;
                        return item != mUnreadable;
                    },
                .render =
                    [this](std::size_t item) {
                        const std::lock_guard lock(mMutex);
                        mRenderers.insert(std::this_thread::get_id());
                        mRendered.insert(item);
                        mStop = mStop || item == mStopAt;
                        return true;
                    },
                .write =
                    [this](std::size_t item) {
                        std::this_thread::yield(); // lets the others overtake
                        const std::lock_guard lock(mMutex);
                        mWritten.insert(item);
                        --mInFlight;
                    }};
    }

    void run(std::size_t count, PipelineLimits limits) {
        RunPipeline(count, limits, stages(), mStop);
    }

    std::size_t mUnreadable = ~std::size_t{0};
    std::size_t mStopAt = ~std::size_t{0};
    std::atomic<bool> mStop = false;
    std::mutex mMutex;
    std::vector<std::size_t> mRead;
    std::set<std::size_t> mRendered, mWritten;
    std::set<std::thread::id> mReaders, mRenderers;
    std::size_t mInFlight = 0;
    std::size_t mMostInFlight = 0;
};

constexpr PipelineLimits kAllLimits[] = {{1, 1}, {1, 5}, {4, 1}, {4, 3}, {8, 100}};

TEST(Pipeline, TakesEachItemThroughEachStageWithinItsLimits) {
    for (const PipelineLimits& limits : kAllLimits) {
        Recorder recorder;
        recorder.run(200, limits);
        EXPECT_EQ(recorder.mRead.size(), 200U);
        EXPECT_EQ(recorder.mWritten.size(), 200U);
        EXPECT_EQ(recorder.mRendered, recorder.mWritten);
        EXPECT_LE(recorder.mMostInFlight, limits.itemsInFlight);
        EXPECT_LE(recorder.mReaders.size(), limits.threads);
        EXPECT_EQ(recorder.mRenderers, std::set{std::this_thread::get_id()});
    }
}

TEST(Pipeline, GoesOnWithoutAnItemThatEndsEarly) {
    for (const PipelineLimits& limits : kAllLimits) {
        Recorder recorder;
        recorder.mUnreadable = 7;
        recorder.run(20, limits);
        EXPECT_EQ(recorder.mWritten.size(), 19U);
        EXPECT_FALSE(recorder.mRendered.contains(7));
    }
}

TEST(Pipeline, FinishesWhatHasBegunWhenStopped) {
    for (const PipelineLimits& limits : kAllLimits) {
        Recorder recorder;
        recorder.mStopAt = 10;
        recorder.run(1000, limits);
        EXPECT_LT(recorder.mRead.size(), 1000U);
        EXPECT_EQ(recorder.mWritten.size(), recorder.mRead.size());
    }
}

TEST(Pipeline, EndsWithoutItemsOrStoppedBeforehand) {
    Recorder recorder;
    recorder.run(0, {2, 2});
    recorder.mStop = true;
    recorder.run(10, {2, 2});
    EXPECT_TRUE(recorder.mRead.empty());
}

} // namespace
} // namespace Kerovane::Host
