#include "Plugins/Shared/Helper/IdleQueue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <new>
#include <stdexcept>
#include <thread>
#include <vector>

namespace Kerovane::Tesselune {

namespace {

/** A task whose copying throws once its copies are used up. */
struct CopiesRunOut {
    static inline int left = 100;

    CopiesRunOut() = default;
    CopiesRunOut(const CopiesRunOut& /*other*/) {
        if (left-- == 0) {
            throw std::bad_alloc();
        }
    }
    CopiesRunOut& operator=(const CopiesRunOut&) = delete;
    ~CopiesRunOut() = default;
    void operator()() const {}
};

} // namespace

TEST(IdleQueue, RunsOneTaskPerCallOldestFirst) {
    IdleQueue queue;
    std::vector<int> run;
    queue.updateQueue();
    queue.async([&] { run.push_back(1); });
    queue.async([&] { run.push_back(2); });
    EXPECT_TRUE(run.empty());
    queue.updateQueue();
    EXPECT_EQ(run, (std::vector{1}));
    EXPECT_TRUE(queue.hasTask());
    queue.updateQueue();
    EXPECT_EQ(run, (std::vector{1, 2}));
    EXPECT_FALSE(queue.hasTask());
}

TEST(IdleQueue, LetsATaskUseIt) {
    IdleQueue queue;
    int runs = 0;
    queue.async([&] {
        EXPECT_FALSE(queue.hasTask());
        queue.async([&] { ++runs; });
    });
    queue.updateQueue();
    EXPECT_EQ(runs, 0) << "waits for the next turn";
    queue.updateQueue();
    EXPECT_EQ(runs, 1);
    queue.async([&] { queue.clearAsyncQueue(); });
    queue.async([&] { ++runs; });
    queue.updateQueue();
    queue.updateQueue();
    EXPECT_EQ(runs, 1) << "the second was dropped";
}

/** A task whose copies use the queue in their destructors. */
struct UsesQueueInDestructor {
    IdleQueue* queue;
    int* ends;

    UsesQueueInDestructor(IdleQueue& used, int& count) : queue(&used), ends(&count) {}
    UsesQueueInDestructor(const UsesQueueInDestructor&) = default;
    UsesQueueInDestructor& operator=(const UsesQueueInDestructor&) = delete;
    ~UsesQueueInDestructor() { *ends += queue->hasTask() ? 0 : 1; }
    void operator()() const {}
};

TEST(IdleQueue, DestroysATaskOutsideOfItsLock) {
    IdleQueue queue;
    int ends = 0;
    queue.async(UsesQueueInDestructor(queue, ends));
    ends = 0;
    queue.updateQueue(); // would deadlock if a copy were destroyed under the lock
    EXPECT_EQ(ends, 2) << "the queue's and the one that ran";
}

TEST(IdleQueue, DropsTasksWithoutRunningThem) {
    const auto token = std::make_shared<bool>(false);
    {
        IdleQueue queue;
        queue.async([token] { *token = true; });
        queue.clearAsyncQueue();
        EXPECT_EQ(token.use_count(), 1) << "the task is destroyed at once";
        queue.updateQueue();
        queue.async([token] { *token = true; });
    }
    EXPECT_EQ(token.use_count(), 1) << "the queue's end destroys the rest";
    EXPECT_FALSE(*token);
}

TEST(IdleQueue, PassesExceptionsOnAndStaysUsable) {
    IdleQueue queue;
    bool lastHasRun = false;
    queue.async([] { throw std::runtime_error("task"); });
    queue.async(std::function<void()>());
    queue.async([&] { lastHasRun = true; });
    EXPECT_THROW(queue.updateQueue(), std::runtime_error);
    EXPECT_THROW(queue.updateQueue(), std::bad_function_call);
    queue.updateQueue();
    EXPECT_TRUE(lastHasRun);
}

TEST(IdleQueue, ReleasesItsLockIfATaskCannotBeCopied) {
    const std::function<void()> task = CopiesRunOut();
    IdleQueue queue;
    CopiesRunOut::left = 0;
    EXPECT_THROW(queue.async(task), std::bad_alloc);
    EXPECT_FALSE(queue.hasTask());

    CopiesRunOut::left = 1;
    queue.async(task);
    EXPECT_THROW(queue.updateQueue(), std::bad_alloc);
    EXPECT_TRUE(queue.hasTask()) << "the task stays in the queue";
    CopiesRunOut::left = 1;
    queue.updateQueue();
    EXPECT_FALSE(queue.hasTask());
}

TEST(IdleQueue, RunsEachTaskOnceAmongManyThreads) {
    constexpr std::size_t kProducers = 4;
    constexpr std::size_t kConsumers = 4;
    constexpr std::size_t kTasksEach = 2500;
    IdleQueue queue;
    std::vector<std::atomic<int>> runs(kProducers * kTasksEach);
    std::atomic<std::size_t> producing{kProducers};
    {
        std::vector<std::jthread> threads;
        threads.reserve(kProducers + kConsumers);
        for (std::size_t producer = 0; producer < kProducers; ++producer) {
            threads.emplace_back([&, producer] {
                for (std::size_t i = 0; i < kTasksEach; ++i) {
                    std::atomic<int>& run = runs[producer * kTasksEach + i];
                    queue.async([&run] { ++run; });
                }
                --producing;
            });
        }
        for (std::size_t consumer = 0; consumer < kConsumers; ++consumer) {
            threads.emplace_back([&] {
                while (producing > 0 || queue.hasTask()) {
                    queue.updateQueue();
                }
            });
        }
    }
    EXPECT_FALSE(queue.hasTask());
    EXPECT_TRUE(std::ranges::all_of(runs, [](const std::atomic<int>& run) { return run == 1; }));
}

} // namespace Kerovane::Tesselune
