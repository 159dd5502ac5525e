#pragma once

#include <mutex>

namespace Kerovane::Platform {

/**
 * A counting semaphore that wakes the most recent waiter first. Unlike std::counting_semaphore it
 * can wake all waiters.
 */
class KernelSemaphore {
public:
    explicit KernelSemaphore(unsigned int count) : mCount(count) {}
    KernelSemaphore(const KernelSemaphore&) = delete;
    KernelSemaphore& operator=(const KernelSemaphore&) = delete;

    /// No thread may be waiting.
    ~KernelSemaphore() = default;

    /// Decrements the count; if it is 0, blocks until a signal wakes this thread.
    void wait();

    /// Wakes one waiting thread, or increments the count if none waits.
    void signal();

    /// Wakes all waiting threads and leaves the count unchanged.
    void signalAll();

private:
    struct Waiter;

    /// Wakes the most recent waiter. The lock must be held, and a thread must be waiting.
    void wakeLast();

    std::mutex mMutex;
    unsigned int mCount;
    Waiter* mLastWaiter = nullptr; ///< head of a list: each waiter points to the one before it
};

} // namespace Kerovane::Platform
