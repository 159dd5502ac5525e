#include "Plugins/Shared/Helper/Semaphore.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>
#include <vector>

namespace Kerovane::Tesselune {

namespace {

/// Waits long enough for a thread that may pass a wait to do so. Too short a time only makes a test
/// lenient.
void giveOthersTime() {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
}

/// Returns whether one of several attempts succeeds. An attempt may fail because a thread was too
/// slow to begin waiting.
bool succeedsOnce(const std::function<bool()>& attempt) {
    constexpr int kAttempts = 20;
    for (int i = 0; i < kAttempts; ++i) {
        if (attempt()) {
            return true;
        }
    }
    return false;
}

/** Threads that wait once each; counts those that have passed. */
class Waiters {
public:
    Waiters(Semaphore& semaphore, int count) {
        for (int i = 0; i < count; ++i) {
            mThreads.emplace_back([this, &semaphore] {
                semaphore.wait();
                ++mPassed;
            });
        }
    }

    int passed() const { return mPassed; }

    /// Returns once `count` threads have passed.
    void awaitPassed(int count) const {
        while (mPassed < count) {
            std::this_thread::yield();
        }
    }

private:
    std::atomic<int> mPassed{0};
    std::vector<std::jthread> mThreads;
};

} // namespace

TEST(Semaphore, AdmitsAsManyWaitsAsItsCount) {
    Semaphore semaphore(2);
    Waiters waiters(semaphore, 8);
    const auto expectPassed = [&](int count) {
        waiters.awaitPassed(count);
        giveOthersTime();
        EXPECT_EQ(waiters.passed(), count);
    };
    expectPassed(2);
    semaphore.signal(0);
    expectPassed(2);
    semaphore.signal(3);
    expectPassed(5);
    semaphore.signal();
    semaphore.signal(2);
    waiters.awaitPassed(8);
}

TEST(Semaphore, KeepsSignalsForLaterWaitsButNotSignalAll) {
    Semaphore semaphore(0);
    semaphore.signal();
    semaphore.signal(2);
    for (int i = 0; i < 3; ++i) {
        semaphore.wait();
    }
    semaphore.signalAll();
    Waiters waiters(semaphore, 1);
    giveOthersTime();
    EXPECT_EQ(waiters.passed(), 0);
    semaphore.signal();
}

TEST(Semaphore, SignalAllWakesEveryWaiter) {
    EXPECT_TRUE(succeedsOnce([] {
        Semaphore semaphore(0);
        Waiters waiters(semaphore, 8);
        giveOthersTime();
        semaphore.signalAll();
        giveOthersTime();
        const int passed = waiters.passed();
        semaphore.signal(static_cast<unsigned int>(8 - passed));
        return passed == 8;
    }));
}

TEST(Semaphore, WakesTheMostRecentWaiterFirst) {
    EXPECT_TRUE(succeedsOnce([] {
        Semaphore semaphore(0);
        Waiters first(semaphore, 1);
        giveOthersTime();
        Waiters last(semaphore, 1);
        giveOthersTime();
        semaphore.signal();
        giveOthersTime();
        const bool lastWasFirst = last.passed() == 1 && first.passed() == 0;
        semaphore.signal();
        return lastWasFirst;
    }));
}

TEST(Semaphore, IsAMutexAtACountOfOne) {
    constexpr int kThreads = 4;
    constexpr int kTurns = 5000;
    Semaphore semaphore(1);
    int unguarded = 0; // two threads inside at once would lose counts
    {
        std::vector<std::jthread> threads;
        threads.reserve(kThreads);
        for (int i = 0; i < kThreads; ++i) {
            threads.emplace_back([&] {
                for (int turn = 0; turn < kTurns; ++turn) {
                    semaphore.wait();
                    ++unguarded;
                    semaphore.signal();
                }
            });
        }
    }
    EXPECT_EQ(unguarded, kThreads * kTurns);
}

} // namespace Kerovane::Tesselune
