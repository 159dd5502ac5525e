#pragma once

#include <mutex>

namespace Kerovane::Platform {

/**
 * A counting semaphore as a kernel provides it. The C++ library's own can't wake all that wait.
 * The thread that began to wait last wakes first.
 */
class KernelSemaphore {
public:
    explicit KernelSemaphore(unsigned int count) : mCount(count) {}
    KernelSemaphore(const KernelSemaphore&) = delete;
    KernelSemaphore& operator=(const KernelSemaphore&) = delete;

    /// No thread may be waiting.
    ~KernelSemaphore() = default;

    /// Takes one from the count; if it is 0, blocks until a signal reaches this thread.
    void wait();

    /// Wakes one thread that waits, or adds one to the count if there is none.
    void signal();

    /// Wakes all threads that wait and leaves the count as it is.
    void signalAll();

private:
    struct Waiter;

    /// Wakes the thread that began to wait last. The lock is held, and there is such a thread.
    void wakeLast();

    std::mutex mMutex;
    unsigned int mCount;
    Waiter* mLastWaiter = nullptr; ///< each waiter leads to the one before it
};

} // namespace Kerovane::Platform
