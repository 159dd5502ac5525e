#include "Plugins/Shared/Helper/IdleQueue.h"

namespace Kerovane::Tesselune {

namespace {

/** Holds a semaphore of count 1 as a lock for its lifetime. */
class SemaphoreLock {
public:
    explicit SemaphoreLock(Semaphore& semaphore) : mSemaphore(semaphore) { mSemaphore.wait(); }
    ~SemaphoreLock() { mSemaphore.signal(); }
    SemaphoreLock(const SemaphoreLock&) = delete;
    SemaphoreLock& operator=(const SemaphoreLock&) = delete;

private:
    Semaphore& mSemaphore;
};

} // namespace

IdleQueue::IdleQueue() : mLock(std::make_unique<Semaphore>(1U)) {}

bool IdleQueue::hasTask() {
    const SemaphoreLock lock(*mLock);
    return !mQueue.empty();
}

void IdleQueue::async(const std::function<void()>& task) {
    const SemaphoreLock lock(*mLock);
    mQueue.push_back(task);
}

void IdleQueue::updateQueue() {
    std::function<void()> task;
    {
        // Declared before the lock, so it is destroyed after the lock is released: the destructors
        // of its captures may use the queue.
        std::function<void()> removed;
        // Test and take under one lock: several threads may call updateQueue.
        const SemaphoreLock lock(*mLock);
        if (mQueue.empty()) {
            return;
        }
        task = mQueue.front();
        removed.swap(mQueue.front());
        mQueue.pop_front();
    }
    task();
}

void IdleQueue::clearAsyncQueue() {
    // Empty the queue before the tasks are destroyed: their destructors may use the queue.
    std::deque<std::function<void()>> dropped;
    dropped.swap(mQueue);
}

} // namespace Kerovane::Tesselune
